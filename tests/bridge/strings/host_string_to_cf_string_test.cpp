// Host strings as CFStrings: by the host's own conversion, from the bytes that it hands out, and from its old records.
#include "bridge/strings/cf_string.h"
#include "hostapi/services.h"
#include "tests/support/inner_test.h"
#include "tests/support/text_samples.h"

#include <cstring>

using ::testing::Combine;
using ::testing::ValuesIn;

namespace {

std::u16string take(CFStringRef text)
{
    if (!text)
        return u"(nil)";
    std::u16string units(CFStringGetLength(text), 0);
    CFStringGetCharacters(text, {0, CFIndex(units.size())}, reinterpret_cast<UniChar *>(&units[0]));
    CFRelease(text);
    return units;
}

// Each way that the text can take.
struct Way {
    const char *name;
    const char *version;
    std::set<std::string> without, with;
    const char *usedEntry; // called once for a conversion
};

void PrintTo(const Way &way, std::ostream *out)
{
    *out << way.name;
}

const Way kWays[] = {
    {"HostsConversion", "2013.03", {}, {}, "REALGetStringCFString"},
    {"HostsConversionBefore2012", "2011.4", {}, {"REALGetStringCFString"}, "REALGetStringCFString"},
    {"HandedOutBytes", "2013.03", {"REALGetStringCFString"}, {}, "PluginGetStringData"},
    {"HandedOutBytesOf2012", "2012.0", {"REALGetStringCFString"}, {}, "PluginGetStringData"},
    {"CopiedBytes",
     "2013.03",
     {"REALGetStringCFString", "PluginGetStringData", "PluginDisposeStringData"},
     {},
     "StringGetCString"},
    {"OldRecord", "2011.4", {}, {}, "REALLockString"},
    {"OldRecordOfAHostWithoutVersion", "2009", {}, {}, "REALLockString"},
};

class HostStringTest : public support::Inner {
protected:
    void startOn(const Way &way)
    {
        host::Profile profile = *host::Profile::named(way.version);
        profile.without = way.without;
        profile.with = way.with;
        start(profile);
    }
    static const Way &way(const std::string &name)
    {
        for (const Way &known : kWays)
            if (name == known.name)
                return known;
        throw std::invalid_argument(name);
    }
    std::u16string convert(const host::Value &string)
    {
        host.resetCounts();
        return take(RBString2CFString(support::stringOf(string)));
    }
};

class HostString : public HostStringTest, public ::testing::WithParamInterface<std::tuple<Way, TextSample>> {};

TEST_P(HostString, BecomesTheSameText)
{
    const auto &[way, sample] = GetParam();
    startOn(way);
    EXPECT_EQ(convert(host::Value::string(sample.bytes, sample.encoding)), sample.utf16);
    EXPECT_EQ(host.calls(way.usedEntry), 1);
}

INSTANTIATE_TEST_SUITE_P(Ways, HostString, Combine(ValuesIn(kWays), ValuesIn(kTextSamples)), [](const auto &info) {
    return std::string(std::get<0>(info.param).name) + "_" + std::get<1>(info.param).name;
});

class EveryWay : public HostStringTest, public ::testing::WithParamInterface<Way> {
protected:
    void SetUp() override { startOn(GetParam()); }
};

TEST_P(EveryWay, NilStringBecomesNilWithoutACallOfTheHost)
{
    host.resetCounts();
    EXPECT_EQ(RBString2CFString(nullptr), nullptr);
    EXPECT_TRUE(host.lookupLog().empty());
}

TEST_P(EveryWay, EmptyStringBecomesAnEmptyCFString)
{
    EXPECT_EQ(convert(host::Value::emptyString()), u"");
}

TEST_P(EveryWay, LongStringIsComplete)
{
    EXPECT_EQ(convert(std::string(100000, 'x')), std::u16string(100000, u'x'));
}

TEST_P(EveryWay, UTF16KeepsAZeroUnit)
{
    EXPECT_EQ(convert(host::Value::utf16(std::u16string(u"a\0b", 3))), std::u16string(u"a\0b", 3));
}

INSTANTIATE_TEST_SUITE_P(Ways, EveryWay, ValuesIn(kWays), [](const auto &info) { return info.param.name; });

// The ways that read bytes, where the host has no conversion of its own.
class ByteWay : public EveryWay {};

TEST_P(ByteWay, UnknownEncodingIsReadAsMacRoman)
{
    EXPECT_EQ(convert(host::Value::string("caf\x8E", host::kUnknownEncoding)), u"caf\u00E9");
}

TEST_P(ByteWay, EncodingThatTheHostDoesNotTellIsReadAsMacRoman)
{
    host.hide("REALGetStringEncoding");
    EXPECT_EQ(convert(host::Value::string("caf\x8E", host::kUTF8)), u"caf\u00E9");
}

TEST_P(ByteWay, UTF16LosesAnOddLastByte)
{
    EXPECT_EQ(convert(host::Value::string(std::string("a\0b\0c", 5), host::kUTF16)), u"ab");
}

TEST_P(ByteWay, EightBitTextEndsAtItsFirstZeroByte)
{
    EXPECT_EQ(convert(std::string("ab\0c", 4)), u"ab");
}

TEST_P(ByteWay, BytesThatAreNoTextOfTheirEncodingBecomeNil)
{
    EXPECT_EQ(convert(host::Value::string("\xFF\xFE", host::kUTF8)), u"(nil)");
}

TEST_P(ByteWay, WhatWasTakenIsGivenBackOnce)
{
    host::Value string = "text";
    convert(string);
    EXPECT_EQ(host.calls("REALUnlockString"), host.calls("REALLockString"));
    EXPECT_EQ(host.calls("PluginDisposeStringData"), host.calls("PluginGetStringData"));
    EXPECT_EQ(string.lockCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Ways, ByteWay, ::testing::ValuesIn(kWays + 2, kWays + std::size(kWays)),
                         [](const auto &info) { return info.param.name; });

// --- The order of the ways -------------------------------------------------------------------------------------

using OrderOfWays = HostStringTest;

TEST_F(OrderOfWays, HostsAnswerMakesEncodingAndBytesUnnecessary)
{
    startOn(way("HostsConversion"));
    EXPECT_EQ(convert("text"), u"text");
    EXPECT_EQ(host.calls("REALGetStringCFString"), 1);
    EXPECT_EQ(host.lookups("REALGetStringEncoding"), 0);
    EXPECT_EQ(host.lookups("PluginGetStringData"), 0);
    EXPECT_EQ(host.lookups("REALLockString"), 0);
}

int attempts;
std::vector<uint8_t> flags;

CFStringRef answerAtTheSecondAttempt(REALstring, uint8_t flag)
{
    flags.push_back(flag);
    return ++attempts < 2 ? nullptr : CFStringCreateWithCString(nullptr, "second", kCFStringEncodingUTF8);
}

CFStringRef neverAnswer(REALstring, uint8_t flag)
{
    flags.push_back(flag);
    return nullptr;
}

TEST_F(OrderOfWays, HostIsAskedTwiceFrom2012On)
{
    startOn(way("HostsConversion"));
    host.replace("REALGetStringCFString", reinterpret_cast<void *>(answerAtTheSecondAttempt));
    EXPECT_EQ(convert("text"), u"second");
    EXPECT_THAT(flags, ::testing::ElementsAre(0, 0));
    EXPECT_EQ(host.lookups("REALGetStringEncoding"), 0);
}

TEST_F(OrderOfWays, HostIsAskedOnceBefore2012)
{
    startOn(way("HostsConversionBefore2012"));
    host.replace("REALGetStringCFString", reinterpret_cast<void *>(neverAnswer));
    EXPECT_EQ(convert("text"), u"text");
    EXPECT_THAT(flags, ::testing::ElementsAre(0));
}

TEST_F(OrderOfWays, BytesAreReadWhenTheHostDoesNotAnswer)
{
    startOn(way("HostsConversion"));
    host.replace("REALGetStringCFString", reinterpret_cast<void *>(neverAnswer));
    EXPECT_EQ(convert("text"), u"text");
    EXPECT_EQ(flags.size(), 2u);
    EXPECT_EQ(host.calls("PluginGetStringData"), 1);
}

TEST_F(OrderOfWays, HostFrom2012OnThatHandsOutNoBytesGivesNil)
{
    startOn(way("CopiedBytes"));
    host.hide("StringGetCString");
    EXPECT_EQ(convert("text"), u"(nil)");
    host.show("StringGetCString");
    EXPECT_EQ(convert("text"), u"text");
}

// A record without a buffer: there is no text, and Core Foundation is not asked what it makes of none.
TEST(OldRecordWithoutABuffer, BecomesNil)
{
    gResolver = [](const char *) -> void * { return nullptr; };
    uint32_t record[4] = {0, 0, 0, 5};
    EXPECT_EQ(RBString2CFString(reinterpret_cast<REALstring>(record)), nullptr);
}

} // namespace
