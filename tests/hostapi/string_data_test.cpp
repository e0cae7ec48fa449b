// The bytes of a host string, from hosts that hand them out and from those that do not.
#include "hostapi/services.h"
#include "hostapi/strings.h"
#include "tests/support/allocations.h"
#include "tests/support/inner_test.h"
#include "tests/support/text_samples.h"

#include <cstring>
#include <malloc.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A record in which every word would show that it was written.
REALstringData untouched()
{
    REALstringData data;
    memset(&data, 0x5A, sizeof data);
    return data;
}

bool isUntouched(const REALstringData &data)
{
    const REALstringData fresh = untouched();
    return memcmp(&data, &fresh, sizeof data) == 0;
}

class StringData : public support::Inner, public ::testing::WithParamInterface<TextSample> {
protected:
    // A host that offers no bytes: the plug-in makes the copies.
    void startWithoutStringData()
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.without = {"PluginGetStringData", "PluginDisposeStringData"};
        start(profile);
        host.resetCounts();
    }

    // What a request gives; disposes of it.
    std::string bytesOf(const host::Value &string, uint32_t encoding, int32_t capacity = 0)
    {
        REALstringData data = untouched();
        data.length = capacity;
        if (!REALGetStringData(support::stringOf(string), encoding, &data))
            return "(none)";
        EXPECT_EQ(data.encoding, encoding);
        const uint32_t end = 0;
        EXPECT_EQ(memcmp(data.data + data.length, &end, sizeof end), 0) << "no 32-bit zero behind the text";
        std::string bytes(data.data, data.length);
        REALDisposeStringData(&data);
        return bytes;
    }
};

TEST_P(StringData, ComesFromAHostThatHandsItOut)
{
    start("2013.03");
    host::Value string = host::Value::string(GetParam().bytes, GetParam().encoding);
    host.resetCounts();
    EXPECT_EQ(bytesOf(string, GetParam().encoding), GetParam().bytes);
    EXPECT_EQ(bytesOf(string, kUTF8Text), GetParam().utf8);
    EXPECT_EQ(bytesOf(string, kOwnBytes), GetParam().bytes);
    EXPECT_EQ(host.calls("PluginGetStringData"), 3);
    EXPECT_EQ(host.calls("PluginDisposeStringData"), 3);
    EXPECT_EQ(host.lookups("StringGetCString"), 0);
    EXPECT_EQ(host.calls("REALConvertString"), 0);
}

TEST_P(StringData, InItsOwnEncodingIsCopiedWithoutConversion)
{
    startWithoutStringData();
    host::Value string = host::Value::string(GetParam().bytes, GetParam().encoding);
    EXPECT_EQ(bytesOf(string, GetParam().encoding), GetParam().bytes);
    EXPECT_EQ(host.calls("REALConvertString"), 0);
    EXPECT_EQ(host.calls("REALUnlockString"), 0) << "there is no temporary string";
}

TEST_P(StringData, InAnotherEncodingIsConvertedByTheHost)
{
    startWithoutStringData();
    host::Value string = host::Value::string(GetParam().bytes, GetParam().encoding);
    const uint32_t other = GetParam().encoding == host::kUTF8 ? host::kUTF16 : host::kUTF8;
    std::string expected = GetParam().utf8;
    if (other == host::kUTF16)
        expected.assign(reinterpret_cast<const char *>(GetParam().utf16.data()), 2 * GetParam().utf16.size());
    EXPECT_EQ(bytesOf(string, other), expected);
    EXPECT_EQ(host.calls("REALConvertString"), 1);
    EXPECT_EQ(host.calls("REALUnlockString"), 1) << "the converted string";
}

TEST_P(StringData, OfOwnBytesIsCopiedAsItIs)
{
    startWithoutStringData();
    host::Value string = host::Value::string(GetParam().bytes, GetParam().encoding);
    EXPECT_EQ(bytesOf(string, kOwnBytes), GetParam().bytes);
    EXPECT_EQ(host.calls("REALConvertString"), 0);
    EXPECT_EQ(host.calls("REALGetStringEncoding"), 0);
}

