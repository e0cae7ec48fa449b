#include "host/runtime/calls.h"

#include <cstring>
#include <deque>
#include <ffi.h>
#include <limits>
#include <memory>

#include "host/exception.h"
#include "host/runtime/arrays.h"
#include "host/runtime/currency.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/ledger.h"
#include "host/runtime/objects.h"

namespace host::runtime {

namespace {

// One argument or result as it is passed.
union Slot {
    int8_t int8;
    uint8_t uint8;
    int16_t int16;
    uint16_t uint16;
    int32_t int32;
    uint32_t uint32;
    int64_t int64;
    uint64_t uint64;
    float single;
    double real;
    void *pointer;
    ffi_arg word; // small results come back in a whole word
};

struct PassingFacts {
    Passing passing;
    ffi_type *type;
    Value::Kind kind; // that fits exactly
    // Of integers: the range.
    int64_t smallest;
    uint64_t largest;
};

constexpr int64_t kNoInteger = 1;

template <class T>
PassingFacts integer(Passing passing, ffi_type *type, Value::Kind kind)
{
    return {passing, type, kind, int64_t(std::numeric_limits<T>::min()), uint64_t(std::numeric_limits<T>::max())};
}

const PassingFacts kPassings[] = {
    {Passing::Nothing, &ffi_type_void, Value::Kind::Nil, kNoInteger, 0},
    integer<int8_t>(Passing::Int8, &ffi_type_sint8, Value::Kind::Int32),
    integer<uint8_t>(Passing::UInt8, &ffi_type_uint8, Value::Kind::Int32),
    integer<int16_t>(Passing::Int16, &ffi_type_sint16, Value::Kind::Int32),
    integer<uint16_t>(Passing::UInt16, &ffi_type_uint16, Value::Kind::Int32),
    integer<int32_t>(Passing::Int32, &ffi_type_sint32, Value::Kind::Int32),
    integer<uint32_t>(Passing::UInt32, &ffi_type_uint32, Value::Kind::UInt32),
    integer<int64_t>(Passing::Int64, &ffi_type_sint64, Value::Kind::Int64),
    integer<uint64_t>(Passing::UInt64, &ffi_type_uint64, Value::Kind::UInt64),
    {Passing::Single, &ffi_type_float, Value::Kind::Single, kNoInteger, 0},
    {Passing::Double, &ffi_type_double, Value::Kind::Double, kNoInteger, 0},
    {Passing::Currency, &ffi_type_sint64, Value::Kind::Currency, kNoInteger, 0},
    {Passing::Boolean, &ffi_type_uint8, Value::Kind::Boolean, kNoInteger, 0},
    {Passing::Color, &ffi_type_uint32, Value::Kind::Color, kNoInteger, 0},
    {Passing::String, &ffi_type_pointer, Value::Kind::String, kNoInteger, 0},
    {Passing::Variant, &ffi_type_pointer, Value::Kind::Object, kNoInteger, 0},
    {Passing::Object, &ffi_type_pointer, Value::Kind::Object, kNoInteger, 0},
    {Passing::Pointer, &ffi_type_pointer, Value::Kind::Nil, kNoInteger, 0},
};

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

// A value of a Variant as what it stands for.
Value unboxed(const Value &value)
{
    return value.isObject() ? Value::borrow(value.handle()) : value;
}

bool fitsInteger(const PassingFacts &facts, const Value &value)
{
    if (value.kind() == Value::Kind::UInt64)
        return value.uint64() <= facts.largest;
    try {
        int64_t number = value.int64();
        return number >= facts.smallest && (number < 0 || uint64_t(number) <= facts.largest);
    } catch (const TypeError &) {
        return false;
    }
}

bool isIntegerPassing(const PassingFacts &facts)
{
    return facts.smallest <= 0;
}

int rankOfNumber(const PassingFacts &facts, const Value &value)
{
    if (!value.isNumber())
        return 0;
    if (isIntegerPassing(facts) && !fitsInteger(facts, value))
        return 0;
    return value.kind() == facts.kind ? 2 : 1;
}

int rankOfArray(const DeclaredType &type, const Value &value)
{
    if (value.isNil())
        return 1;
    return value.isArray() && value.elementType() == elementTypeOf(type) ? 2 : 0;
}

int rankOfObject(const DeclaredType &type, const Value &value)
{
    if (value.isNil())
        return 1;
    bool fits =
        value.isObject() && (equalIgnoringCase(type.name, "Object") || type.name.empty() || value.isA(type.name));
    return fits ? 2 : 0;
}

std::string nameForMessage(const DeclaredType &type)
{
    if (type.isArray)
        return "an array of " + std::string(elementName(elementTypeOf(type)));
    if (!type.name.empty())
        return type.text();
    return type.passing == Passing::String ? "string" : "a value of the declared type";
}

std::string valueForMessage(const Value &value)
{
    bool isPlain = value.isNumber() || value.isString() || value.kind() == Value::Kind::Boolean;
    return isPlain ? value.typeName() + " " + value.describe() : value.typeName();
}

// Puts a checked value into a slot. What was made for the call goes to `kept`.
void pass(const DeclaredType &type, const Value &given, Slot &slot, std::deque<Value> &kept)
{
    slot.uint64 = 0;
    if (type.isArray || type.passing == Passing::Object) {
        slot.pointer = given.handle();
        return;
    }
    if (type.passing == Passing::Variant) {
        kept.push_back(given.boxed());
        slot.pointer = kept.back().handle();
        return;
    }
    kept.push_back(unboxed(given));
    const Value &value = kept.back();
    switch (type.passing) {
    case Passing::Int8:
    case Passing::UInt8:
    case Passing::Int16:
    case Passing::UInt16:
    case Passing::Int32:
    case Passing::UInt32:
    case Passing::Int64:
        slot.int64 = value.int64();
        break; // little-endian: the low bytes are the small types
    case Passing::UInt64:
        slot.uint64 = value.uint64();
        break;
    case Passing::Single:
        slot.single = value.single();
        break;
    case Passing::Double:
        slot.real = value.number();
        break;
    case Passing::Currency:
        slot.int64 = toCurrency(value.number());
        break;
    case Passing::Boolean:
        slot.uint8 = value.boolean();
        break;
    case Passing::Color:
        slot.uint32 = value.colorValue();
        break;
    case Passing::String:
        slot.pointer = value.handle();
        break;
    case Passing::Pointer:
    case Passing::Nothing:
    case Passing::Variant:
    case Passing::Object:
        break;
    }
}

// `owned`: the slot's handle carries a lock for the host.
Value receive(const DeclaredType &type, const Slot &slot, bool owned)
{
    if (type.isArray || type.passing == Passing::Object)
        return owned ? Value::adoptHandle(slot.pointer) : Value::borrowHandle(slot.pointer);
    switch (type.passing) {
    case Passing::Nothing:
        return Value();
    case Passing::Int8:
        return Value(int32_t(slot.int8));
    case Passing::UInt8:
        return Value(int32_t(slot.uint8));
    case Passing::Int16:
        return Value(int32_t(slot.int16));
    case Passing::UInt16:
        return Value(int32_t(slot.uint16));
    case Passing::Int32:
        return Value(slot.int32);
    case Passing::UInt32:
        return Value(slot.uint32);
    case Passing::Int64:
        return Value(slot.int64);
    case Passing::UInt64:
        return Value(slot.uint64);
    case Passing::Single:
        return Value(slot.single);
    case Passing::Double:
        return Value(slot.real);
    case Passing::Currency:
        return Value::currency(fromCurrency(slot.int64));
    case Passing::Boolean:
        return Value(slot.uint8 != 0); // one byte; what lies above it is no part of it
    case Passing::Color:
        return Value::color(slot.uint32);
    case Passing::Pointer:
        return Value(int32_t(reinterpret_cast<intptr_t>(slot.pointer)));
    case Passing::String: {
        if (!slot.pointer)
            return Value::nullString();
        return owned ? Value::adoptHandle(slot.pointer) : Value::borrowHandle(slot.pointer);
    }
    case Passing::Variant:
        return owned ? Value::adopt(slot.pointer) : Value::borrow(slot.pointer);
    case Passing::Object:
        break;
    }
    return Value();
}

Value checkedResult(const Declaration &declaration, Value result)
{
    const DeclaredType &type = declaration.result;
    bool isHandle = type.isArray || type.passing == Passing::Object || type.passing == Passing::String;
    std::string why;
    if (isHandle && !result.isNullHandle() && !rankOf(type, result, &why))
        noteFault(declaration.text() + ": the result " + why);
    return result;
}

// What a closure of libffi calls back with. Made once for each method of host code and never freed.
struct BodyFunction {
    Declaration declaration;
    bool isShared;
    HostMethod::Body body;
    ffi_cif cif;
    std::vector<ffi_type *> types;
};

Value runBody(const BodyFunction &function, void **slots)
{
    size_t next = 0;
    Value self;
    if (!function.isShared)
        self = Value::borrowHandle(*static_cast<void **>(slots[next++]));
    Arguments arguments;
    for (const Parameter &parameter : function.declaration.parameters) {
        Slot slot;
        memcpy(&slot, slots[next], ffiTypeOf(parameter.type)->size);
        arguments.push_back(receive(parameter.type, slot, false));
        ++next;
    }
    return function.body(self, arguments);
}

// The caller of a body is a plug-in or libffi: what the body throws in the host's own terms becomes a pending
// exception.
void bodyCalled(ffi_cif *cif, void *result, void **slots, void *user)
{
    auto &function = *static_cast<BodyFunction *>(user);
    Slot slot{};
    try {
        Value value = runBody(function, slots);
        std::string why;
        if (function.declaration.result.passing != Passing::Nothing) {
            if (!rankOf(function.declaration.result, value, &why))
                throw TypeError("the result " + why);
            std::deque<Value> kept;
            pass(function.declaration.result, value, slot, kept);
            bool isHandle = ffiTypeOf(function.declaration.result) == &ffi_type_pointer;
            if (Handle *handle = isHandle ? find(slot.pointer) : nullptr)
                lock(*handle);
        }
    } catch (const Exception &exception) {
        for (const RaisedException &raised : exception.raised())
            raiseObject(*static_cast<ObjectHandle *>(find(raised.object.handle())));
    } catch (const CallError &error) {
        raiseException("TypeMismatchException", error.what());
    }
    if (cif->rtype == &ffi_type_void)
        return;
    if (cif->rtype->size < sizeof(ffi_arg))
        *static_cast<ffi_arg *>(result) = slot.word;
    else
        memcpy(result, &slot, cif->rtype->size);
}

std::string ordinal(size_t index)
{
    static const char *const names[] = {"first", "second", "third", "fourth", "fifth"};
    return index < std::size(names) ? names[index] : std::to_string(index + 1) + "th";
}

std::string countText(size_t count)
{
    return count == 0 ? "no arguments" : count == 1 ? "1 argument" : std::to_string(count) + " arguments";
}

// 0 when the arguments do not fit.
int rankOfCall(const Declaration &declaration, const Arguments &arguments)
{
    if (declaration.parameters.size() != arguments.size())
        return 0;
    int sum = 1;
    for (size_t i = 0; i < arguments.size(); ++i) {
        int rank = rankOf(declaration.parameters[i].type, arguments[i]);
        if (!rank)
            return 0;
        sum += rank;
    }
    return sum;
}

} // namespace

int rankOf(const DeclaredType &type, const Value &given, std::string *why)
{
    int rank = 0;
    Value value = type.isArray ? given : unboxed(given);
    const PassingFacts &facts = factsOf(type.passing);
    if (type.isArray)
        rank = rankOfArray(type, value);
    else if (type.passing == Passing::Object)
        rank = rankOfObject(type, value);
    else if (type.passing == Passing::Variant)
        rank = 1;
    else if (type.passing == Passing::String)
        rank = value.isString() ? 2 : value.isNil() ? 1 : 0;
    else if (type.passing == Passing::Pointer)
        rank = value.isNil() ? 2 : 0;
    else if (type.passing == Passing::Boolean || type.passing == Passing::Color)
        rank = value.kind() == facts.kind ? 2 : 0;
    else if (type.passing != Passing::Nothing)
        rank = rankOfNumber(facts, value);
    if (!rank && why)
        *why = "must be " + nameForMessage(type) + ", not " + valueForMessage(value);
    return rank;
}

void checkArguments(const Declaration &declaration, const Arguments &arguments)
{
    if (declaration.parameters.size() != arguments.size())
        throw CallError(declaration.text() + ": takes " + countText(declaration.parameters.size()) + ", not " +
                        std::to_string(arguments.size()));
    for (size_t i = 0; i < arguments.size(); ++i) {
        std::string why;
        if (!rankOf(declaration.parameters[i].type, arguments[i], &why))
            throw TypeError(declaration.text() + ": the " + ordinal(i) + " argument, " +
                                declaration.parameters[i].name + ", " + why,
                            int(i));
    }
}

const MethodDescription &chooseOverload(const std::vector<const MethodDescription *> &candidates,
                                        const Arguments &arguments, const std::string &what)
{
    if (candidates.empty())
        throw CallError("there is no " + what);
    const MethodDescription *best = nullptr;
    const MethodDescription *ofThatLength = nullptr;
    int bestRank = 0;
    for (const MethodDescription *candidate : candidates) {
        if (candidate->declaration.parameters.size() == arguments.size() && !ofThatLength)
            ofThatLength = candidate;
        int rank = rankOfCall(candidate->declaration, arguments);
        if (rank > bestRank) {
            best = candidate;
            bestRank = rank;
        }
    }
    if (best)
        return *best;
    // The message speaks of the overload that was most probably meant.
    checkArguments((ofThatLength ? ofThatLength : candidates.front())->declaration, arguments);
    throw CallError(what + ": no overload fits the arguments");
}

Value callFunction(void *function, const Declaration &declaration, const Value &self, const Arguments &arguments)
{
    std::deque<Value> kept;
    std::vector<ffi_type *> types;
    std::vector<Slot> slots(arguments.size() + 1);
    std::vector<void *> places;
    if (!self.isNil()) {
        slots[0].pointer = self.handle();
        types.push_back(&ffi_type_pointer);
        places.push_back(&slots[0]);
    }
    for (size_t i = 0; i < arguments.size(); ++i) {
        const DeclaredType &type = declaration.parameters[i].type;
        pass(type, arguments[i], slots[i + 1], kept);
        types.push_back(ffiTypeOf(type));
        places.push_back(&slots[i + 1]);
    }
    ffi_cif cif;
    if (ffi_prep_cif(&cif, FFI_DEFAULT_ABI, unsigned(types.size()), ffiTypeOf(declaration.result), types.data()) !=
        FFI_OK)
        throw CallError(declaration.text() + ": cannot be called");
    Slot result{};
    ffi_call(&cif, FFI_FN(function), &result, places.data());
    return checkedResult(declaration, receive(declaration.result, result, true));
}

void *functionFor(const Declaration &declaration, bool isShared, const HostMethod::Body &body)
{
    // Never freed, as code may keep the pointer; listed, because no leak checker looks into closures.
    static auto *functions = new std::vector<BodyFunction *>;
    auto *function = new BodyFunction{declaration, isShared, body, {}, {}};
    functions->push_back(function);
    if (!isShared)
        function->types.push_back(&ffi_type_pointer);
    for (const Parameter &parameter : declaration.parameters)
        function->types.push_back(ffiTypeOf(parameter.type));
    void *code = nullptr;
    auto *closure = static_cast<ffi_closure *>(ffi_closure_alloc(sizeof(ffi_closure), &code));
    if (!closure ||
        ffi_prep_cif(&function->cif, FFI_DEFAULT_ABI, unsigned(function->types.size()), ffiTypeOf(declaration.result),
                     function->types.data()) != FFI_OK ||
        ffi_prep_closure_loc(closure, &function->cif, bodyCalled, function, code) != FFI_OK)
        throw CallError(declaration.text() + ": no function can be made for it");
    return code;
}

Declaration setterDeclaration(const Declaration &getter)
{
    Declaration setter = getter;
    setter.assigns = true;
    setter.parameters.push_back({"value", getter.result});
    setter.result = DeclaredType();
    return setter;
}

} // namespace host::runtime
