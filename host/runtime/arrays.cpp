#include "host/runtime/arrays.h"

#include <cstring>

#include "host/exception.h"
#include "host/interface/records.h"
#include "host/runtime/passing.h"
#include "host/runtime/state.h"

namespace host::runtime {

namespace {

struct ElementFacts {
    ElementType type;
    const char *name;
    size_t width;
    int32_t varType;
    Passing passing; // an element lies in storage as it is passed
};

const ElementFacts kElements[] = {
    {ElementType::Int32, "integer", 4, kVarTypeInt32, Passing::Int32},
    {ElementType::Single, "single", 4, kVarTypeSingle, Passing::Single},
    {ElementType::Double, "double", 8, kVarTypeDouble, Passing::Double},
    {ElementType::String, "string", 4, kVarTypeString, Passing::String},
    {ElementType::Object, "object", 4, kVarTypeObject, Passing::Variant},
    {ElementType::Int64, "int64", 8, kVarTypeInt64, Passing::Int64},
    {ElementType::Boolean, "boolean", 1, kVarTypeBoolean, Passing::Boolean},
    {ElementType::Date, "date", 4, kVarTypeDate, Passing::Variant},
    {ElementType::Currency, "currency", 8, kVarTypeCurrency, Passing::Currency},
    {ElementType::Color, "color", 4, kVarTypeColor, Passing::Color},
};

const ElementFacts &elementFacts(ElementType type)
{
    for (const ElementFacts &facts : kElements)
        if (facts.type == type)
            return facts;
    throw TypeError("there is no array element type " + std::to_string(int32_t(type)));
}

bool holdsHandles(ElementType type)
{
    return type == ElementType::String || type == ElementType::Object || type == ElementType::Date;
}

Slot slotOf(const void *element, size_t width)
{
    Slot slot{};
    memcpy(&slot, element, width);
    return slot;
}

// The value as a handle that fits the element type, or nil.
Value handleFor(ElementType type, const Value &value)
{
    bool fits = value.isNil() || (type == ElementType::String && value.isString()) ||
                (type == ElementType::Date && value.isA("Date")) || type == ElementType::Object;
    if (!fits)
        throw TypeError("an array of " + std::string(elementName(type)) + " cannot hold " + value.typeName());
    return type == ElementType::Object ? value.boxed() : value;
}

} // namespace

int32_t elementVarType(ElementType type)
{
    return elementFacts(type).varType;
}

const char *elementName(ElementType type)
{
    return elementFacts(type).name;
}

ElementType elementTypeOf(const DeclaredType &type)
{
    if (type.passing == Passing::Object && equalIgnoringCase(type.name, "Date"))
        return ElementType::Date;
    for (const ElementFacts &facts : kElements)
        if (facts.passing == type.passing)
            return facts.type;
    return ElementType::Object;
}

bool isElementType(int32_t code)
{
    for (const ElementFacts &facts : kElements)
        if (int32_t(facts.type) == code)
            return true;
    return false;
}

ArrayHandle::ArrayHandle(ElementType type, int32_t count)
    : Handle(HandleKind::Array, sizeof(interface::ArrayRecord)), _type(type), _width(elementFacts(type).width),
      _count(count), _storage(size_t(count) * _width)
{
    auto *array = static_cast<interface::ArrayRecord *>(record);
    array->mark = interface::kArrayMark;
    array->elementType = uint32_t(type);
    publish();
}

ArrayHandle::~ArrayHandle()
{
    for (int32_t i = 0; i < _count; ++i)
        if (Handle *element = handleAt(i))
            unhold(*element);
}

std::string ArrayHandle::what() const
{
    return std::string("array of ") + elementName(_type) + ", " + std::to_string(_count) +
           (_count == 1 ? " element" : " elements");
}

Handle *ArrayHandle::handleAt(int32_t index) const
{
    return holdsHandles(_type) ? find(slotOf(raw(index), _width).pointer) : nullptr;
}

Value ArrayHandle::at(int32_t index) const
{
    return receive({"", elementFacts(_type).passing, false}, slotOf(raw(index), _width), false);
}

void ArrayHandle::set(int32_t index, const Value &value)
{
    Slot slot{};
    if (auto put = factsOf(elementFacts(_type).passing).put) {
        put(value, slot);
        memcpy(&_storage[size_t(index) * _width], &slot, _width);
        return;
    }
    Value element = handleFor(_type, value);
    Handle *before = handleAt(index);
    if (Handle *now = find(element.handle()))
        hold(*now);
    slot.pointer = element.handle();
    memcpy(&_storage[size_t(index) * _width], &slot, _width);
    if (before)
        unhold(*before);
}

void ArrayHandle::insert(int32_t index, const Value &value)
{
    _storage.insert(_storage.begin() + index * _width, _width, 0);
    ++_count;
    publish();
    try {
        set(index, value);
    } catch (...) {
        remove(index);
        throw;
    }
}

void ArrayHandle::remove(int32_t index)
{
    Handle *element = handleAt(index);
    auto first = _storage.begin() + index * _width;
    _storage.erase(first, first + _width);
    --_count;
    publish();
    if (element)
        unhold(*element);
}

void ArrayHandle::publish()
{
    auto *array = static_cast<interface::ArrayRecord *>(record);
    array->elements = state().profile.hasArrayStorage() && _count ? _storage.data() : nullptr;
}

ArrayHandle *expectArray(const void *record, const char *user)
{
    return static_cast<ArrayHandle *>(expect(record, HandleKind::Array, user));
}

} // namespace host::runtime
