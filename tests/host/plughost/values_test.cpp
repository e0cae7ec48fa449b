// plughost get and set, by type.
#include <gtest/gtest.h>

#include "tests/host/plughost/program.h"

using namespace plughost_test;

static void expectKept(const std::string &type, const std::string &written, const std::string &read)
{
    EXPECT_EQ(printed({"set", type, "Key", written}), "");
    EXPECT_EQ(printed({"get", type, "Key"}), read) << type;
}

TEST(Values, IntegersAreKeptAtTheirBounds)
{
    expectKept("integer", "5", "5");
    expectKept("integer", "-2147483648", "-2147483648");
    expectKept("integer", "+2147483647", "2147483647");
}

TEST(Values, SinglesArePrintedAsTheShortestNumberThatGivesThemAgain)
{
    expectKept("single", "0.1", "0.1");
    expectKept("float", "-1.5", "-1.5");
    expectKept("single", "NaN", "NaN");
    expectKept("single", "Infinity", "Infinity");
}

TEST(Values, DoublesKeepAllTheirDigits)
{
    expectKept("double", "0.1", "0.1");
    expectKept("double", "52.520008", "52.520008");
    expectKept("double", "1e-300", "1e-300");
    expectKept("double", "-Infinity", "-Infinity");
    expectKept("single", "-inf", "-Infinity");
}

TEST(Values, BooleansAreWrittenInSeveralWays)
{
    expectKept("boolean", "yes", "true");
    expectKept("boolean", "False", "false");
    expectKept("boolean", "1", "true");
}

TEST(Values, TextIsKeptAsItIs)
{
    expectKept("string", "grüß dich 👋", "grüß dich 👋");
    expectKept("string", "says \"hello\"\nand goes", "says \"hello\"\nand goes");
    expectKept("string", "[a,b]", "[a,b]");
    expectKept("string", "{}", "{}");
    expectKept("string", "get", "get");
}

TEST(Values, TextThatStartsWithADashStandsBehindTwoDashes)
{
    EXPECT_EQ(printed({"set", "string", "Key", "--", "-x"}), "");
    EXPECT_EQ(printed({"get", "string", "Key"}), "-x");
    EXPECT_EQ(printed({"set", "string", "Key", "-Infinity"}), "");
    EXPECT_EQ(printed({"get", "string", "Key"}), "-Infinity");
    EXPECT_EQ(printed({"call", "doubleForKey", "Key", "--assign", "-Infinity"}), "");
    EXPECT_EQ(printed({"get", "double", "Key"}), "-Infinity");
}

TEST(Values, AURLIsKept)
{
    expectKept("url", "http://example.com/a?b=c", "http://example.com/a?b=c");
}

TEST(Values, DataIsWrittenInHexadecimalDigitsOrReadFromAFile)
{
    expectKept("data", "00FF10", "00ff10");
    expectKept("data", "@" + temporaryFile("bytes", std::string("a\0b", 3)), "610062");
}

TEST(Values, AFileIsAPath)
{
    expectKept("file", "/etc/hosts", "/etc/hosts");
    expectKept("file", "/etc/../etc/hosts", "/etc/hosts");
}

TEST(Values, ADateIsWallClockTime)
{
    expectKept("date", "2012-02-29T10:20:30", "2012-02-29T10:20:30");
    expectKept("date", "2012-02-29 10:20:30", "2012-02-29T10:20:30");
    expectKept("date", "1999-12-31", "1999-12-31T00:00:00");
}

TEST(Values, CollectionsAreJson)
{
    expectKept("dictionary", R"({"frame":[0,0,800,600],"open":true,"title":"Main"})",
               R"({"frame":[0,0,800,600],"open":true,"title":"Main"})");
    expectKept("array", R"([1,0.5,"text",[],{}])", R"([1,0.5,"text",[],{}])");
    expectKept("stringarray", R"(["one","two words"])", R"(["one","two words"])");
    expectKept("variant", "@" + temporaryFile("list.json", "[1, 2]"), "[1,2]");
}

