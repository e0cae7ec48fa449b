// Unicode, ASCII, Latin 1, MacRoman and the two encodings of NextStep are converted here, which macOS does in ways of
// its own; the other encodings are the C library's.

#include "platform/gnustep/core_foundation/text_encoding.h"

#include "platform/gnustep/core_foundation/foreign_encoding.h"
#include "platform/gnustep/core_foundation/strings.h"

#import <Foundation/Foundation.h>
#include <ctype.h>
#include <stdio.h>
#include <string.h>

#include <algorithm>

namespace platform {
namespace {

enum ByteOrder { littleEndian, bigEndian };

const struct {
    CFStringEncoding encoding;
    size_t size; // of a unit
    ByteOrder order;
} wideForms[] = {{kCFStringEncodingUTF16, 2, littleEndian},   {kCFStringEncodingUTF16BE, 2, bigEndian},
                 {kCFStringEncodingUTF16LE, 2, littleEndian}, {kCFStringEncodingUTF32, 4, littleEndian},
                 {kCFStringEncodingUTF32BE, 4, bigEndian},    {kCFStringEncodingUTF32LE, 4, littleEndian}};

// clang-format off
const UniChar macRomanUpperHalf[128] = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1,
    0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8,
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC,
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF,
    0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211,
    0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8,
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153,
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA,
    0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4,
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};
// clang-format on

bool appendCharacter(uint32_t character, Units *text)
{
    if (character > 0x10FFFF || (character & 0xFFFFF800) == 0xD800)
        return false;
    if (character > 0xFFFF) {
        text->push_back(0xD800 | ((character - 0x10000) >> 10));
        text->push_back(0xDC00 | ((character - 0x10000) & 0x3FF));
    } else {
        text->push_back(character);
    }
    return true;
}

// The character at *position, which moves behind it; false for half a surrogate pair.
bool nextCharacter(const Units &text, size_t *position, uint32_t *character)
{
    uint32_t unit = text[(*position)++];
    if (isLowSurrogate(unit))
        return false;
    if (isHighSurrogate(unit)) {
        if (*position == text.size() || !isLowSurrogate(text[*position]))
            return false;
        unit = 0x10000 + ((unit & 0x3FF) << 10) + (text[(*position)++] & 0x3FF);
    }
    *character = unit;
    return true;
}

// A byte of MacRoman's copyright sign, which some property lists have, does not make a text unreadable.
bool decodeUTF8(const UInt8 *bytes, size_t length, bool strict, Units *text)
{
    static const uint32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    for (size_t i = 0; i < length;) {
        uint32_t character = bytes[i++];
        if (character == 0xA9 && !strict) {
            text->push_back(0xFFFD);
            continue;
        }
        size_t more = character < 0x80 ? 0 : character < 0xC0 ? 4 : character < 0xE0 ? 1 : character < 0xF0 ? 2 : 3;
        if (more == 4 || character > 0xF7 || length - i < more)
            return false;
        if (more)
            character &= 0x3F >> more;
        for (size_t k = 0; k < more; ++k, ++i) {
            if ((bytes[i] & 0xC0) != 0x80)
                return false;
            character = character << 6 | (bytes[i] & 0x3F);
        }
        if (character < smallest[more] || !appendCharacter(character, text))
            return false;
    }
    return true;
}

bool encodeUTF8(const Units &text, std::string *bytes)
{
    uint32_t c;
    for (size_t i = 0; i < text.size();) {
        if (!nextCharacter(text, &i, &c))
            return false;
        size_t more = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        static const unsigned char lead[] = {0, 0xC0, 0xE0, 0xF0};
        bytes->push_back(lead[more] | c >> 6 * more);
        while (more--)
            bytes->push_back(0x80 | (c >> 6 * more & 0x3F));
    }
    return true;
}

uint32_t readUnit(const UInt8 *bytes, size_t size, ByteOrder order)
{
    uint32_t unit = 0;
    for (size_t i = 0; i < size; ++i)
        unit |= static_cast<uint32_t>(bytes[i]) << 8 * (order == littleEndian ? i : size - 1 - i);
    return unit;
}

void writeUnit(uint32_t unit, size_t size, ByteOrder order, std::string *bytes)
{
    for (size_t i = 0; i < size; ++i)
        bytes->push_back(unit >> 8 * (order == littleEndian ? i : size - 1 - i));
}

bool decodeWide(const UInt8 *bytes, size_t length, size_t size, ByteOrder order, Units *text)
{
    for (size_t i = 0; length - i >= size; i += size) {
        uint32_t unit = readUnit(bytes + i, size, order);
        if (size == 2)
            text->push_back(unit); // halves of surrogate pairs are kept
        else if (!appendCharacter(unit, text))
            return false;
    }
    return true;
}

bool encodeWide(const Units &text, size_t size, ByteOrder order, std::string *bytes)
{
    for (size_t i = 0; i < text.size();) {
        uint32_t unit = text[i];
        if (size == 2)
            ++i;
        else if (!nextCharacter(text, &i, &unit))
            return false;
        writeUnit(unit, size, order, bytes);
    }
    return true;
}

// ASCII's upper half is read as Latin 1's.
void decodeBytewise(const UInt8 *bytes, size_t length, const UniChar *upperHalf, Units *text)
{
    for (size_t i = 0; i < length; ++i)
        text->push_back(bytes[i] < 0x80 || !upperHalf ? bytes[i] : upperHalf[bytes[i] - 0x80]);
}

// size is how many characters Unicode and the encoding have in common.
bool encodeBytewise(const Units &text, unsigned size, const UniChar *upperHalf, std::string *bytes)
{
    bytes->clear();
    for (UniChar unit : text) {
        int byte = unit < size ? unit : -1;
        for (int i = 0; byte < 0 && upperHalf && i < 0x80; ++i)
            if (upperHalf[i] == unit)
                byte = 0x80 + i;
        if (byte < 0)
            return false;
        bytes->push_back(byte);
    }
    return true;
}

// A letter and its accent, and a character that stands for another, are one of the encoding's where it has that.
bool encodePrecomposed(const Units &text, unsigned size, const UniChar *upperHalf, std::string *bytes)
{
    return encodeBytewise(text, size, upperHalf, bytes) ||
           encodeBytewise(normalized(text, kCFStringNormalizationFormC), size, upperHalf, bytes);
}

// NextStep's upper half is GNUstep's but for three quotation marks, and two bytes that are none.
const UniChar *nextStepUpperHalf()
{
    static UniChar upperHalf[0x80];
    if (upperHalf[0])
        return upperHalf;
    for (unsigned i = 0; i < 0x7E; ++i) {
        const UInt8 byte = 0x80 + i;
        NSString *character = [[NSString alloc] initWithBytes:&byte length:1 encoding:NSNEXTSTEPStringEncoding];
        upperHalf[i] = [character characterAtIndex:0];
        [character release];
    }
    upperHalf[0x29] = 0x2019;
    upperHalf[0x38] = 0x201A;
    upperHalf[0x39] = 0x201E;
    upperHalf[0x7E] = upperHalf[0x7F] = 0xFFFD;
    return upperHalf;
}

bool decodeNextStep(const UInt8 *bytes, size_t length, Units *text)
{
    decodeBytewise(bytes, length, nextStepUpperHalf(), text);
    return std::find(text->begin(), text->end(), 0xFFFD) == text->end();
}

// What is not printable ASCII as \ooo or \uxxxx, a backslash twice.
void encodeNonLossyASCII(const Units &text, std::string *bytes)
{
    for (UniChar unit : text) {
        char escape[8] = {static_cast<char>(unit)};
        if (unit == '\\')
            strcpy(escape, "\\\\");
        else if (unit > 0xFF)
            snprintf(escape, sizeof escape, "\\u%04x", unit);
        else if (unit >= 0x7F || (unit < ' ' && !isspace(unit)))
            snprintf(escape, sizeof escape, "\\%03o", unit);
        *bytes += escape;
    }
}

bool decodeNonLossyASCII(const std::string &bytes, Units *text)
{
    for (size_t i = 0; i < bytes.size(); ++i) {
        unsigned value = static_cast<UInt8>(bytes[i]);
        int length = 0;
        if (value >= 0x80)
            return false;
        if (value == '\\') {
            const char *escape = bytes.c_str() + i + 1;
            if (*escape == '\\')
                length = 1;
            else if ((sscanf(escape, "u%4x%n", &value, &length) != 1 || length != 5) &&
                     (sscanf(escape, "%3o%n", &value, &length) != 1 || length != 3))
                return false;
        }
        text->push_back(value);
        i += length;
    }
    return true;
}

} // namespace

