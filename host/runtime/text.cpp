#include "host/runtime/text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "host/interface/codes.h"
#include "host/runtime/utf8.h"

namespace host::runtime {

namespace {

// What the 8-bit encodings have from 0x80 on; a code behind the end, or without a character, stands for itself.
constexpr std::u16string_view kMacRomanUpperHalf =
    u"ÄÅÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü†°¢£§•¶ß®©™\u00B4\u00A8≠ÆØ∞±≤≥¥µ∂∑∏π∫ªºΩæø¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ–"
    u"—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ\uF8FFÒÚÛÙı\u02C6\u02DC\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB"
    u"\u02C7";
constexpr std::u16string_view kWindowsLatin1UpperHalf =
    u"€\u0081‚ƒ„…†‡\u02C6‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—\u02DC™š›œ\u009DžŸ";
static_assert(kMacRomanUpperHalf.size() == 128 && kWindowsLatin1UpperHalf.size() == 32);

const char16_t kReplacement = 0xFFFD;

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

void appendScalar(std::u16string &units, char32_t scalar)
{
    if (scalar < 0x10000) {
        units += char16_t(scalar);
    } else {
        units += char16_t(0xD800 + ((scalar - 0x10000) >> 10));
        units += char16_t(0xDC00 + ((scalar - 0x10000) & 0x3FF));
    }
}

// The scalar value at `index`, which moves behind it. A lone surrogate reads as U+FFFD.
char32_t nextScalar(std::u16string_view units, size_t &index)
{
    char16_t unit = units[index++];
    if (isHighSurrogate(unit) && index < units.size() && isLowSurrogate(units[index]))
        return 0x10000 + ((char32_t(unit) - 0xD800) << 10) + (units[index++] - 0xDC00);
    return isHighSurrogate(unit) || isLowSurrogate(unit) ? char32_t(kReplacement) : char32_t(unit);
}

std::optional<std::u16string> decodeUTF8(std::string_view bytes)
{
    if (firstBadByte(bytes) < bytes.size())
        return std::nullopt;
    std::u16string units;
    units.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size();) {
        unsigned char lead = bytes[i++];
        int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        char32_t scalar = following ? lead & (0x3F >> following) : lead;
        for (; following > 0; --following)
            scalar = (scalar << 6) | (bytes[i++] & 0x3F);
        appendScalar(units, scalar);
    }
    return units;
}

std::string encodeUTF8(std::u16string_view units)
{
    static const char32_t leads[] = {0, 0xC0, 0xE0, 0xF0};
    std::string bytes;
    bytes.reserve(units.size());
    for (size_t i = 0; i < units.size();) {
        char32_t scalar = nextScalar(units, i);
        int following = scalar < 0x80 ? 0 : scalar < 0x800 ? 1 : scalar < 0x10000 ? 2 : 3;
        bytes += char(leads[following] | (scalar >> (6 * following)));
        while (following-- > 0)
            bytes += char(0x80 | ((scalar >> (6 * following)) & 0x3F));
    }
    return bytes;
}

// A unit of `width` bytes at `bytes`, in either byte order.
uint32_t readUnit(const char *bytes, size_t width, bool bigEndian)
{
    uint32_t unit = 0;
    for (size_t i = 0; i < width; ++i)
        unit |= uint32_t(static_cast<unsigned char>(bytes[bigEndian ? width - 1 - i : i])) << (8 * i);
    return unit;
}

void writeUnit(std::string &bytes, uint32_t unit, size_t width, bool bigEndian)
{
    for (size_t i = 0; i < width; ++i)
        bytes += char(unit >> (8 * (bigEndian ? width - 1 - i : i)));
}

bool isBigEndian(uint32_t encoding)
{
    return encoding == kUTF16BE || encoding == kUTF32BE;
}

std::optional<std::u16string> decodeUTF16(std::string_view bytes, uint32_t encoding)
{
    // A byte left over at the end is no unit.
    std::u16string units;
    for (size_t i = 0; i + 2 <= bytes.size(); i += 2)
        units += char16_t(readUnit(&bytes[i], 2, isBigEndian(encoding)));
    return units;
}

std::optional<std::u16string> decodeUTF32(std::string_view bytes, uint32_t encoding)
{
    std::u16string units;
    for (size_t i = 0; i + 4 <= bytes.size(); i += 4) {
        char32_t scalar = readUnit(&bytes[i], 4, isBigEndian(encoding));
        if (scalar > 0x10FFFF)
            return std::nullopt;
        appendScalar(units, scalar);
    }
    return units;
}

std::u16string decode8Bit(std::string_view bytes, std::u16string_view upper = {})
{
    std::u16string units;
    units.reserve(bytes.size());
    for (unsigned char byte : bytes)
        units += byte >= 0x80 && size_t(byte - 0x80) < upper.size() ? upper[byte - 0x80] : char16_t(byte);
    return units;
}

// Codes below `limit` stand for themselves, and so do those behind the end of `upper`.
std::string encode8Bit(std::u16string_view units, char32_t limit, std::u16string_view upper = {})
{
    std::string bytes;
    for (size_t i = 0; i < units.size();) {
        char32_t scalar = nextScalar(units, i);
        bool isItself = scalar < limit || (!upper.empty() && scalar >= 0x80 + upper.size() && scalar < 0x100);
        size_t place = scalar < 0x10000 ? upper.find(char16_t(scalar)) : upper.npos;
        bytes += isItself ? char(scalar) : place != upper.npos ? char(0x80 + place) : '?';
    }
    return bytes;
}

struct NamedEncoding {
    uint32_t encoding;
    const char *name;
};

const NamedEncoding kEncodings[] = {
    {kMacRoman, "MacRoman"}, {kUTF16, "UTF-16"},     {kISOLatin1, "ISO Latin 1"}, {kWindowsLatin1, "Windows Latin 1"},
    {kASCII, "ASCII"},       {kUTF8, "UTF-8"},       {kUTF32, "UTF-32"},          {kUTF16BE, "UTF-16BE"},
    {kUTF16LE, "UTF-16LE"},  {kUTF32BE, "UTF-32BE"}, {kUTF32LE, "UTF-32LE"},
};

} // namespace

