// What lies inside arrays, Dictionaries and other objects.
#include "host/exception.h"
#include "host/runtime/dictionaries.h"
#include "host/runtime/folder_items.h"
#include "host/runtime/memory_blocks.h"
#include "host/runtime/overloads.h"
#include "host/runtime/variants.h"
#include "host/value_access.h"

namespace host {

using namespace runtime;

static void needIndex(const ArrayHandle &array, int32_t index, int32_t end)
{
    if (index < 0 || index >= end)
        throw CallError("index " + std::to_string(index) + " is outside of an " + array.what());
}

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

} // namespace host
