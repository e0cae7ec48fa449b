// Strings and the texts of URLs under a key, and the keys themselves.
#include "tests/support/host_test.h"
#include "tests/support/plugin_under_test.h"
#include "tests/support/recording_defaults.h"
#include "tests/support/text_samples.h"
#include "tests/userdefaults/cocoa_objects.h"

#include <CoreFoundation/CoreFoundation.h>

using support::RecordingDefaults;
using ::testing::Combine;
using ::testing::ElementsAre;
using ::testing::ValuesIn;

namespace {

class TextTest : public support::BlackBox {
protected:
    void startOn(const std::string &version)
    {
        start(version);
        instance = newEmptyInstance();
        standIn.carryIn(instance);
    }
    void TearDown() override
    {
        instance = {};
        BlackBox::TearDown();
    }
    RecordingDefaults standIn;
    host::Value instance;
};

class TextAccessors : public TextTest {
protected:
    void SetUp() override { startOn("2013.03"); }
};

// --- Texts in every encoding, from every host ------------------------------------------------------------------

class TextOnEveryHost : public TextTest,
                        public ::testing::WithParamInterface<std::tuple<support::ProfileFacts, TextSample>> {
protected:
    void SetUp() override { startOn(std::get<0>(GetParam()).name); }
    const TextSample &sample() { return std::get<1>(GetParam()); }
    host::Value text() { return host::Value::string(sample().bytes, sample().encoding); }
    std::string quoted() { return "\"" + sample().utf8 + "\""; }
};

TEST_P(TextOnEveryHost, ReachesCocoaAsKeyAndAsValue)
{
    host.call(instance, "setStringValue", {text(), text()});
    EXPECT_THAT(standIn.messages(), ElementsAre("setObject:" + quoted() + " forKey:" + quoted()));
}

TEST_P(TextOnEveryHost, ComesFromCocoaAsUTF8)
{
    standIn.answerText("stringForKey:", sample().utf8);
    host::Value result = host.call(instance, "stringForKey", {text()});
    EXPECT_EQ(result.bytes(), sample().utf8);
    EXPECT_EQ(result.encoding(), host::kUTF8);
    EXPECT_EQ(result.lockCount(), 1);
    EXPECT_THAT(standIn.messages(), ElementsAre("stringForKey:" + quoted()));
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, TextOnEveryHost, Combine(support::everyProfile(), ValuesIn(kTextSamples)), [](const auto &info) {
        return support::profileTestName({std::get<0>(info.param), 0}) + "_" + std::get<1>(info.param).name;
    });

// --- Strings ----------------------------------------------------------------------------------------------------

TEST_F(TextAccessors, NilStringFromCocoaIsANullString)
{
    EXPECT_TRUE(host.call(instance, "stringForKey", {"Key"}).isNullHandle());
}

TEST_F(TextAccessors, EmptyStringFromCocoaIsANullString)
{
    standIn.answerText("stringForKey:", "");
    EXPECT_TRUE(host.call(instance, "stringForKey", {"Key"}).isNullHandle());
}

TEST_F(TextAccessors, StringIsSetByEitherName)
{
    host.call(instance, "setStringValue", {"Key", "text"});
    host.assign(instance, "stringForKey", {"Key"}, "text");
    EXPECT_THAT(standIn.messages(),
                ElementsAre("setObject:\"text\" forKey:\"Key\"", "setObject:\"text\" forKey:\"Key\""));
}

TEST_F(TextAccessors, NullStringIsSetAsNilAndAnEmptyOneAsAnEmptyText)
{
    host.call(instance, "setStringValue", {"Key", host::Value::nullString()});
    host.call(instance, "setStringValue", {"Key", host::Value::emptyString()});
    EXPECT_THAT(standIn.messages(), ElementsAre("setObject:nil forKey:\"Key\"", "setObject:\"\" forKey:\"Key\""));
}

// --- URLs -------------------------------------------------------------------------------------------------------

TEST_F(TextAccessors, URLIsReadAsItsText)
{
    standIn.answerURL("URLForKey:", "http://localhost/a%20b?c=d");
    host::Value result = host.call(instance, "URLForKey", {"Key"});
    EXPECT_EQ(result.text(), "http://localhost/a%20b?c=d");
    EXPECT_EQ(result.lockCount(), 1);
    EXPECT_THAT(standIn.messages(), ElementsAre("URLForKey:\"Key\""));
}

TEST_F(TextAccessors, NilURLFromCocoaIsANullString)
{
    EXPECT_TRUE(host.call(instance, "URLForKey", {"Key"}).isNullHandle());
}

TEST_F(TextAccessors, URLWithoutTextIsANullString)
{
    standIn.answerObject("URLForKey:", cocoa::textlessURL());
    EXPECT_TRUE(host.call(instance, "URLForKey", {"Key"}).isNullHandle());
}

TEST_F(TextAccessors, URLIsSetByEitherName)
{
    host.call(instance, "setURLValue", {"Key", "http://localhost/a"});
    host.assign(instance, "URLForKey", {"Key"}, "http://localhost/a");
    EXPECT_THAT(standIn.messages(), ElementsAre("setURL:<http://localhost/a> forKey:\"Key\"",
                                                "setURL:<http://localhost/a> forKey:\"Key\""));
}

TEST_F(TextAccessors, TextThatIsNoURLIsSetAsNil)
{
    host.call(instance, "setURLValue", {"Key", "not a URL: %zz"});
    EXPECT_THAT(standIn.messages(), ElementsAre("setURL:nil forKey:\"Key\""));
}

TEST_F(TextAccessors, NullURLIsSetAsNil)
{
    host.call(instance, "setURLValue", {"Key", host::Value::nullString()});
    EXPECT_THAT(standIn.messages(), ElementsAre("setURL:nil forKey:\"Key\""));
}

TEST_F(TextAccessors, TextThatCannotBeConvertedIsSetAsNil)
{
    host::Value broken = host::Value::string("\xFF\xFE", host::kUTF8);
    host.call(instance, "setStringValue", {"Key", broken});
    host.call(instance, "setURLValue", {"Key", broken});
    EXPECT_THAT(standIn.messages(), ElementsAre("setObject:nil forKey:\"Key\"", "setURL:nil forKey:\"Key\""));
}

CFStringRef textOfHost;

CFStringRef handOutText(void *, unsigned char)
{
    return static_cast<CFStringRef>(CFRetain(textOfHost));
}

TEST_F(TextAccessors, WhatTheHostHandsOutIsReleased)
{
    textOfHost = CFStringCreateWithCString(nullptr, "http://localhost/", kCFStringEncodingUTF8);
    host.replace("REALGetStringCFString", reinterpret_cast<void *>(handOutText));
    for (const char *setter : {"setStringValue", "setURLValue"})
        host.call(instance, setter, {"Key", "text"});
    host.call(instance, "stringForKey", {"Key"});
    EXPECT_EQ(standIn.messages().size(), 3u);
    pool->drain();
    EXPECT_EQ(cocoa::retainCount(const_cast<void *>(static_cast<const void *>(textOfHost))), 1);
    CFRelease(textOfHost);
}

// --- Keys -------------------------------------------------------------------------------------------------------

struct Access {
    const char *name;
    std::vector<host::Value> (*values)();
    const char *beforeKey; // of the message
};

void PrintTo(const Access &access, std::ostream *out)
{
    *out << access.name;
}

template <class Type>
std::vector<host::Value> one(Type value)
{
    return {host::Value(value)};
}

const Access kAccesses[] = {
    {"integerForKey", [] { return host::Arguments(); }, "integerForKey:"},
    {"setIntegerValue", [] { return one(7); }, "setInteger:7 forKey:"},
    {"floatForKey", [] { return host::Arguments(); }, "floatForKey:"},
    {"setFloatValue", [] { return one(0.5f); }, "setFloat:0.5 forKey:"},
    {"doubleForKey", [] { return host::Arguments(); }, "doubleForKey:"},
    {"setDoubleValue", [] { return one(0.5); }, "setDouble:0.5 forKey:"},
    {"boolForKey", [] { return host::Arguments(); }, "boolForKey:"},
    {"setBoolValue", [] { return one(true); }, "setBool:1 forKey:"},
    {"stringForKey", [] { return host::Arguments(); }, "stringForKey:"},
    {"setStringValue", [] { return one("text"); }, "setObject:\"text\" forKey:"},
    {"URLForKey", [] { return host::Arguments(); }, "URLForKey:"},
    {"setURLValue", [] { return one("http://localhost/"); }, "setURL:<http://localhost/> forKey:"},
};

class Keys : public TextTest, public ::testing::WithParamInterface<Access> {
protected:
    void SetUp() override { startOn("2013.03"); }
};

TEST_P(Keys, ReachCocoaAsTheyAre)
{
    const std::pair<host::Value, const char *> keys[] = {
        {"Key", "\"Key\""},
        {"Schl\u00FCssel \U0001F511", "\"Schl\u00FCssel \U0001F511\""},
        {host::Value::emptyString(), "\"\""},
        {host::Value::nullString(), "nil"},
        {host::Value::string("\xFF\xFE", host::kUTF8), "nil"}, // no text
    };
    for (const auto &[key, described] : keys) {
        host::Arguments arguments = GetParam().values();
        arguments.insert(arguments.begin(), key);
        standIn.forgetMessages();
        host.call(instance, GetParam().name, arguments);
        EXPECT_THAT(standIn.messages(), ElementsAre(std::string(GetParam().beforeKey) + described));
    }
}

INSTANTIATE_TEST_SUITE_P(All, Keys, ValuesIn(kAccesses), [](const auto &info) { return info.param.name; });

// --- Against Cocoa's own defaults, on every host ---------------------------------------------------------------

class StoredTexts : public support::BlackBoxOnEveryHost {};

TEST_P(StoredTexts, ComeBackAsTheyWereStored)
{
    host::Value defaults = standardUserDefaults();
    for (const TextSample &sample : kTextSamples) {
        host.assign(defaults, "stringForKey", {"Text"}, host::Value::string(sample.bytes, sample.encoding));
        EXPECT_EQ(host.call(defaults, "stringForKey", {"Text"}).text(), sample.utf8) << sample.name;
    }
    host.assign(defaults, "URLForKey", {"URL"}, "http://localhost/a?b=c#d");
    EXPECT_EQ(host.call(defaults, "URLForKey", {"URL"}).text(), "http://localhost/a?b=c#d");
}

TEST_P(StoredTexts, NullValuesRemoveWhatWasStored)
{
    host::Value defaults = standardUserDefaults();
    host.assign(defaults, "stringForKey", {"Text"}, "text");
    host.assign(defaults, "stringForKey", {"Text"}, host::Value::nullString());
    EXPECT_TRUE(host.call(defaults, "stringForKey", {"Text"}).isNullHandle());
    EXPECT_TRUE(host.call(defaults, "URLForKey", {"Text"}).isNullHandle());
}

INSTANTIATE_TEST_SUITE_P(Hosts, StoredTexts, support::everyProfile(), support::profileTestName);

} // namespace
