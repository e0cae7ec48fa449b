#include "tests/platform/support.h"

#include <CoreFoundation/CoreFoundation.h>

#include <random>

namespace {

class TextEncoding : public PlatformTest {
protected:
    // The units of bytes in an encoding, "refused" for none; then the bytes made from them again.
    static std::u16string decode(const std::string &bytes, CFStringEncoding encoding, bool external = false)
    {
        CFStringRef string = CFStringCreateWithBytes(nullptr, reinterpret_cast<const UInt8 *>(bytes.data()),
                                                     bytes.size(), encoding, external);
        if (!string)
            return u"refused";
        std::u16string units(CFStringGetLength(string), u' ');
        CFStringGetCharacters(string, CFRangeMake(0, units.size()), reinterpret_cast<UniChar *>(units.data()));
        CFRelease(string);
        return units;
    }

    static std::string encode(const std::u16string &units, CFStringEncoding encoding, size_t length)
    {
        CFStringRef string =
            CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units.data()), units.size());
        std::string bytes(length + 1, '?');
        bool made = CFStringGetCString(string, bytes.data(), bytes.size(), encoding);
        CFRelease(string);
        EXPECT_EQ('\0', made ? bytes.back() : '\0');
        bytes.pop_back();
        return made ? bytes : "refused";
    }
};

struct Sample {
    const char *name;
    CFStringEncoding encoding;
    std::string bytes;
    std::u16string text;
};

const Sample samples[] = {
    {"ASCII", kCFStringEncodingASCII, "A~", u"A~"},
    {"UTF8", kCFStringEncodingUTF8, "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x91\x8B", u"A\u00E9\u20AC\U0001F44B"},
    {"UTF16", kCFStringEncodingUTF16, std::string("A\0\xE9\0", 4), u"A\u00E9"},
    {"UTF16BE", kCFStringEncodingUTF16BE, std::string("\0A\0\xE9", 4), u"A\u00E9"},
    {"UTF16LE", kCFStringEncodingUTF16LE, std::string("A\0\xE9\0", 4), u"A\u00E9"},
    {"UTF32BE", kCFStringEncodingUTF32BE, std::string("\0\1\xF4\x4B", 4), u"\U0001F44B"},
    {"UTF32LE", kCFStringEncodingUTF32LE, std::string("\x4B\xF4\1\0", 4), u"\U0001F44B"},
    {"MacRoman", kCFStringEncodingMacRoman, "\x80\x8E\xDB\xFF", u"\u00C4\u00E9\u20AC\u02C7"},
    {"ISOLatin1", kCFStringEncodingISOLatin1, "\xE9\xFF", u"\u00E9\u00FF"},
    {"ISOLatin2", 0x0202, "\xB1\xE6", u"\u0105\u0107"},
    {"WindowsLatin1", kCFStringEncodingWindowsLatin1, "\x80\xE9", u"\u20AC\u00E9"},
    {"WindowsLatin2", 0x0501, "\xB9\xE6", u"\u0105\u0107"},
    {"WindowsCyrillic", 0x0502, "\xC4\xE0", u"\u0414\u0430"},
    {"WindowsGreek", 0x0503, "\xC1\xE1", u"\u0391\u03B1"},
    {"WindowsLatin5", 0x0504, "\xFD\xFE", u"\u0131\u015F"},
    {"EUCJapanese", 0x0920, "\xA4\xA2", u"\u3042"},
    {"ShiftJIS", 0x0A01, "\x82\xA0", u"\u3042"},
    {"ISOLatin9", 0x020F, "\xA4\xBD", u"\u20AC\u0153"},
    {"ISOCyrillic", 0x0205, "\xB4\xD0", u"\u0414\u0430"},
    {"ISOGreek", 0x0207, "\xC1\xE1", u"\u0391\u03B1"},
    {"KOI8R", 0x0A02, "\xE4\xC1", u"\u0414\u0430"},
    {"MacCentralEurope", 0x001D, "\xFC", u"\u0141"},
    {"DOSLatin1", 0x0410, "\x82", u"\u00E9"},
    {"DOSRussian", 0x041B, "\x84", u"\u0414"},
    {"GB18030", 0x0632, "\xA4\xA2\x81\x30\x91\x39", u"\u3042\u0141"},
    {"Big5", 0x0A03, "\xA4\xA4", u"\u4E2D"},
    {"EUCKorean", 0x0940, "\xB0\xA1", u"\uAC00"},
    {"ISO2022JP", 0x0820, "\x1B$B$\"\x1B(B", u"\u3042"},
    {"NextStepLatin", kCFStringEncodingNextStepLatin, "\xDD\xA9\xB8\xB9", u"\u00E9\u2019\u201A\u201E"},
    {"NonLossyASCII", kCFStringEncodingNonLossyASCII, "a\\\\\\351\\u20ac\\ud800\\001", u"a\\\u00E9\u20AC\xD800\x0001"},
};

