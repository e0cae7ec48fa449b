// Unicode, ASCII and MacRoman are converted here, so that they need no conversion modules of the C library and no
// character is dropped; the other encodings are Foundation's.

#include "platform/gnustep/core_foundation/text_encoding.h"

#import <Foundation/Foundation.h>

namespace platform {
namespace {

enum ByteOrder { littleEndian, bigEndian };

struct Foreign {
    CFStringEncoding encoding;
    NSStringEncoding foundation;
};

const Foreign foreignEncodings[] = {
    {kCFStringEncodingISOLatin1, NSISOLatin1StringEncoding},
    {0x0202 /* ISO Latin 2 */, NSISOLatin2StringEncoding},
    {kCFStringEncodingWindowsLatin1, NSWindowsCP1252StringEncoding},
    {0x0501 /* Windows Latin 2 */, NSWindowsCP1250StringEncoding},
    {0x0502 /* Windows Cyrillic */, NSWindowsCP1251StringEncoding},
    {0x0503 /* Windows Greek */, NSWindowsCP1253StringEncoding},
    {0x0504 /* Windows Latin 5 */, NSWindowsCP1254StringEncoding},
    {0x0920 /* EUC Japanese */, NSJapaneseEUCStringEncoding},
    {0x0A01 /* Shift JIS */, NSShiftJISStringEncoding},
    {kCFStringEncodingNextStepLatin, NSNEXTSTEPStringEncoding},
    {kCFStringEncodingNonLossyASCII, NSNonLossyASCIIStringEncoding},
};

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

bool decodeUTF8(const UInt8 *bytes, size_t length, Units *text)
{
    static const uint32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    for (size_t i = 0; i < length;) {
        uint32_t character = bytes[i++];
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
    if (length % size)
        return false;
    for (size_t i = 0; i < length; i += size) {
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

bool decodeBytewise(const UInt8 *bytes, size_t length, const UniChar *upperHalf, Units *text)
{
    for (size_t i = 0; i < length; ++i) {
        if (bytes[i] >= 0x80 && !upperHalf)
            return false;
        text->push_back(bytes[i] < 0x80 ? bytes[i] : upperHalf[bytes[i] - 0x80]);
    }
    return true;
}

bool encodeBytewise(const Units &text, const UniChar *upperHalf, std::string *bytes)
{
    for (UniChar unit : text) {
        int byte = unit < 0x80 ? unit : -1;
        for (int i = 0; byte < 0 && upperHalf && i < 0x80; ++i)
            if (upperHalf[i] == unit)
                byte = 0x80 + i;
        if (byte < 0)
            return false;
        bytes->push_back(byte);
    }
    return true;
}

const Foreign *foreign(CFStringEncoding encoding)
{
    for (const Foreign &row : foreignEncodings)
        if (row.encoding == encoding)
            return &row;
    return nullptr;
}

bool decodeForeign(const UInt8 *bytes, size_t length, const Foreign &row, Units *text)
{
    NSString *string = [[NSString alloc] initWithBytes:bytes length:length encoding:row.foundation];
    if (!string)
        return false;
    text->resize([string length]);
    [string getCharacters:text->data() range:NSMakeRange(0, text->size())];
    [string release];
    return true;
}

bool encodeForeign(const Units &text, const Foreign &row, std::string *bytes)
{
    NSString *string = [[NSString alloc] initWithCharacters:text.data() length:text.size()];
    NSData *data = [string dataUsingEncoding:row.foundation];
    if (data)
        bytes->assign(static_cast<const char *>([data bytes]), [data length]);
    [string release];
    return data != nil;
}

// Skips the byte order mark of an external representation; in the encodings of native order it tells the order.
ByteOrder skipMark(const UInt8 **bytes, size_t *length, size_t size, ByteOrder order, bool native)
{
    if (*length < size)
        return order;
    bool otherOrder = native && readUnit(*bytes, size, bigEndian) == 0xFEFF;
    if (!otherOrder && readUnit(*bytes, size, order) != 0xFEFF)
        return order;
    *bytes += size;
    *length -= size;
    return otherOrder ? bigEndian : order;
}

} // namespace

bool decodeUTF8(const std::string &bytes, Units *text)
{
    return decodeUTF8(reinterpret_cast<const UInt8 *>(bytes.data()), bytes.size(), text);
}

bool decodeText(const UInt8 *bytes, size_t length, CFStringEncoding encoding, bool external, Units *text)
{
    size_t size = 2;
    ByteOrder order = littleEndian;
    switch (encoding) {
    case kCFStringEncodingUTF8:
        if (external && length >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF)
            return decodeUTF8(bytes + 3, length - 3, text);
        return decodeUTF8(bytes, length, text);
    case kCFStringEncodingASCII:
        return decodeBytewise(bytes, length, nullptr, text);
    case kCFStringEncodingMacRoman:
        return decodeBytewise(bytes, length, macRomanUpperHalf, text);
    case kCFStringEncodingUTF16BE:
        order = bigEndian;
        break;
    case kCFStringEncodingUTF16:
    case kCFStringEncodingUTF16LE:
        break;
    case kCFStringEncodingUTF32BE:
        order = bigEndian;
        size = 4;
        break;
    case kCFStringEncodingUTF32:
    case kCFStringEncodingUTF32LE:
        size = 4;
        break;
    default:
        const Foreign *row = foreign(encoding);
        return row && decodeForeign(bytes, length, *row, text);
    }
    if (external)
        order = skipMark(&bytes, &length, size, order,
                         encoding == kCFStringEncodingUTF16 || encoding == kCFStringEncodingUTF32);
    return decodeWide(bytes, length, size, order, text);
}

bool encodeText(const Units &text, CFStringEncoding encoding, std::string *bytes)
{
    switch (encoding) {
    case kCFStringEncodingUTF8:
        return encodeUTF8(text, bytes);
    case kCFStringEncodingASCII:
        return encodeBytewise(text, nullptr, bytes);
    case kCFStringEncodingMacRoman:
        return encodeBytewise(text, macRomanUpperHalf, bytes);
    case kCFStringEncodingUTF16BE:
        return encodeWide(text, 2, bigEndian, bytes);
    case kCFStringEncodingUTF16:
    case kCFStringEncodingUTF16LE:
        return encodeWide(text, 2, littleEndian, bytes);
    case kCFStringEncodingUTF32BE:
        return encodeWide(text, 4, bigEndian, bytes);
    case kCFStringEncodingUTF32:
    case kCFStringEncodingUTF32LE:
        return encodeWide(text, 4, littleEndian, bytes);
    }
    const Foreign *row = foreign(encoding);
    return row && encodeForeign(text, *row, bytes);
}

} // namespace platform
