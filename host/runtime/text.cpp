#include "host/runtime/text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "host/interface/codes.h"

namespace host::runtime {

namespace {

// The upper halves of the 8-bit encodings, from 0x80. An unused code stands for itself.
const char16_t kMacRomanUpperHalf[128] = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

const char16_t kWindowsLatin1UpperHalf[128] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152,
    0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122,
    0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, 0x00A0, 0x00A1, 0x00A2, 0x00A3, 0x00A4, 0x00A5, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x00AA, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x00AF, 0x00B0, 0x00B1, 0x00B2, 0x00B3,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x00B9, 0x00BA, 0x00BB, 0x00BC, 0x00BD, 0x00BE, 0x00BF, 0x00C0,
    0x00C1, 0x00C2, 0x00C3, 0x00C4, 0x00C5, 0x00C6, 0x00C7, 0x00C8, 0x00C9, 0x00CA, 0x00CB, 0x00CC, 0x00CD,
    0x00CE, 0x00CF, 0x00D0, 0x00D1, 0x00D2, 0x00D3, 0x00D4, 0x00D5, 0x00D6, 0x00D7, 0x00D8, 0x00D9, 0x00DA,
    0x00DB, 0x00DC, 0x00DD, 0x00DE, 0x00DF, 0x00E0, 0x00E1, 0x00E2, 0x00E3, 0x00E4, 0x00E5, 0x00E6, 0x00E7,
    0x00E8, 0x00E9, 0x00EA, 0x00EB, 0x00EC, 0x00ED, 0x00EE, 0x00EF, 0x00F0, 0x00F1, 0x00F2, 0x00F3, 0x00F4,
    0x00F5, 0x00F6, 0x00F7, 0x00F8, 0x00F9, 0x00FA, 0x00FB, 0x00FC, 0x00FD, 0x00FE, 0x00FF};

const char16_t kReplacement = 0xFFFD;

bool isHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

const char16_t *upperHalf(uint32_t encoding)
{
    return encoding == kMacRoman ? kMacRomanUpperHalf : kWindowsLatin1UpperHalf;
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
    std::u16string units;
    units.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size();) {
        unsigned char lead = bytes[i++];
        if (lead < 0x80) {
            units += char16_t(lead);
            continue;
        }
        int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
        if (lead < 0xC2 || lead > 0xF4 || i + following > bytes.size())
            return std::nullopt;
        char32_t scalar = lead & (0x3F >> following);
        for (int k = 0; k < following; ++k) {
            unsigned char byte = bytes[i++];
            if ((byte & 0xC0) != 0x80)
                return std::nullopt;
            scalar = (scalar << 6) | (byte & 0x3F);
        }
        const char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
        if (scalar < smallest[following] || scalar > 0x10FFFF || (scalar >= 0xD800 && scalar < 0xE000))
            return std::nullopt;
        appendScalar(units, scalar);
    }
    return units;
}

std::string encodeUTF8(std::u16string_view units)
{
    std::string bytes;
    bytes.reserve(units.size());
    for (size_t i = 0; i < units.size();) {
        char32_t scalar = nextScalar(units, i);
        if (scalar < 0x80) {
            bytes += char(scalar);
        } else if (scalar < 0x800) {
            bytes += char(0xC0 | (scalar >> 6));
            bytes += char(0x80 | (scalar & 0x3F));
        } else if (scalar < 0x10000) {
            bytes += char(0xE0 | (scalar >> 12));
            bytes += char(0x80 | ((scalar >> 6) & 0x3F));
            bytes += char(0x80 | (scalar & 0x3F));
        } else {
            bytes += char(0xF0 | (scalar >> 18));
            bytes += char(0x80 | ((scalar >> 12) & 0x3F));
            bytes += char(0x80 | ((scalar >> 6) & 0x3F));
            bytes += char(0x80 | (scalar & 0x3F));
        }
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

std::u16string decode8Bit(std::string_view bytes, const char16_t *upper)
{
    std::u16string units;
    units.reserve(bytes.size());
    for (unsigned char byte : bytes)
        units += byte < 0x80 ? char16_t(byte) : upper ? upper[byte - 0x80] : char16_t(byte);
    return units;
}

std::string encode8Bit(std::u16string_view units, const char16_t *upper, char32_t limit)
{
    std::string bytes;
    for (size_t i = 0; i < units.size();) {
        char32_t scalar = nextScalar(units, i);
        if (scalar < limit) {
            bytes += char(scalar);
            continue;
        }
        const char16_t *place = upper ? std::find(upper, upper + 128, char16_t(scalar)) : nullptr;
        bool found = place && scalar < 0x10000 && place != upper + 128;
        bytes += found ? char(0x80 + (place - upper)) : '?';
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
    case kWindowsLatin1:
        return decode8Bit(bytes, upperHalf(encoding));
    case kISOLatin1:
        return decode8Bit(bytes, nullptr);
    case kASCII:
        if (std::any_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte >= 0x80; }))
            return std::nullopt;
        return decode8Bit(bytes, nullptr);
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
    case kWindowsLatin1:
        return encode8Bit(units, upperHalf(encoding), 0x80);
    case kISOLatin1:
        return encode8Bit(units, nullptr, 0x100);
    case kASCII:
        return encode8Bit(units, nullptr, 0x80);
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
