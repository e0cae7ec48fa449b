#include "host/runtime/dictionaries.h"

#include <clocale>
#include <cmath>
#include <cstring>
#include <cwctype>

#include "host/runtime/dates.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/state.h"
#include "host/runtime/text.h"
#include "host/runtime/variants.h"

namespace host::runtime {

namespace {

std::string numberKey(const Value &key)
{
    if (key.kind() == Value::Kind::UInt64)
        return "i" + std::to_string(key.uint64());
    if (key.kind() == Value::Kind::Int32 || key.kind() == Value::Kind::UInt32 || key.kind() == Value::Kind::Int64)
        return "i" + std::to_string(key.int64());
    double number = key.number();
    if (number == std::floor(number) && std::fabs(number) < 9.0e18)
        return "i" + std::to_string(int64_t(number));
    std::string text("d........");
    memcpy(&text[1], &number, sizeof number);
    return text;
}

// Of every alphabet, whatever the environment's locale is.
std::string lowercase(const std::string &utf8)
{
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::string units = convertText(utf8, kUTF8, kUTF32).value_or("");
    for (size_t at = 0; at + sizeof(char32_t) <= units.size(); at += sizeof(char32_t)) {
        char32_t unit;
        memcpy(&unit, &units[at], sizeof unit);
        unit = char32_t(towlower_l(wint_t(unit), locale));
        memcpy(&units[at], &unit, sizeof unit);
    }
    return units;
}

std::string stringKey(const Value &key)
{
    if (key.isNullHandle())
        return "s";
    std::optional<std::string> text = convertText(key.bytes(), key.encoding(), kUTF8);
    if (!text)
        return "b" + key.bytes();
    return "s" + (state().profile.caseInsensitiveKeys ? lowercase(*text) : *text);
}

DictionaryPayload *expectDictionary(const void *record, const char *user)
{
    auto *dictionary = payloadOf<DictionaryPayload>(expectObject(record, user));
    if (!dictionary)
        raiseException("NilObjectException", std::string(user) + ": not a Dictionary");
    return dictionary;
}

// The methods that plug-ins load by declaration are C functions; the rest serve host code only.

void setValue(void *self, void *key, void *value)
{
    if (DictionaryPayload *dictionary = expectDictionary(self, "Dictionary.Value"))
        dictionary->put(Value::borrowHandle(key), Value::borrowHandle(value));
}

void *getValue(void *self, void *key)
{
    DictionaryPayload *dictionary = expectDictionary(self, "Dictionary.Value");
    if (!dictionary)
        return nullptr;
    Value wanted = Value::borrow(key);
    const DictionaryPayload::Entry *entry = dictionary->find(wanted);
    if (!entry) {
        raiseException("KeyNotFoundException", "There is no key " + wanted.describe() + ".");
        return nullptr;
    }
    return handOutVariant(entry->value);
}

void *getKey(void *self, int32_t index)
{
    DictionaryPayload *dictionary = expectDictionary(self, "Dictionary.Key");
    if (!dictionary)
        return nullptr;
    if (index < 0 || index >= dictionary->count()) {
        raiseException("OutOfBoundsException", "There is no key number " + std::to_string(index) + ".");
        return nullptr;
    }
    return handOutVariant(dictionary->entries[size_t(index)].key);
}

DictionaryPayload &dictionaryOf(const Value &value)
{
    return *payloadOf<DictionaryPayload>(value);
}

} // namespace

std::string keyText(const Value &key)
{
    if (auto *variant = payloadOf<VariantPayload>(key))
        return keyText(variant->value);
    if (auto *date = payloadOf<DatePayload>(key))
        return "t" + std::to_string(int64_t(date->totalSeconds()));
    if (key.isNil())
        return "n";
    if (key.isNumber())
        return numberKey(key);
    if (key.isString())
        return stringKey(key);
    if (key.kind() == Value::Kind::Boolean)
        return key.boolean() ? "true" : "false";
    if (key.kind() == Value::Kind::Color)
        return "c" + std::to_string(key.colorValue());
    return "o" + std::to_string(reinterpret_cast<uintptr_t>(key.handle()));
}

std::string DictionaryPayload::describe() const
{
    return "with " + std::to_string(count()) + (count() == 1 ? " entry" : " entries");
}

const DictionaryPayload::Entry *DictionaryPayload::find(const Value &key) const
{
    auto place = _places.find(keyText(key));
    return place == _places.end() ? nullptr : &entries[place->second];
}

void DictionaryPayload::put(const Value &key, const Value &value)
{
    auto [place, isNew] = _places.emplace(keyText(key), entries.size());
    // What was there may die with the assignment and call back, so it leaves the Dictionary first.
    Value boxed = value.boxed();
    if (isNew)
        entries.push_back({key.boxed(), std::move(boxed)});
    else
        std::swap(entries[place->second].value, boxed);
}

bool DictionaryPayload::remove(const Value &key)
{
    auto place = _places.find(keyText(key));
    if (place == _places.end())
        return false;
    size_t index = place->second;
    _places.erase(place);
    Entry removed = std::move(entries[index]);
    entries.erase(entries.begin() + ptrdiff_t(index));
    for (auto &other : _places)
        if (other.second > index)
            --other.second;
    return true;
}

void DictionaryPayload::clear()
{
    _places.clear();
    std::vector<Entry> removed;
    removed.swap(entries);
}

void addDictionaryClass()
{
    Class &dictionary = addOwnClass("Dictionary", "", [] { return std::make_unique<DictionaryPayload>(); });
    dictionary.properties.push_back(
        {"Count", Passing::Int32,
         [](ObjectHandle &object) { return Value(payloadOf<DictionaryPayload>(&object)->count()); }, nullptr});

    addMethod(dictionary, "Value(key As Variant, Assigns _value As Variant)", reinterpret_cast<void *>(setValue));
    addMethod(dictionary, "Value(key As Variant) As Variant", reinterpret_cast<void *>(getValue));
    addMethod(dictionary, "Key(index As Integer) As Variant", reinterpret_cast<void *>(getKey));

    addMethod(dictionary, "HasKey(key As Variant) As Boolean", [](const Value &self, const Arguments &arguments) {
        return Value(dictionaryOf(self).find(arguments[0]) != nullptr);
    });
    addMethod(dictionary, "Lookup(key As Variant, defaultValue As Variant) As Variant",
              [](const Value &self, const Arguments &arguments) {
                  const DictionaryPayload::Entry *entry = dictionaryOf(self).find(arguments[0]);
                  return entry ? entry->value : arguments[1];
              });
    addMethod(dictionary, "Remove(key As Variant)", [](const Value &self, const Arguments &arguments) {
        if (!dictionaryOf(self).remove(arguments[0]))
            raiseException("KeyNotFoundException", "There is no key " + arguments[0].describe() + ".");
        return Value();
    });
    addMethod(dictionary, "Clear", [](const Value &self, const Arguments &) {
        dictionaryOf(self).clear();
        return Value();
    });
    addMethod(dictionary, "Keys As Variant()", [](const Value &self, const Arguments &) {
        Value keys = Value::variants(Arguments());
        for (const DictionaryPayload::Entry &entry : dictionaryOf(self).entries)
            keys.append(entry.key);
        return keys;
    });
    addMethod(dictionary, "Values As Variant()", [](const Value &self, const Arguments &) {
        Value values = Value::variants(Arguments());
        for (const DictionaryPayload::Entry &entry : dictionaryOf(self).entries)
            values.append(entry.value);
        return values;
    });
}

} // namespace host::runtime
