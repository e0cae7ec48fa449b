#include "host/value.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "host/exception.h"
#include "host/runtime/arrays.h"
#include "host/runtime/calls.h"
#include "host/runtime/dates.h"
#include "host/runtime/dictionaries.h"
#include "host/runtime/folder_items.h"
#include "host/runtime/ledger.h"
#include "host/runtime/memory_blocks.h"
#include "host/runtime/objects.h"
#include "host/runtime/strings.h"
#include "host/runtime/text.h"
#include "host/runtime/variants.h"

namespace host {

using namespace runtime;

namespace {

constexpr int kDescribedDepth = 8;

[[noreturn]] void wrongKind(const Value &value, const char *wanted)
{
    throw TypeError("expected " + std::string(wanted) + ", got " + value.typeName());
}

template <class P>
P &need(const Value &value, const char *wanted)
{
    P *payload = payloadOf<P>(value);
    if (!payload)
        wrongKind(value, wanted);
    return *payload;
}

ArrayHandle &needArray(const Value &value)
{
    if (!value.isArray())
        wrongKind(value, "an array");
    return *static_cast<ArrayHandle *>(find(value.handle()));
}

StringHandle *stringOf(const Value &value)
{
    if (!value.isString() && !value.isNil())
        wrongKind(value, "a string");
    return value.isNullHandle() ? nullptr : static_cast<StringHandle *>(find(value.handle()));
}

void needIndex(const ArrayHandle &array, int32_t index, int32_t end)
{
    if (index < 0 || index >= end)
        throw CallError("index " + std::to_string(index) + " is outside of an " + array.what());
}

std::string describeAt(const Value &value, int depth);

std::string describeArray(const Value &array, int depth)
{
    std::string text = "[";
    for (int32_t i = 0; i < array.count(); ++i)
        text += (i ? ", " : "") + describeAt(array.at(i), depth + 1);
    return text + "]";
}

std::string describeDictionary(const DictionaryPayload &dictionary, int depth)
{
    std::string text = "{";
    for (const DictionaryPayload::Entry &entry : dictionary.entries)
        text += (text.size() > 1 ? ", " : "") + describeAt(entry.key, depth + 1) + ": " +
                describeAt(entry.value, depth + 1);
    return text + "}";
}

std::string describeString(const Value &string)
{
    if (string.isNullHandle())
        return "\"\"";
    std::optional<std::string> text = convertText(string.bytes(), string.encoding(), kUTF8);
    std::string quoted = "\"";
    for (char c : text ? *text : string.bytes())
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + "\"";
}

std::string describeAt(const Value &value, int depth)
{
    if (depth > kDescribedDepth)
        return "...";
    switch (value.kind()) {
    case Value::Kind::Nil:
        return "nil";
    case Value::Kind::String:
        return describeString(value);
    case Value::Kind::Array:
        return describeArray(value, depth);
    case Value::Kind::Object:
        break;
    default:
        return variantAsString(value).text();
    }
    if (auto *variant = payloadOf<VariantPayload>(value))
        return describeAt(variant->value, depth);
    if (auto *dictionary = payloadOf<DictionaryPayload>(value))
        return describeDictionary(*dictionary, depth);
    return find(value.handle())->what();
}

} // namespace

// --- Making ---------------------------------------------------------------------------------------------------------

Value::Value(bool value) : _kind(Kind::Boolean)
{
    _value.integer = value;
}

Value::Value(int value) : _kind(Kind::Int32)
{
    _value.integer = value;
}

Value::Value(long value) : _kind(Kind::Int32)
{
    static_assert(sizeof(long) == sizeof(int32_t));
    _value.integer = value;
}

Value::Value(long long value) : _kind(Kind::Int64)
{
    _value.integer = value;
}

Value::Value(unsigned value) : _kind(Kind::UInt32)
{
    _value.integer = value;
}

Value::Value(unsigned long value) : Value(unsigned(value)) {}

Value::Value(unsigned long long value) : _kind(Kind::UInt64)
{
    _value.integer = int64_t(value);
}

Value::Value(float value) : _kind(Kind::Single)
{
    _value.real = value;
}

Value::Value(double value) : _kind(Kind::Double)
{
    _value.real = value;
}

Value::Value(const char *utf8)
{
    if (utf8)
        *this = string(utf8);
}

Value::Value(const std::string &utf8) : Value(string(utf8)) {}

Value::Value(const Value &other) : _kind(other._kind), _value(other._value)
{
    if (handle())
        hold(*_value.handle);
}

Value::Value(Value &&other) noexcept : _kind(other._kind), _value(other._value)
{
    other._kind = Kind::Nil;
    other._value = {};
}

Value &Value::operator=(Value other) noexcept
{
    std::swap(_kind, other._kind);
    std::swap(_value, other._value);
    return *this;
}

Value::~Value()
{
    if (handle())
        unhold(*_value.handle);
}

void Value::reset()
{
    Handle *given = handle() ? _value.handle : nullptr;
    _kind = Kind::Nil;
    _value = {};
    if (given)
        unhold(*given);
}

void Value::take(Handle &taken)
{
    _kind = taken.kind == HandleKind::String  ? Kind::String
            : taken.kind == HandleKind::Array ? Kind::Array
                                              : Kind::Object;
    _value.handle = &taken;
}

Value Value::string(std::string_view bytes, uint32_t encoding)
{
    return adoptHandle((new StringHandle(bytes, encoding))->record);
}

Value Value::utf16(std::u16string_view units)
{
    return string({reinterpret_cast<const char *>(units.data()), units.size() * 2}, kUTF16);
}

Value Value::currency(double value)
{
    Value currency(Kind::Currency);
    currency._value.real = value;
    return currency;
}

Value Value::color(uint32_t rgb)
{
    Value color(Kind::Color);
    color._value.integer = rgb;
    return color;
}

Value Value::date(int year, int month, int day, int hour, int minute, int second)
{
    Value date = adoptHandle(newInstance(*findClass("Date"))->record);
    DatePayload &payload = *payloadOf<DatePayload>(date);
    payload.year = year;
    payload.month = month;
    payload.day = day;
    payload.hour = hour;
    payload.minute = minute;
    payload.second = second;
    return date;
}

Value Value::memoryBlock(std::string_view bytes)
{
    ObjectHandle *made = newMemoryBlock(int32_t(bytes.size()));
    if (!made)
        throw std::bad_alloc();
    Value block = adoptHandle(made->record);
    bytes.copy(reinterpret_cast<char *>(block.data()), bytes.size());
    return block;
}

Value Value::folderItem(const std::string &absolutePath)
{
    return adoptHandle(newFolderItem(absolutePath)->record);
}

Value Value::dictionary()
{
    return adoptHandle(newInstance(*findClass("Dictionary"))->record);
}

Value Value::dictionary(std::initializer_list<std::pair<Value, Value>> entries)
{
    Value made = dictionary();
    for (const auto &entry : entries)
        made.put(entry.first, entry.second);
    return made;
}

Value Value::array(ElementType type, const std::vector<Value> &elements)
{
    Value array = adoptHandle((new ArrayHandle(type, int32_t(elements.size())))->record);
    for (size_t i = 0; i < elements.size(); ++i)
        needArray(array).set(int32_t(i), elements[i]);
    return array;
}

Value Value::adoptHandle(void *record)
{
    Value value;
    if (!record)
        return value;
    Handle *handle = find(record);
    if (!handle) {
        noteFault("the host was handed " + epitaph(record).value_or("no handle at all") + " as a live handle");
        return value;
    }
    takeOver(*handle);
    value.take(*handle);
    return value;
}

Value Value::borrowHandle(void *record)
{
    Value value;
    if (!record)
        return value;
    Handle *handle = find(record);
    if (!handle) {
        noteFault("the host was shown " + epitaph(record).value_or("no handle at all") + " as a live handle");
        return value;
    }
    hold(*handle);
    value.take(*handle);
    return value;
}

Value Value::adopt(void *record)
{
    Value value = adoptHandle(record);
    if (auto *variant = payloadOf<VariantPayload>(value))
        return variant->value;
    return value;
}

Value Value::borrow(void *record)
{
    return valueOfVariant(record);
}

Value Value::boxed() const
{
    if (isNil() || isObject() || isArray())
        return *this;
    return adoptHandle(newVariant(*this)->record);
}

// --- Looking --------------------------------------------------------------------------------------------------------

bool Value::isNumber() const
{
    return _kind >= Kind::Int32 && _kind <= Kind::Currency;
}

bool Value::isA(const std::string &name) const
{
    if (!isObject())
        return false;
    const Class *wanted = findClass(name);
    return wanted && static_cast<ObjectHandle *>(_value.handle)->hostClass.isKindOf(*wanted);
}

int32_t Value::varType() const
{
    switch (_kind) {
    case Kind::Nil:
        return kVarTypeNil;
    case Kind::Int32:
        return kVarTypeInt32;
    case Kind::UInt32:
    case Kind::Int64:
    case Kind::UInt64:
        return kVarTypeInt64;
    case Kind::Single:
        return kVarTypeSingle;
    case Kind::Double:
        return kVarTypeDouble;
    case Kind::Currency:
        return kVarTypeCurrency;
    case Kind::Boolean:
        return kVarTypeBoolean;
    case Kind::Color:
        return kVarTypeColor;
    case Kind::String:
        return kVarTypeString;
    case Kind::Array:
        return kVarTypeArray + elementVarType(elementType());
    case Kind::Object:
        break;
    }
    if (auto *variant = payloadOf<VariantPayload>(*this))
        return variant->value.varType();
    return isA("Date") ? kVarTypeDate : kVarTypeObject;
}

std::string Value::typeName() const
{
    switch (_kind) {
    case Kind::Nil:
        return "nil";
    case Kind::Int32:
        return "integer";
    case Kind::UInt32:
        return "uint32";
    case Kind::Int64:
        return "int64";
    case Kind::UInt64:
        return "uint64";
    case Kind::Single:
        return "single";
    case Kind::Double:
        return "double";
    case Kind::Currency:
        return "currency";
    case Kind::Boolean:
        return "boolean";
    case Kind::Color:
        return "color";
    case Kind::String:
        return "string";
    case Kind::Array:
        return std::string("array of ") + elementName(elementType());
    case Kind::Object:
        return className();
    }
    return {};
}

void *Value::handle() const
{
    bool hasHandle = _kind == Kind::String || _kind == Kind::Object || _kind == Kind::Array;
    return hasHandle && _value.handle ? _value.handle->record : nullptr;
}

int32_t Value::lockCount() const
{
    return handle() ? _value.handle->locks : 0;
}

const std::string &Value::className() const
{
    if (!isObject())
        wrongKind(*this, "an object");
    return static_cast<ObjectHandle *>(_value.handle)->hostClass.name;
}

// --- Reading --------------------------------------------------------------------------------------------------------

bool Value::boolean() const
{
    if (_kind != Kind::Boolean)
        wrongKind(*this, "a boolean");
    return _value.integer != 0;
}

int32_t Value::int32() const
{
    int64_t wide = int64();
    if (wide < std::numeric_limits<int32_t>::min() || wide > std::numeric_limits<int32_t>::max())
        throw TypeError(std::to_string(wide) + " does not fit an integer of 32 bits");
    return int32_t(wide);
}

int64_t Value::int64() const
{
    switch (_kind) {
    case Kind::Int32:
    case Kind::UInt32:
    case Kind::Int64:
        return _value.integer;
    case Kind::UInt64:
        if (_value.integer < 0)
            throw TypeError(std::to_string(uint64()) + " does not fit a signed integer of 64 bits");
        return _value.integer;
    case Kind::Single:
    case Kind::Double:
    case Kind::Currency:
        if (_value.real != std::floor(_value.real) || std::fabs(_value.real) >= 9223372036854775808.0)
            throw TypeError(describe() + " is no whole number of 64 bits");
        return int64_t(_value.real);
    default:
        wrongKind(*this, "a number");
    }
}

uint64_t Value::uint64() const
{
    if (_kind == Kind::UInt64)
        return uint64_t(_value.integer);
    int64_t value = int64();
    if (value < 0)
        throw TypeError(std::to_string(value) + " is negative");
    return uint64_t(value);
}

float Value::single() const
{
    return float(number());
}

double Value::number() const
{
    if (_kind == Kind::Single || _kind == Kind::Double || _kind == Kind::Currency)
        return _value.real;
    return _kind == Kind::UInt64 ? double(uint64()) : double(int64());
}

uint32_t Value::colorValue() const
{
    if (_kind != Kind::Color)
        wrongKind(*this, "a colour");
    return uint32_t(_value.integer);
}

std::string Value::text() const
{
    StringHandle *string = stringOf(*this);
    if (!string)
        return {};
    std::optional<std::string> text = convertText(string->bytes(), string->encoding(), kUTF8);
    return text ? *text : std::string(string->bytes());
}

std::string Value::bytes() const
{
    if (auto *block = payloadOf<MemoryBlockPayload>(*this))
        return std::string(block->bytes());
    StringHandle *string = stringOf(*this);
    return string ? std::string(string->bytes()) : std::string();
}

uint32_t Value::encoding() const
{
    StringHandle *string = stringOf(*this);
    return string ? string->encoding() : kUnknownEncoding;
}

// --- Collections ----------------------------------------------------------------------------------------------------

ElementType Value::elementType() const
{
    return needArray(*this).type();
}

int32_t Value::count() const
{
    if (auto *dictionary = payloadOf<DictionaryPayload>(*this))
        return dictionary->count();
    return needArray(*this).count();
}

Value Value::at(int32_t index) const
{
    ArrayHandle &array = needArray(*this);
    needIndex(array, index, array.count());
    return array.at(index);
}

void Value::append(const Value &element)
{
    needArray(*this).insert(count(), element);
}

void Value::setAt(int32_t index, const Value &element)
{
    ArrayHandle &array = needArray(*this);
    needIndex(array, index, array.count());
    array.set(index, element);
}

void Value::insert(int32_t index, const Value &element)
{
    ArrayHandle &array = needArray(*this);
    needIndex(array, index, array.count() + 1);
    array.insert(index, element);
}

void Value::removeAt(int32_t index)
{
    ArrayHandle &array = needArray(*this);
    needIndex(array, index, array.count());
    array.remove(index);
}

Value Value::keyAt(int32_t index) const
{
    auto &dictionary = need<DictionaryPayload>(*this, "a Dictionary");
    if (index < 0 || index >= dictionary.count())
        throw CallError("there is no key number " + std::to_string(index));
    return Value::borrow(dictionary.entries[size_t(index)].key.handle());
}

bool Value::hasKey(const Value &key) const
{
    return need<DictionaryPayload>(*this, "a Dictionary").find(key) != nullptr;
}

Value Value::lookup(const Value &key) const
{
    const DictionaryPayload::Entry *entry = need<DictionaryPayload>(*this, "a Dictionary").find(key);
    return entry ? Value::borrow(entry->value.handle()) : Value();
}

void Value::put(const Value &key, const Value &value)
{
    need<DictionaryPayload>(*this, "a Dictionary").put(key, value);
}

// --- Objects --------------------------------------------------------------------------------------------------------

uint8_t *Value::data() const
{
    return need<MemoryBlockPayload>(*this, "a MemoryBlock").data;
}

std::string Value::path() const
{
    return need<FolderItemPayload>(*this, "a FolderItem").path;
}

Value Value::property(const std::string &name) const
{
    if (isObject()) {
        auto &object = *static_cast<ObjectHandle *>(_value.handle);
        if (const Property *property = findProperty(object, name))
            return property->get(object);
    }
    const VariantProperty *property = findVariantProperty(name);
    if (!property)
        throw CallError(typeName() + " has no property " + name);
    return property->get(payloadOf<VariantPayload>(*this) ? payloadOf<VariantPayload>(*this)->value : *this);
}

void Value::setProperty(const std::string &name, const Value &value)
{
    const Property *property = isObject() ? findProperty(*static_cast<ObjectHandle *>(_value.handle), name) : nullptr;
    if (!property || !property->set)
        throw CallError(typeName() + " has no property " + name + " that can be set");
    std::string why;
    if (!rankOf({"", property->type, false}, value, &why))
        throw TypeError("property " + name + " " + why);
    property->set(*static_cast<ObjectHandle *>(_value.handle), value);
}

void *Value::instanceData() const
{
    className();
    return static_cast<char *>(handle()) + interface::kInstanceDataOffset;
}

bool Value::equals(const Value &other) const
{
    if (isNumber() && other.isNumber()) {
        bool reals = (_kind >= Kind::Single) || (other._kind >= Kind::Single);
        return reals ? number() == other.number() : keyText(*this) == keyText(other);
    }
    return keyText(*this) == keyText(other);
}

std::string Value::describe() const
{
    return describeAt(*this, 0);
}

} // namespace host
