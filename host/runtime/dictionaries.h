// Dictionaries: Variants by Variants, in the order in which keys were first put.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "host/runtime/objects.h"

namespace host::runtime {

struct DictionaryPayload : Payload {
    struct Entry {
        Value key;
        Value value;
    };

    std::string describe() const override;
    int32_t count() const { return int32_t(entries.size()); }
    const Entry *find(const Value &key) const; // null when there is none
    void put(const Value &key, const Value &value);
    bool remove(const Value &key);
    void clear();

    std::vector<Entry> entries;

private:
    std::unordered_map<std::string, size_t> _places; // by the text that stands for a key
};

// One text for all keys that are equal: numbers by value, text by its characters, Dates by time, objects by identity.
std::string keyText(const Value &key);

} // namespace host::runtime