TEST(Values, AMissingKeyGivesWhatHostCodeGets)
{
    EXPECT_EQ(printed({"get", "integer", "Missing"}), "0");
    EXPECT_EQ(printed({"get", "double", "Missing"}), "0");
    EXPECT_EQ(printed({"get", "boolean", "Missing"}), "false");
    EXPECT_EQ(printed({"get", "string", "Missing"}), "");
    EXPECT_EQ(printed({"get", "data", "Missing"}), "nil");
    EXPECT_EQ(printed({"get", "date", "Missing"}), "nil");
    EXPECT_EQ(printed({"get", "dictionary", "Missing"}), "nil");
    EXPECT_EQ(printed({"get", "stringarray", "Missing"}), "[]");
    EXPECT_EQ(printed({"get", "variant", "Missing", "--json"}), "null");
}

TEST(Values, AMissingKeyCanBeToldFromZero)
{
    printed({"set", "integer", "Key", "0"});
    EXPECT_EQ(printed({"get", "integer", "Key", "--must-exist"}), "0");
    Result result = plughost({"get", "integer", "Missing", "--must-exist"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "plughost: \"Missing\" has no value\n");
}

TEST(Values, ARemovedKeyIsMissing)
{
    printed({"set", "integer", "Key", "5"});
    EXPECT_EQ(printed({"remove", "Key"}), "");
    EXPECT_EQ(printed({"get", "variant", "Key"}), "nil");
}

TEST(Values, EveryHostVersionKeepsTextAndArrays)
{
    for (const char *version : {"2009", "2011.4", "2012.0", "2013.02", "2013.9", "2014.1"}) {
        SCOPED_TRACE(version);
        std::string text = std::string("grüß ") + version;
        printed({"set", "string", "Key", text, "--host", version});
        EXPECT_EQ(printed({"get", "string", "Key", "--host", version}), text);
        printed({"set", "stringarray", "List", "[\"a\", \"b\"]", "--host", version});
        EXPECT_EQ(printed({"get", "stringarray", "List", "--host", version}), "[\"a\",\"b\"]");
    }
}

struct BadValue {
    const char *type;
    const char *value;
    const char *message;
};

class BadValues : public testing::TestWithParam<BadValue> {};

TEST_P(BadValues, GiveOneLineAndStoreNothing)
{
    const BadValue &bad = GetParam();
    Result result = plughost({"set", bad.type, "Key", bad.value});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, std::string("plughost: ") + bad.message + "\n");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(printed({"get", "variant", "Key"}), "nil");
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryType, BadValues,
    testing::Values(BadValue{"integer", "5x", "Key: \"5x\" is not of type integer"},
                    BadValue{"integer", "", "Key: \"\" is not of type integer"},
                    BadValue{"integer", "2147483648", "Key: \"2147483648\" is out of the range of type integer"},
                    BadValue{"single", "1e39", "Key: \"1e39\" is out of the range of type single"},
                    BadValue{"double", "one", "Key: \"one\" is not of type double"},
                    BadValue{"boolean", "maybe", "Key: \"maybe\" is neither true nor false"},
                    BadValue{"data", "0", "Key: data: an odd number of hexadecimal digits"},
                    BadValue{"data", "00fg", "Key: data: character 4 is no hexadecimal digit"},
                    BadValue{"data", "@/nowhere", "Key: cannot read \"/nowhere\": No such file or directory"},
                    BadValue{"data", "@/dev/zero", "Key: cannot read \"/dev/zero\": it has more than 64 MB"},
                    BadValue{"data", "@/etc", "Key: cannot read \"/etc\": Is a directory"},
                    BadValue{"file", "", "Key: a file's path cannot be empty"},
                    BadValue{"file", "/nowhere/at/all", "Key: \"/nowhere/at/all\" lies in no existing folder"},
                    BadValue{
                        "date", "today",
                        "Key: \"today\" is no date, such as 2012-02-29 or 2012-02-29T10:20:30 (local time, no zone)"},
                    BadValue{"date", "2011-02-29", "Key: \"2011-02-29\" is not in the calendar"},
                    BadValue{"date", "2012-02-29T24:00:00", "Key: \"2012-02-29T24:00:00\" is not in the calendar"},
                    BadValue{"dictionary", "[1]", "Key: expected a JSON object, found a list"},
                    BadValue{"array", "{}", "Key: expected a JSON list, found an object"},
                    BadValue{"stringarray", "[\"a\", 5]", "Key: /1: expected text, found integer"}));