class EncodingSample : public TextEncoding, public testing::WithParamInterface<Sample> {};

TEST_P(EncodingSample, ConvertsBothWays)
{
    EXPECT_EQ(GetParam().text, decode(GetParam().bytes, GetParam().encoding));
    EXPECT_EQ(GetParam().bytes, encode(GetParam().text, GetParam().encoding, GetParam().bytes.size()));
}

INSTANTIATE_TEST_SUITE_P(Every, EncodingSample, testing::ValuesIn(samples),
                         [](const auto &info) { return info.param.name; });

TEST_F(TextEncoding, EveryMacRomanByteIsACharacterOfItsOwn)
{
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all.push_back(byte);
    EXPECT_EQ(all, encode(decode(all, kCFStringEncodingMacRoman), kCFStringEncodingMacRoman, 255));
}

const std::string kMark = "\xEF\xBB\xBF";

// What macOS makes of bytes that are not plainly text, from 10.4 to 10.10; those of an external representation where
// the answer differs.
const struct {
    const char *name;
    CFStringEncoding encoding;
    std::string bytes;
    std::u16string text;
    std::u16string external;
} decoded[] = {
    {"ASCII's upper half is Latin 1's", kCFStringEncodingASCII, "a\xE9\x80", u"a\u00E9\u0080", {}},
    {"a mark in front of UTF-8", kCFStringEncodingUTF8, kMark + "a", u"a", {}},
    {"a mark within UTF-8", kCFStringEncodingUTF8, "a" + kMark, u"a\uFEFF", {}},
    {"A9 alone in UTF-8", kCFStringEncodingUTF8, "a\xA9z", u"a\uFFFDz", {}},
    {"A9 within a character", kCFStringEncodingUTF8, "\xC2\xA9", u"\u00A9", {}},
    {"UTF-16 without a mark", kCFStringEncodingUTF16, std::string("\0a", 2), u"\u6100", u"a"},
    {"UTF-16 with a mark", kCFStringEncodingUTF16,
     std::string("\xFF\xFE"
                 "a\0",
                 4),
     u"\uFEFFa", u"a"},
    {"UTF-16 with the other mark", kCFStringEncodingUTF16, std::string("\xFE\xFF\0a", 4), u"\uFFFE\u6100", u"a"},
    {"a mark where the name tells the order",
     kCFStringEncodingUTF16LE,
     std::string("\xFF\xFE"
                 "a\0",
                 4),
     u"\uFEFFa",
     {}},
    {"half a unit at the end", kCFStringEncodingUTF16LE, std::string("a\0b", 3), u"a", {}},
    {"UTF-32 is the network's", kCFStringEncodingUTF32, std::string("\0\0\0a", 4), u"a", {}},
    {"UTF-32 with a mark", kCFStringEncodingUTF32, std::string("\xFF\xFE\0\0a\0\0\0", 8), u"a", {}},
    {"UTF-32 with its order and a mark", kCFStringEncodingUTF32BE, std::string("\0\0\xFE\xFF", 4), u"\uFEFF", {}},
    {"part of a character at the end", kCFStringEncodingUTF32LE, std::string("a\0\0\0b\0\0", 7), u"a", {}},
};

TEST_F(TextEncoding, BytesThatAreNotPlainlyText)
{
    for (const auto &row : decoded) {
        EXPECT_EQ(row.text, decode(row.bytes, row.encoding)) << row.name;
        EXPECT_EQ(row.external.empty() ? row.text : row.external, decode(row.bytes, row.encoding, true)) << row.name;
    }
}

