#include "host/value.h"

#include "host/exception.h"
#include "host/runtime/dates.h"
#include "host/runtime/folder_items.h"
#include "host/runtime/ledger.h"
#include "host/runtime/memory_blocks.h"
#include "host/runtime/variants.h"
#include "host/value_access.h"

#include <iterator>
#include <tuple>

namespace host {

using namespace runtime;

// In the order of Value::Kind.
static const struct {
    const char *name;
    VarType varType;
} kKinds[] = {
    {"nil", kVarTypeNil},       {"integer", kVarTypeInt32},     {"uint32", kVarTypeInt64},
    {"int64", kVarTypeInt64},   {"uint64", kVarTypeInt64},      {"single", kVarTypeSingle},
    {"double", kVarTypeDouble}, {"currency", kVarTypeCurrency}, {"boolean", kVarTypeBoolean},
    {"color", kVarTypeColor},   {"string", kVarTypeString},     {"object", kVarTypeObject},
    {"array", kVarTypeArray},
};
static_assert(std::size(kKinds) == size_t(Value::Kind::Array) + 1);

void wrongKind(const Value &value, const char *wanted)
{
    throw TypeError("expected " + std::string(wanted) + ", got " + value.typeName());
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

static_assert(sizeof(long) == sizeof(int32_t));

Value::Value(const Value &other) : _kind(other._kind), _value(other._value)
{
    if (handle())
        hold(*_value.handle);
}

Value::Value(Value &&other) noexcept : _kind(other._kind), _value(other._value)
{
    other._kind = Kind::Nothing;
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
    _kind = Kind::Nothing;
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

Value Value::date(int year, int month, int day, int hour, int minute, int second)
{
    Value date = adoptHandle(newInstance(*findClass("Date"))->record);
    DatePayload &payload = *payloadOf<DatePayload>(date);
    std::tie(payload.year, payload.month, payload.day) = std::tie(year, month, day);
    std::tie(payload.hour, payload.minute, payload.second) = std::tie(hour, minute, second);
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

// The live handle, or null, which is a fault unless nothing was given.
static Handle *liveHandle(void *record, const char *given)
{
    Handle *handle = record ? find(record) : nullptr;
    if (record && !handle)
        noteFault("the host was " + std::string(given) + " " + epitaph(record).value_or("no handle at all") +
                  " as a live handle");
    return handle;
}

Value Value::adoptHandle(void *record)
{
    Value value;
    if (Handle *handle = liveHandle(record, "handed")) {
        takeOver(*handle);
        value.take(*handle);
    }
    return value;
}

Value Value::borrowHandle(void *record)
{
    Value value;
    if (Handle *handle = liveHandle(record, "shown")) {
        hold(*handle);
        value.take(*handle);
    }
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
    if (isArray())
        return kVarTypeArray + elementVarType(elementType());
    if (auto *variant = payloadOf<VariantPayload>(*this))
        return variant->value.varType();
    return isA("Date") ? kVarTypeDate : kKinds[size_t(_kind)].varType;
}

std::string Value::typeName() const
{
    if (isArray())
        return std::string("array of ") + elementName(elementType());
    return isObject() ? className() : kKinds[size_t(_kind)].name;
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

} // namespace host
