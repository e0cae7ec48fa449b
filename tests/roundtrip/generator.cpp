#include "tests/roundtrip/tree.h"

#include <algorithm>
#include <cmath>

namespace roundtrip {

using host::ElementType;

namespace {

const int kDeepest = 6;

const Kind kLeaves[] = {
    Kind::Boolean,  Kind::Int32, Kind::UInt32, Kind::Int64, Kind::UInt64, Kind::Single, Kind::Double, Kind::Double,
    Kind::Currency, Kind::Color, Kind::Text,   Kind::Text,  Kind::Text,   Kind::Date,   Kind::Bytes,
};

const struct {
    ElementType type;
    Kind kind; // of its elements; Nil: any
} kArrays[] = {
    {ElementType::Int32, Kind::Int32},     {ElementType::Int64, Kind::Int64},    {ElementType::Single, Kind::Single},
    {ElementType::Double, Kind::Double},   {ElementType::Date, Kind::Date},      {ElementType::String, Kind::Text},
    {ElementType::Boolean, Kind::Boolean}, {ElementType::Object, Kind::Nothing}, {ElementType::Object, Kind::Nothing},
    {ElementType::Object, Kind::Nothing},
};

const int64_t kIntegers[] = {
    0,         1,         -1,         127,         -128,       255,        256,        -32768,    32767,     65535,
    INT32_MAX, INT32_MIN, 2147483648, -2147483649, 4294967295, 4294967296, 4294967301, INT64_MAX, INT64_MIN,
};

const uint64_t kDoubles[] = {
    0,
    0x8000000000000000,
    0x3FF0000000000000,
    0x3FB999999999999A,
    0x7FF0000000000000,
    0xFFF0000000000000,
    0x7FF8000000000000,
    0x0000000000000001,
    0x7FEFFFFFFFFFFFFF,
    0x41DFFFFFFFC00000,
    0x43E0000000000000,
    0xC3E0000000000000,
};

const uint32_t kSingles[] = {
    0, 0x80000000, 0x3F800000, 0x3DCCCCCD, 0x7F800000, 0xFF800000, 0x7FC00000, 0x00000001, 0x7F7FFFFF, 0x4F000000,
};

// Letters, accents of both forms, scripts that join or turn, emoji with their joiners, what XML cannot hold.
const char *const kPieces[] = {
    "a",
    "Z",
    "0",
    " ",
    "\t",
    "\n",
    "\r\n",
    "/",
    ":",
    "%",
    "\"",
    "\\",
    "<&>",
    "'",
    "\xC3\xA9",
    "e\xCC\x81",
    "\xC3\x85",
    "A\xCC\x8A",
    "\xE2\x84\xAB", // composed and not, and the sign
    "\xCC\x81",
    "\xE0\xA4\x95\xE0\xA5\x8D\xE0\xA4\xB7",
    "\xD7\xA9\xD7\x9C",
    "\xEA\xB0\x81",
    "\xE4\xB8\xAD\xE6\x96\x87",
    "\xE2\x80\x8D",
    "\xEF\xBB\xBF",
    "\xEF\xBF\xBD",
    "\xEF\xBF\xBE",
    "\x01",
    "\x7F",
    "\xF0\x9F\x98\x80",
    "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80",
    "\xF0\x9F\x87\xA9\xF0\x9F\x87\xAA",
    "\xF0\x9F\x91\x8D\xF0\x9F\x8F\xBD",
    "\xF0\x90\x80\x80",
    "\xF4\x8F\xBF\xBD",
};

} // namespace

Tree Generator::tree()
{
    return tree(0);
}

Tree Generator::tree(int depth)
{
    if (oneIn(400))
        return leaf(oneOf({Kind::Nothing, Kind::File}));
    if (depth < kDeepest && below(6) < (depth == 0 ? 5 : 2))
        return oneIn(2) ? array(depth) : dictionary(depth);
    return leaf(oneOf(kLeaves));
}

Tree Generator::leaf(Kind kind)
{
    Tree leaf;
    leaf.kind = kind;
    switch (kind) {
    case Kind::Boolean:
        leaf.bits = below(2);
        break;
    case Kind::Single:
        leaf.bits = oneIn(2) ? oneOf(kSingles) : uint32_t(_random());
        break;
    case Kind::Double:
        leaf.bits = oneIn(2) ? oneOf(kDoubles) : _random();
        break;
    case Kind::Currency:
        leaf.real = (double(below(2000001)) - 1000000) / 10000;
        break;
    case Kind::Text:
        leaf.text = text();
        break;
    case Kind::Bytes:
        leaf.text = bytes();
        break;
    case Kind::File:
        leaf.text = "some file";
        break;
    case Kind::Date: {
        const int year = oneIn(4) ? 1 + int(below(4000)) : 1900 + int(below(200));
        leaf.date = {year, 1 + int(below(12)), 1 + int(below(28)), int(below(24)), int(below(60)), int(below(60))};
        break;
    }
    default:
        leaf.bits = integerBits();
        break;
    }
    return leaf;
}

Tree Generator::array(int depth)
{
    Tree array;
    array.kind = Kind::Array;
    if (oneIn(300)) {
        array.elementType = oneIn(2) ? ElementType::Currency : ElementType::Color;
        return array;
    }
    const auto row = kArrays[below(std::size(kArrays))];
    array.elementType = row.type;
    for (uint64_t count = oneIn(5) ? 0 : below(6); count > 0; count--)
        array.elements.push_back(row.kind == Kind::Nothing ? tree(depth + 1) : leaf(row.kind));
    return array;
}

Tree Generator::dictionary(int depth)
{
    Tree dictionary;
    dictionary.kind = Kind::Dictionary;
    for (uint64_t count = oneIn(5) ? 0 : below(6); count > 0; count--) {
        std::string key = text();
        key.erase(std::min(key.size(), key.find('\0')));
        if (std::find(dictionary.keys.begin(), dictionary.keys.end(), key) != dictionary.keys.end())
            continue;
        dictionary.keys.push_back(key);
        dictionary.elements.push_back(tree(depth + 1));
    }
    return dictionary;
}

uint64_t Generator::integerBits()
{
    if (oneIn(2))
        return uint64_t(oneOf(kIntegers));
    return _random() >> below(64);
}

// Now and then empty, long enough for every path through the conversions, or with a zero inside.
std::string Generator::text()
{
    const uint64_t pieces = oneIn(8) ? 0 : oneIn(10) ? below(300) : 1 + below(12);
    std::string text;
    for (uint64_t i = 0; i < pieces; i++)
        text += oneOf(kPieces);
    if (oneIn(50))
        text.insert(text.begin(), '\0');
    else if (oneIn(50))
        text.push_back('\0');
    return text;
}

std::string Generator::bytes()
{
    if (oneIn(200))
        return "";
    const size_t size = oneIn(40) ? 65536 : oneIn(10) ? 1 + below(65536) : 1 + below(64);
    std::string bytes(size, '\0');
    for (char &byte : bytes)
        byte = char(_random());
    return bytes;
}

} // namespace roundtrip
