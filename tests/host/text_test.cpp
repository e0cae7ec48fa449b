#include "host/runtime/text.h"

#include "host/interface/codes.h"

#include <gtest/gtest.h>

namespace {

using namespace host;
using namespace host::runtime;

const char16_t kSample[] = u"a\u00E4\u20AC\u2260\U0001F44B";

TEST(Text, UnicodeFormsHoldEveryCharacter)
{
    for (uint32_t encoding : {kUTF8, kUTF16, kUTF16BE, kUTF16LE, kUTF32, kUTF32BE, kUTF32LE}) {
        std::optional<std::string> bytes = encodeText(kSample, encoding);
        ASSERT_TRUE(bytes) << encodingName(encoding);
        EXPECT_EQ(decodeText(*bytes, encoding), kSample) << encodingName(encoding);
    }
    EXPECT_EQ(*encodeText(kSample, kUTF8), "aä€≠👋");
    EXPECT_EQ(*encodeText(u"\U0001F44B", kUTF32), std::string("\x4B\xF4\x01\x00", 4));
    EXPECT_EQ(*encodeText(u"a", kUTF16BE), std::string("\0a", 2));
}

TEST(Text, EightBitEncodingsHaveTheirOwnUpperHalves)
{
    EXPECT_EQ(*decodeText("\x8A\xAD\xDB", kMacRoman), u"\u00E4\u2260\u20AC");
    EXPECT_EQ(*decodeText("\xE4\x80", kWindowsLatin1), u"\u00E4\u20AC");
    EXPECT_EQ(*decodeText("\xE4", kISOLatin1), u"\u00E4");
    for (uint32_t encoding : {kMacRoman, kISOLatin1})
        for (int byte = 0; byte < 256; ++byte) {
            std::string one(1, char(byte));
            EXPECT_EQ(convertText(*convertText(one, encoding, kUTF8), kUTF8, encoding), one)
                << encodingName(encoding) << " " << byte;
        }
}

TEST(Text, WhatAnEncodingLacksIsReplaced)
{
    EXPECT_EQ(*encodeText(kSample, kASCII), "a????");
    EXPECT_EQ(*encodeText(u"\u00E4\u2260", kWindowsLatin1), "\xE4?");
    EXPECT_EQ(*encodeText(u"x\xD83D", kUTF8), "x\xEF\xBF\xBD");
    EXPECT_EQ(decodeText(std::string("\x3D\xD8", 2), kUTF16LE)->size(), 1u) << "a lone surrogate stays";
}

TEST(Text, BytesThatAreNoTextOfTheEncodingAreRefused)
{
    for (const char *bad : {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x28\xA1"})
        EXPECT_FALSE(decodeText(bad, kUTF8)) << bad;
    EXPECT_FALSE(decodeText("\x80", kASCII));
    EXPECT_FALSE(decodeText("abc", kUnknownEncoding));
    EXPECT_FALSE(decodeText("abc", 0x0A01));
    EXPECT_FALSE(encodeText(u"abc", 0x0A01));
}

TEST(Text, OddBytesOfWideTextAreNoUnit)
{
    EXPECT_EQ(decodeText("abc", kUTF16)->size(), 1u);
    EXPECT_EQ(decodeText("abcde", kUTF32BE), std::nullopt) << "beyond the last character";
    EXPECT_EQ(decodeText(std::string("a\0\0\0b", 5), kUTF32)->size(), 1u);
}

} // namespace