std::optional<std::u16string> decodeText(std::string_view bytes, uint32_t encoding)
{
    switch (encoding) {
    case kUTF8:
        return decodeUTF8(bytes);
    case kUTF16:
    case kUTF16BE:
    case kUTF16LE:
        return decodeUTF16(bytes, encoding);
    case kUTF32:
    case kUTF32BE:
    case kUTF32LE:
        return decodeUTF32(bytes, encoding);
    case kMacRoman:
        return decode8Bit(bytes, kMacRomanUpperHalf);
    case kWindowsLatin1:
        return decode8Bit(bytes, kWindowsLatin1UpperHalf);
    case kISOLatin1:
        return decode8Bit(bytes);
    case kASCII:
        if (std::any_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte >= 0x80; }))
            return std::nullopt;
        return decode8Bit(bytes);
    }
    return std::nullopt;
}

std::optional<std::string> encodeText(std::u16string_view units, uint32_t encoding)
{
    std::string bytes;
    switch (encoding) {
    case kUTF8:
        return encodeUTF8(units);
    case kUTF16:
    case kUTF16BE:
    case kUTF16LE:
        for (char16_t unit : units)
            writeUnit(bytes, unit, 2, isBigEndian(encoding));
        return bytes;
    case kUTF32:
    case kUTF32BE:
    case kUTF32LE:
        for (size_t i = 0; i < units.size();)
            writeUnit(bytes, nextScalar(units, i), 4, isBigEndian(encoding));
        return bytes;
    case kMacRoman:
        return encode8Bit(units, 0x80, kMacRomanUpperHalf);
    case kWindowsLatin1:
        return encode8Bit(units, 0x80, kWindowsLatin1UpperHalf);
    case kISOLatin1:
        return encode8Bit(units, 0x100);
    case kASCII:
        return encode8Bit(units, 0x80);
    }
    return std::nullopt;
}

std::optional<std::string> convertText(std::string_view bytes, uint32_t from, uint32_t to)
{
    if (from == to)
        return std::string(bytes);
    std::optional<std::u16string> units = decodeText(bytes, from);
    if (!units)
        return std::nullopt;
    return encodeText(*units, to);
}

std::string hexadecimalOf(std::string_view bytes)
{
    std::string digits;
    for (unsigned char byte : bytes)
        for (int digit : {byte >> 4, byte & 15})
            digits += "0123456789abcdef"[digit];
    return digits;
}

std::string bytesOfHexadecimal(const std::string &digits)
{
    std::string bytes;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += char(strtol(digits.substr(i, 2).c_str(), nullptr, 16));
    return bytes;
}

std::string encodingName(uint32_t encoding)
{
    for (const NamedEncoding &known : kEncodings)
        if (known.encoding == encoding)
            return known.name;
    if (encoding == kUnknownEncoding)
        return "unknown encoding";
    char number[16];
    snprintf(number, sizeof number, "0x%08X", encoding);
    return number;
}

} // namespace host::runtime
