// Random values of the host language, and what the tables of docs/reference/conversions.md say they have become when
// another process reads them back from disk.
#pragma once

#include "host/value.h"

#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace roundtrip {

enum class Kind {
    Nothing,
    Boolean,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Single,
    Double,
    Currency,
    Color,
    Text,
    Date,
    Bytes,
    File,
    Array,      // of `elementType`; its elements are trees of one kind, or of any for variants
    Dictionary, // texts to trees
};

struct Tree {
    Kind kind = Kind::Nothing;
    uint64_t bits = 0; // of a number, boolean or colour
    double real = 0;   // of a currency
    std::string text;  // UTF-8, or bytes
    std::vector<int> date;
    host::ElementType elementType = host::ElementType::Object;
    std::vector<Tree> elements;
    std::vector<std::string> keys; // of a Dictionary's elements

    host::Value value() const;

    // Whether it has a Cocoa form at all: nil, empty data and arrays of currencies and colours have none.
    bool hasForm() const;
    // Whether the defaults database can hold it: every part has a form, and none is a file.
    bool isStorable() const;

    // What is wrong with the value read back, "" when it is as the tables say. `path` leads to this tree.
    std::string difference(const host::Value &readBack, const std::string &path) const;
};

class Generator {
public:
    explicit Generator(uint64_t seed) : _random(seed) {}

    // Mostly one that can be stored; now and then with a part that cannot.
    Tree tree();

private:
    uint64_t below(uint64_t bound) { return _random() % bound; }
    bool oneIn(uint64_t chances) { return below(chances) == 0; }
    template <class Each, size_t count>
    Each oneOf(const Each (&choices)[count])
    {
        return choices[below(count)];
    }

    Tree tree(int depth);
    Tree leaf(Kind kind);
    Tree array(int depth);
    Tree dictionary(int depth);
    uint64_t integerBits();
    std::string text();
    std::string bytes();

    std::mt19937_64 _random;
};

} // namespace roundtrip
