// Numbers and texts between a host program and GNUstep's `defaults` tool, both ways, on an old host and on a new one.
#include "ground.h"
#include "tests/interchange/tools.h"
#include "tests/support/host_test.h"
#include "tests/support/plugin_under_test.h"

using host::Value;
using namespace interchange;

namespace {

// The name of the test program, under which Foundation keeps its defaults.
const std::string kTool = std::string(kDefaultsTool) + " ";
const std::string kDomain = " interchange_tests ";

class InterchangeOfScalars : public support::BlackBox, public ::testing::WithParamInterface<const char *> {
protected:
    void SetUp() override
    {
        start(GetParam());
        defaults = standardUserDefaults();
    }
    void TearDown() override
    {
        defaults = {};
        support::BlackBox::TearDown();
    }

    // What `defaults read` prints for a value that the host program stored.
    std::string toolReads(const char *getter, const Value &value)
    {
        host.assign(defaults, getter, {"Key"}, value);
        EXPECT_TRUE(host.call(defaults, "synchronize").boolean());
        const std::string start = kDomain.substr(1) + "Key ";
        const std::string line = onOneLine(outputOf(kTool + "read" + kDomain + "Key 2>/dev/null"));
        return line.compare(0, start.size(), start) == 0 ? line.substr(start.size()) : line;
    }

    // What the host program gets after `defaults write`.
    Value hostReads(const char *getter, const std::string &written)
    {
        outputOf(kTool + "write" + kDomain + "Key " + quoted(written) + " 2>/dev/null");
        EXPECT_TRUE(host.call(defaults, "synchronize").boolean());
        return host.call(defaults, getter, {"Key"});
    }

    Value defaults;
};

TEST_P(InterchangeOfScalars, TheToolReadsTextsOfTheHost)
{
    EXPECT_EQ(toolReads("stringForKey", "word"), "word");
    EXPECT_EQ(toolReads("stringForKey", "two words"), "'two words'");
    EXPECT_EQ(toolReads("stringForKey", "gr\u00FC\u00DF dich \U0001F44B"), "'gr\u00FC\u00DF dich \U0001F44B'");
    EXPECT_EQ(toolReads("stringForKey", Value::string("caf\x8E", host::kMacRoman)), "caf\u00E9");
}

TEST_P(InterchangeOfScalars, TheToolReadsNumbersOfTheHost)
{
    EXPECT_EQ(toolReads("integerForKey", -70000), "-70000");
    EXPECT_EQ(toolReads("floatForKey", 0.5f), "0.5");
    EXPECT_EQ(toolReads("doubleForKey", -2.25), "-2.25");
    EXPECT_EQ(toolReads("boolForKey", true), "1");
}

TEST_P(InterchangeOfScalars, TheHostReadsTextsOfTheTool)
{
    EXPECT_EQ(hostReads("stringForKey", "word").text(), "word");
    EXPECT_EQ(hostReads("stringForKey", "\"two words\"").text(), "two words");
    // The tool itself loses what is above U+FFFF.
    EXPECT_EQ(hostReads("stringForKey", "\"gr\u00FC\u00DF dich \u20AC\"").text(), "gr\u00FC\u00DF dich \u20AC");
}

TEST_P(InterchangeOfScalars, TheHostReadsNumbersOfTheTool)
{
    EXPECT_EQ(hostReads("integerForKey", "-70000").int32(), -70000);
    EXPECT_EQ(hostReads("integerForKey", "<*I70000>").int32(), 70000);
    EXPECT_EQ(hostReads("floatForKey", "0.5").single(), 0.5f);
    EXPECT_EQ(hostReads("doubleForKey", "<*R-2.25>").number(), -2.25);
    EXPECT_TRUE(hostReads("boolForKey", "YES").boolean());
    EXPECT_TRUE(hostReads("boolForKey", "<*BY>").boolean());
    EXPECT_FALSE(hostReads("boolForKey", "NO").boolean());
}

TEST_P(InterchangeOfScalars, TheToolFindsNothingOfAKeyThatTheHostRemoved)
{
    toolReads("stringForKey", "word");
    host.call(defaults, "removeObjectForKey", {"Key"});
    EXPECT_TRUE(host.call(defaults, "synchronize").boolean());
    EXPECT_NE(statusOf(kTool + "read" + kDomain + "Key >/dev/null 2>&1"), 0);
}

TEST_P(InterchangeOfScalars, TheHostFindsNothingOfAKeyThatTheToolDeleted)
{
    host.assign(defaults, "integerForKey", {"Another"}, 1); // the tool removes a file without keys unnoticed
    EXPECT_EQ(hostReads("stringForKey", "word").text(), "word");
    outputOf(kTool + "delete" + kDomain + "Key 2>/dev/null");
    EXPECT_TRUE(host.call(defaults, "synchronize").boolean());
    EXPECT_TRUE(host.call(defaults, "stringForKey", {"Key"}).isNullHandle());
}

INSTANTIATE_TEST_SUITE_P(Hosts, InterchangeOfScalars, ::testing::Values("2011.4", "2013.03"), [](const auto &info) {
    return std::string(info.param) == "2011.4" ? "Host2011_4" : "Host2013_03";
});

} // namespace