INSTANTIATE_TEST_SUITE_P(Encodings, StringData, ::testing::ValuesIn(kTextSamples),
                         [](const auto &info) { return info.param.name; });

class StringDataRules : public StringData {};

TEST_F(StringDataRules, NilStringLeavesTheRecordUntouched)
{
    startWithoutStringData();
    for (uint32_t encoding : {uint32_t(kUTF8Text), uint32_t(kOwnBytes)}) {
        REALstringData data = untouched();
        EXPECT_FALSE(REALGetStringData(nullptr, encoding, &data));
        EXPECT_TRUE(isUntouched(data));
    }
}

TEST_F(StringDataRules, NilStringLeavesTheRecordUntouchedOnAHostThatHandsItOut)
{
    start("2013.03");
    REALstringData data = untouched();
    EXPECT_FALSE(REALGetStringData(nullptr, kUTF8Text, &data));
    EXPECT_TRUE(isUntouched(data));
}

TEST_F(StringDataRules, FailedConversionLeavesTheRecordUntouched)
{
    startWithoutStringData();
    host::Value string = "text";
    host.failCreation(host::Creation::String, 1);
    REALstringData data = untouched();
    EXPECT_FALSE(REALGetStringData(support::stringOf(string), kUTF16Text, &data));
    EXPECT_TRUE(isUntouched(data));
}

TEST_F(StringDataRules, WithoutConversionLeavesTheRecordUntouched)
{
    startWithoutStringData();
    host::Value string = "text";
    host.hide("REALConvertString");
    REALstringData data = untouched();
    EXPECT_FALSE(REALGetStringData(support::stringOf(string), kUTF16Text, &data));
    EXPECT_TRUE(isUntouched(data));
}

class StringDataWithout : public StringData {
protected:
    void expectNoneUntilShown(const char *missing)
    {
        startWithoutStringData();
        host::Value string = "text";
        host.hide(missing);
        REALstringData data = untouched();
        EXPECT_FALSE(REALGetStringData(support::stringOf(string), kUTF8Text, &data));
        EXPECT_TRUE(isUntouched(data));
        host.show(missing);
        EXPECT_EQ(bytesOf(string, kUTF8Text), "text");
    }
};

TEST_F(StringDataWithout, TheTextGivesNoneUntilTheHostHasIt)
{
    expectNoneUntilShown("StringGetCString");
}

TEST_F(StringDataWithout, TheLengthGivesNoneUntilTheHostHasIt)
{
    expectNoneUntilShown("LenB");
}

TEST_F(StringDataRules, LoadsTheLengthFunctionByItsDeclarationOnce)
{
    startWithoutStringData();
    host::Value string = "text";
    bytesOf(string, kUTF8Text);
    bytesOf(string, kUTF8Text);
    EXPECT_EQ(host.lookups("LenB"), 1);
    EXPECT_EQ(host.lookups("StringGetCString"), 1);
    EXPECT_EQ(host.calls("LenB"), 2);
}

TEST_F(StringDataRules, EncodingUnknownToTheHostCountsAsMacRoman)
{
    startWithoutStringData();
    host.hide("REALGetStringEncoding");
    host::Value string = host::Value::string("\x8E", host::kUTF8);
    EXPECT_EQ(bytesOf(string, kMacRomanText), "\x8E");
    EXPECT_EQ(host.calls("REALConvertString"), 0);
}

TEST_F(StringDataRules, KeepsZeroBytesAndEmptyTexts)
{
    startWithoutStringData();
    const std::string bytes("a\0b", 3);
    EXPECT_EQ(bytesOf(host::Value::string(bytes), kUTF8Text), bytes);
    EXPECT_EQ(bytesOf(host::Value::emptyString(), kUTF8Text), "");
}

// With own bytes the room is what the caller allows for: its size and not the text's.
TEST_F(StringDataRules, BufferOfOwnBytesIsSizedByTheCallersCapacity)
{
    startWithoutStringData();
    host::Value string = "abc";
    REALstringData data = {};
    data.length = 5000;
    Allocations allocations;
    ASSERT_TRUE(REALGetStringData(support::stringOf(string), kOwnBytes, &data));
    EXPECT_THAT(allocations.mallocs, ElementsAre(5004));
    EXPECT_EQ(data.length, 3);
    EXPECT_EQ(data.encoding, kOwnBytes);
    EXPECT_STREQ(data.data, "abc");
    REALDisposeStringData(&data);
}