bool decodeUTF8(const std::string &bytes, Units *text)
{
    return decodeUTF8(reinterpret_cast<const UInt8 *>(bytes.data()), bytes.size(), true, text);
}

bool decodeText(const UInt8 *bytes, size_t length, CFStringEncoding encoding, bool external, Units *text)
{
    auto beginsWith = [&](std::string mark) {
        return length >= mark.size() &&
               mark.compare(0, mark.size(), reinterpret_cast<const char *>(bytes), mark.size()) == 0;
    };
    // A mark goes where none is part of the name, and without one the order is the network's.
    auto decodeEitherOrder = [&](size_t size, const std::string &big, const std::string &little) {
        bool isLittle = beginsWith(little);
        size_t mark = isLittle || beginsWith(big) ? size : 0;
        return decodeWide(bytes + mark, length - mark, size, isLittle ? littleEndian : bigEndian, text);
    };
    switch (encoding) {
    case kCFStringEncodingUTF8: {
        size_t mark = beginsWith("\xEF\xBB\xBF") ? 3 : 0;
        return decodeUTF8(bytes + mark, length - mark, false, text);
    }
    case kCFStringEncodingUTF16:
        if (external)
            return decodeEitherOrder(2, "\xFE\xFF", "\xFF\xFE");
        break;
    case kCFStringEncodingUTF32:
        return decodeEitherOrder(4, {"\0\0\xFE\xFF", 4}, {"\xFF\xFE\0\0", 4});
    case kCFStringEncodingASCII:
    case kCFStringEncodingISOLatin1:
        decodeBytewise(bytes, length, nullptr, text);
        return true;
    case kCFStringEncodingMacRoman:
        decodeBytewise(bytes, length, macRomanUpperHalf, text);
        return true;
    case kCFStringEncodingNextStepLatin:
        return decodeNextStep(bytes, length, text);
    case kCFStringEncodingNonLossyASCII:
        return decodeNonLossyASCII(std::string(reinterpret_cast<const char *>(bytes), length), text);
    }
    for (const auto &form : wideForms)
        if (form.encoding == encoding)
            return decodeWide(bytes, length, form.size, form.order, text);
    return decodeForeign(bytes, length, encoding, text);
}

bool encodeText(const Units &text, CFStringEncoding encoding, std::string *bytes)
{
    switch (encoding) {
    case kCFStringEncodingUTF8:
        return encodeUTF8(text, bytes);
    case kCFStringEncodingASCII:
        return encodeBytewise(text, 0x80, nullptr, bytes);
    case kCFStringEncodingISOLatin1:
        return encodePrecomposed(text, 0x100, nullptr, bytes);
    case kCFStringEncodingMacRoman:
        return encodePrecomposed(text, 0x80, macRomanUpperHalf, bytes);
    case kCFStringEncodingNextStepLatin:
        return encodePrecomposed(text, 0x80, nextStepUpperHalf(), bytes);
    case kCFStringEncodingNonLossyASCII:
        encodeNonLossyASCII(text, bytes);
        return true;
    }
    for (const auto &form : wideForms)
        if (form.encoding == encoding)
            return encodeWide(text, form.size, form.order, bytes);
    return encodeForeign(text, encoding, bytes);
}

} // namespace platform