const struct {
    CFStringEncoding encoding;
    std::string bytes;
} refused[] = {
    {kCFStringEncodingUTF8, "\x80"},
    {kCFStringEncodingUTF8, "\xC3"},
    {kCFStringEncodingUTF8, "\xC3("},
    {kCFStringEncodingUTF8, "\xC0\x80"},
    {kCFStringEncodingUTF8, "\xE0\x80\x80"},
    {kCFStringEncodingUTF8, "\xED\xA0\x80"},
    {kCFStringEncodingUTF8, "\xF4\x90\x80\x80"},
    {kCFStringEncodingUTF8, "\xF8\x88\x80\x80\x80"},
    {kCFStringEncodingUTF8, "\xFF"},
    {kCFStringEncodingUTF32LE, std::string("\0\0\x11\0", 4)},
    {kCFStringEncodingUTF32LE, std::string("\0\xD8\0\0", 4)},
    {kCFStringEncodingWindowsLatin1, "\x81"},
    {kCFStringEncodingNextStepLatin, "\xFE"},
    {kCFStringEncodingNonLossyASCII, "\\u12"},
    {0x0920, "\xA4"},
    {0xFFFF, "A"},
    {0x12345, "A"},
    {kCFStringEncodingInvalidId, "A"},
};

TEST_F(TextEncoding, BytesThatAreNoText)
{
    for (const auto &row : refused)
        EXPECT_EQ(u"refused", decode(row.bytes, row.encoding)) << std::hex << row.encoding << " " << row.bytes;
}

// A letter and its accent are one character of MacRoman and Latin 1, and the sign of the ohm is a letter.
const struct {
    CFStringEncoding encoding;
    std::u16string text;
    std::string bytes;
} encoded[] = {
    {kCFStringEncodingMacRoman, u"e\u0301", "\x8E"},
    {kCFStringEncodingMacRoman, u"\u2126", "\xBD"},
    {kCFStringEncodingMacRoman, u"\u0394", "refused"},
    {kCFStringEncodingISOLatin1, u"e\u0301", "\xE9"},
    {kCFStringEncodingISOLatin1, u"\u2126", "refused"},
    {kCFStringEncodingWindowsLatin1, u"\u0301", "refused"},
    {kCFStringEncodingWindowsLatin1, u"\uFEFF", "refused"},
    {kCFStringEncodingASCII, u"e\u0301", "refused"},
    {kCFStringEncodingASCII, u"\u00E9", "refused"},
    {kCFStringEncodingUTF16, u"a\u20AC", std::string("a\0\xAC\x20", 4)},
    {kCFStringEncodingUTF32, u"\u20AC", std::string("\xAC\x20\0\0", 4)},
    {0xFFFF, u"A", "refused"},
};

TEST_F(TextEncoding, TextsThatAreNotPlainlyBytes)
{
    for (const auto &row : encoded)
        EXPECT_EQ(row.bytes, encode(row.text, row.encoding, row.bytes == "refused" ? 10 : row.bytes.size()));
}

// UTF-8 put together from characters, with a byte that fits nowhere in between or not.
TEST_F(TextEncoding, RandomUTF8)
{
    unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::pair<std::string, std::u16string> characters[] = {{"a", u"a"},
                                                                 {"\xC3\xA9", u"\u00E9"},
                                                                 {"\xE2\x82\xAC", u"\u20AC"},
                                                                 {"\xF0\x9F\x91\x8B", u"\U0001F44B"},
                                                                 {"\xA9", u"\uFFFD"}};
    for (int i = 0; i < 300; ++i) {
        std::string bytes;
        std::u16string text;
        for (unsigned length = 1 + random() % 8; length; --length) {
            const auto &[some, character] = characters[random() % std::size(characters)];
            bytes += some;
            text += character;
        }
        EXPECT_EQ(text, decode(bytes, kCFStringEncodingUTF8));
        bytes.insert(random() % 2 ? bytes.size() : 0, 1, "\x80\xBF\xC0\xFF"[random() % 4]);
        EXPECT_EQ(u"refused", decode(bytes, kCFStringEncodingUTF8));
    }
}

TEST_F(TextEncoding, ACharacterThatMacRomanLacksIsRefused)
{
    EXPECT_EQ("refused", encode(u"\u3042", kCFStringEncodingMacRoman, 10));
}

TEST_F(TextEncoding, HalfASurrogatePairIsKeptInUTF16AndRefusedElsewhere)
{
    const std::u16string half(1, 0xD800);
    EXPECT_EQ(std::string("\0\xD8", 2), encode(half, kCFStringEncodingUTF16LE, 2));
    EXPECT_EQ("refused", encode(half, kCFStringEncodingUTF8, 10));
    EXPECT_EQ("refused", encode(half, kCFStringEncodingUTF32LE, 10));
    EXPECT_EQ("refused", encode(std::u16string(1, 0xDC00), kCFStringEncodingUTF8, 10));
}

} // namespace