TEST_F(StringDataRules, BufferOfAnEncodingIsSizedByTheText)
{
    startWithoutStringData();
    host::Value string = "abc";
    REALstringData data = {};
    data.length = 5000;
    Allocations allocations;
    ASSERT_TRUE(REALGetStringData(support::stringOf(string), kUTF8Text, &data));
    EXPECT_THAT(allocations.mallocs, ElementsAre(7));
    REALDisposeStringData(&data);
}

TEST_F(StringDataRules, OwnBytesFitWhateverTheCallerSays)
{
    startWithoutStringData();
    host::Value string = std::string(7000, 'x');
    for (int32_t said : {0, -1, 100}) {
        REALstringData data = {};
        data.length = said;
        Allocations allocations;
        ASSERT_TRUE(REALGetStringData(support::stringOf(string), kOwnBytes, &data));
        EXPECT_THAT(allocations.mallocs, ElementsAre(7004)) << said;
        REALDisposeStringData(&data);
    }
}

TEST_F(StringDataRules, TheLengthIsAskedForOnce)
{
    startWithoutStringData();
    host::Value string = "text";
    EXPECT_EQ(bytesOf(string, kOwnBytes), "text");
    EXPECT_EQ(host.calls("LenB"), 1);
    EXPECT_EQ(host.calls("StringGetCString"), 1);
}

TEST_F(StringDataRules, BothServicesAreLookedForBeforeOneIsMissed)
{
    startWithoutStringData();
    host::Value string = "text";
    for (const char *missing : {"StringGetCString", "LenB"})
        host.hide(missing);
    host.resetCounts();
    EXPECT_EQ(bytesOf(string, kOwnBytes), "(none)");
    EXPECT_THAT(host.lookupLog(), ElementsAre("PluginGetStringData", "StringGetCString", "REALLoadGlobalMethod"));
    EXPECT_EQ(host.lookups("LenB"), 1);
}

TEST_F(StringDataRules, TheHostsOwnWordsAreNotTouched)
{
    startWithoutStringData();
    host::Value string = "text";
    REALstringData data = untouched();
    data.length = 0;
    ASSERT_TRUE(REALGetStringData(support::stringOf(string), kOwnBytes, &data));
    const REALstringData fresh = untouched();
    EXPECT_EQ(memcmp(data.hostsOwn, fresh.hostsOwn, sizeof data.hostsOwn), 0);
    REALDisposeStringData(&data);
}

TEST_F(StringDataRules, CopiesAreFreedWithoutAHostThatDisposes)
{
    startWithoutStringData();
    host::Value string = std::string(100000, 'x');
    bytesOf(string, kUTF8Text);
    const size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 20; i++) {
        REALstringData data = {};
        ASSERT_TRUE(REALGetStringData(support::stringOf(string), kUTF8Text, &data));
        REALDisposeStringData(&data);
    }
    EXPECT_LT(mallinfo2().uordblks, before + 100000);
}

// The host's answer is a boolean in the low byte; what stands above it means nothing.
int32_t lowByteFalse(void *, uint32_t, REALstringData *)
{
    return 0x100;
}
int32_t lowByteTrue(void *, uint32_t, REALstringData *)
{
    return 0x201;
}

TEST_F(StringDataRules, TheHostsAnswerIsItsLowByte)
{
    start("2013.03");
    host::Value string = "abc";
    REALstringData data = {};
    host.replace("PluginGetStringData", reinterpret_cast<void *>(lowByteFalse));
    EXPECT_FALSE(REALGetStringData(support::stringOf(string), kUTF8Text, &data));
    host.replace("PluginGetStringData", reinterpret_cast<void *>(lowByteTrue));
    EXPECT_TRUE(REALGetStringData(support::stringOf(string), kUTF8Text, &data));
}

} // namespace
