#include "host/runtime/passing.h"

#include "host/exception.h"
#include "host/runtime/currency.h"

#include <limits>

namespace host::runtime {

namespace {

constexpr int64_t kNoInteger = 1;

template <class T>
PassingFacts integer(Passing passing, ffi_type *type, Value::Kind kind)
{
    using Limits = std::numeric_limits<T>;
    using Taken = std::conditional_t<(sizeof(T) < sizeof(int32_t)), int32_t, T>;
    return {passing, type, kind, int64_t(Limits::min()), uint64_t(Limits::max()),
            // Little-endian: the low bytes are the small types.
            [](const Value &value, Slot &slot) {
                slot.uint64 = std::is_same_v<T, uint64_t>  ? value.uint64()
                              : std::is_same_v<T, int32_t> ? uint64_t(value.int32())
                                                           : uint64_t(value.int64());
            },
            [](const Slot &slot) { return Value(Taken(T(slot.uint64))); }};
}

PassingFacts plain(Passing passing, ffi_type *type, Value::Kind kind, void (*put)(const Value &, Slot &),
                   Value (*take)(const Slot &))
{
    return {passing, type, kind, kNoInteger, 0, put, take};
}

PassingFacts handle(Passing passing, Value::Kind kind)
{
    return plain(passing, &ffi_type_pointer, kind, nullptr, nullptr);
}

// clang-format off

const PassingFacts kPassings[] = {
    plain(Passing::Nothing, &ffi_type_void, Value::Kind::Nothing,
          [](const Value &, Slot &) {},
          [](const Slot &) { return Value(); }),
    integer<int8_t>(Passing::Int8, &ffi_type_sint8, Value::Kind::Int32),
    integer<uint8_t>(Passing::UInt8, &ffi_type_uint8, Value::Kind::Int32),
    integer<int16_t>(Passing::Int16, &ffi_type_sint16, Value::Kind::Int32),
    integer<uint16_t>(Passing::UInt16, &ffi_type_uint16, Value::Kind::Int32),
    integer<int32_t>(Passing::Int32, &ffi_type_sint32, Value::Kind::Int32),
    integer<uint32_t>(Passing::UInt32, &ffi_type_uint32, Value::Kind::UInt32),
    integer<int64_t>(Passing::Int64, &ffi_type_sint64, Value::Kind::Int64),
    integer<uint64_t>(Passing::UInt64, &ffi_type_uint64, Value::Kind::UInt64),
    plain(Passing::Single, &ffi_type_float, Value::Kind::Single,
          [](const Value &value, Slot &slot) { slot.single = value.single(); },
          [](const Slot &slot) { return Value(slot.single); }),
    plain(Passing::Double, &ffi_type_double, Value::Kind::Double,
          [](const Value &value, Slot &slot) { slot.real = value.number(); },
          [](const Slot &slot) { return Value(slot.real); }),
    plain(Passing::Currency, &ffi_type_sint64, Value::Kind::Currency,
          [](const Value &value, Slot &slot) { slot.int64 = toCurrency(value.number()); },
          [](const Slot &slot) { return Value::currency(fromCurrency(slot.int64)); }),
    plain(Passing::Boolean, &ffi_type_uint8, Value::Kind::Boolean,
          [](const Value &value, Slot &slot) { slot.uint64 = value.boolean(); },
          [](const Slot &slot) { return Value(uint8_t(slot.uint64) != 0); }), // what lies above the byte is no part of it
    plain(Passing::Color, &ffi_type_uint32, Value::Kind::Color,
          [](const Value &value, Slot &slot) { slot.uint32 = value.colorValue(); },
          [](const Slot &slot) { return Value::color(slot.uint32); }),
    plain(Passing::Pointer, &ffi_type_pointer, Value::Kind::Nothing,
          [](const Value &, Slot &) {},
          [](const Slot &slot) { return Value(int32_t(reinterpret_cast<intptr_t>(slot.pointer))); }),
    handle(Passing::String, Value::Kind::String),
    handle(Passing::Variant, Value::Kind::Object),
    handle(Passing::Object, Value::Kind::Object),
};

// clang-format on

} // namespace

const PassingFacts &factsOf(Passing passing)
{
    for (const PassingFacts &facts : kPassings)
        if (facts.passing == passing)
            return facts;
    throw CallError("a type that cannot be passed");
}

ffi_type *ffiTypeOf(const DeclaredType &type)
{
    return type.isArray ? &ffi_type_pointer : factsOf(type.passing).type;
}

Value unboxed(const Value &value)
{
    return value.isObject() ? Value::borrow(value.handle()) : value;
}

void pass(const DeclaredType &type, const Value &given, Slot &slot, std::deque<Value> &kept)
{
    slot.uint64 = 0;
    if (type.isArray || type.passing == Passing::Object) {
        slot.pointer = given.handle();
        return;
    }
    kept.push_back(type.passing == Passing::Variant ? given.boxed() : unboxed(given));
    if (auto put = factsOf(type.passing).put)
        put(kept.back(), slot);
    else
        slot.pointer = kept.back().handle();
}

Value receive(const DeclaredType &type, const Slot &slot, bool owned)
{
    if (!type.isArray) {
        if (auto take = factsOf(type.passing).take)
            return take(slot);
        if (type.passing == Passing::Variant)
            return owned ? Value::adopt(slot.pointer) : Value::borrow(slot.pointer);
        if (type.passing == Passing::String && !slot.pointer)
            return Value::nullString();
    }
    return owned ? Value::adoptHandle(slot.pointer) : Value::borrowHandle(slot.pointer);
}

} // namespace host::runtime
