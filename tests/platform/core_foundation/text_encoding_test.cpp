#include "tests/platform/support.h"

#include <CoreFoundation/CoreFoundation.h>

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
    {"UTF32", kCFStringEncodingUTF32, std::string("\x4B\xF4\1\0", 4), u"\U0001F44B"},
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
    {"NextStepLatin", kCFStringEncodingNextStepLatin, "\xDD", u"\u00E9"},
    {"NonLossyASCII", kCFStringEncodingNonLossyASCII, "\\351", u"\u00E9"},
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

TEST_F(TextEncoding, InvalidUTF8IsRefused)
{
    for (const char *bytes : {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF8\x88\x80\x80\x80", "\xFF"})
        EXPECT_EQ(u"refused", decode(bytes, kCFStringEncodingUTF8)) << bytes;
}

TEST_F(TextEncoding, ASCIIIsSevenBitsWide)
{
    EXPECT_EQ(u"refused", decode("\xE9", kCFStringEncodingASCII));
    EXPECT_EQ("refused", encode(u"\u00E9", kCFStringEncodingASCII, 10));
}

TEST_F(TextEncoding, ACharacterThatMacRomanLacksIsRefused)
{
    EXPECT_EQ("refused", encode(u"\u3042", kCFStringEncodingMacRoman, 10));
}

TEST_F(TextEncoding, PartOfAUnitIsRefused)
{
    EXPECT_EQ(u"refused", decode("ABC", kCFStringEncodingUTF16LE));
    EXPECT_EQ(u"refused", decode("ABC", kCFStringEncodingUTF32LE));
}

TEST_F(TextEncoding, UTF32BeyondUnicodeIsRefused)
{
    EXPECT_EQ(u"refused", decode(std::string("\0\0\x11\0", 4), kCFStringEncodingUTF32LE));
    EXPECT_EQ(u"refused", decode(std::string("\0\xD8\0\0", 4), kCFStringEncodingUTF32LE));
}

TEST_F(TextEncoding, AnUnknownEncodingIsRefused)
{
    EXPECT_EQ(u"refused", decode("A", 0xFFFF));
    EXPECT_EQ(u"refused", decode("A", kCFStringEncodingInvalidId));
    EXPECT_EQ("refused", encode(u"A", 0xFFFF, 10));
}

TEST_F(TextEncoding, AByteOrderMarkIsSkippedInExternalRepresentationsOnly)
{
    EXPECT_EQ(u"\uFEFFA", decode("\xEF\xBB\xBF"
                                 "A",
                                 kCFStringEncodingUTF8));
    EXPECT_EQ(u"A", decode("\xEF\xBB\xBF"
                           "A",
                           kCFStringEncodingUTF8, true));
    EXPECT_EQ(u"\uFEFFA", decode(std::string("\xFF\xFE"
                                             "A\0",
                                             4),
                                 kCFStringEncodingUTF16));
    EXPECT_EQ(u"A", decode(std::string("\xFF\xFE"
                                       "A\0",
                                       4),
                           kCFStringEncodingUTF16, true));
    EXPECT_EQ(u"A", decode(std::string("\xFE\xFF\0A", 4), kCFStringEncodingUTF16, true));
    EXPECT_EQ(u"A", decode(std::string("\0\0\xFE\xFF\0\0\0A", 8), kCFStringEncodingUTF32, true));
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
