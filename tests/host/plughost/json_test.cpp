// JSON as values are written and read.
#include <gtest/gtest.h>

#include "tests/host/plughost/program.h"

using namespace plughost_test;

class KeptJson : public testing::TestWithParam<const char *> {};

TEST_P(KeptJson, IsPrintedAsItWasWritten)
{
    printed({"set", "variant", "Key", GetParam()});
    EXPECT_EQ(printed({"get", "variant", "Key", "--json"}), GetParam());
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, KeptJson,
                         testing::Values("true", "false", "5", "-2147483648", "2147483648", "-9223372036854775808",
                                         "9223372036854775807", "0.5", "-0.0", "1e+300", "5e-324",
                                         R"({"$double":"NaN"})", R"({"$double":"-Infinity"})", R"({"$single":0.1})",
                                         R"("")", R"("grüß dich 👋")", R"({"$date":"2012-02-29T10:20:30"})",
                                         R"({"$data":"00ff"})", "[]", "{}", "[[[[]]]]",
                                         R"({"a":{"b":{"c":[1,{"$date":"1999-12-31T23:59:59"},{"$single":1.5}]}}})",
                                         R"({"$dictionary":[["$date","no date at all"],["plain",1]]})"));

// What the defaults database does not tell apart comes back as what it is there.
TEST(Json, OtherValuesComeBackAsTheDatabaseAndTheClassKeepThem)
{
    const struct {
        const char *written;
        const char *read;
    } rows[] = {{R"({"$int64":5})", "5"},
                {R"({"$int64":800})", "800"},
                {R"({"$single":"Infinity"})", R"({"$double":"Infinity"})"},
                {R"({"$currency":1.5})", "1.5"},
                {R"({"$color":"#FF8000"})", "16744448"},
                {R"({"$double":5})", "5.0"}};
    for (const auto &row : rows) {
        printed({"set", "variant", "Key", row.written});
        EXPECT_EQ(printed({"get", "variant", "Key", "--json"}), row.read) << row.written;
    }
}

TEST(Json, ScalarsCarryTheTagOfTheirTypeWhenAskedFor)
{
    printed({"set", "single", "Key", "0.1"});
    EXPECT_EQ(printed({"get", "single", "Key", "--json"}), R"({"$single":0.1})");
    EXPECT_EQ(printed({"get", "string", "Missing", "--json"}), R"("")");
    printed({"set", "file", "Log", "/etc/hosts"});
    EXPECT_EQ(printed({"get", "file", "Log", "--json"}), R"({"$file":"/etc/hosts"})");
}

TEST(Json, AThousandLevelsAreKept)
{
    std::string deep = std::string(1000, '[') + std::string(1000, ']');
    printed({"set", "variant", "Key", deep});
    EXPECT_EQ(printed({"get", "variant", "Key", "--json"}), deep);
}

struct BadJson {
    const char *json;
    const char *message;
};

class RefusedJson : public testing::TestWithParam<BadJson> {};

TEST_P(RefusedJson, SaysWhatIsWrongAndWhereAndStoresNothing)
{
    Result result = plughost({"set", "variant", "Key", GetParam().json});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors.rfind(std::string("plughost: Key: ") + GetParam().message, 0), 0u) << result.errors;
    EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    EXPECT_EQ(printed({"get", "variant", "Key"}), "nil");
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, RefusedJson,
    testing::Values(BadJson{"hello", "no valid JSON: parse error at line 1, column 1"},
                    BadJson{"", "no valid JSON: parse error at line 1, column 1"},
                    BadJson{"[1, 2", "no valid JSON: parse error at line 1, column 6"},
                    BadJson{"[1]\n\n]", "no valid JSON: parse error at line 3, column 1"},
                    BadJson{"1e999", "no valid JSON: number overflow"},
                    BadJson{R"({"a": 1, "a": 2})", "the key \"a\" stands twice in one object"},
                    BadJson{R"({"$when": "now"})", "\"$when\" is no tag that can be read"},
                    BadJson{R"({"$object": "NSFontKTZ"})", "\"$object\" is no tag that can be read"},
                    BadJson{R"({"$date": "2012-01-01", "x": 1})",
                            "the tag \"$date\" must be the only key of its object"},
                    BadJson{R"({"a": [1, {"$date": "soon"}]})", "/a/1: \"soon\" is no date"},
                    BadJson{R"({"$date": 5})", "expected text, found 5"},
                    BadJson{R"({"$data": "0g"})", "data: character 2 is no hexadecimal digit"},
                    BadJson{R"({"$single": true})", "expected a number, found true"},
                    BadJson{R"({"$single": 1e39})", "1e+39 does not fit a Single"},
                    BadJson{R"({"$uint32": -1})", "expected an integer of this kind, found -1"},
                    BadJson{R"({"$int64": 1.5})", "expected an integer of this kind, found 1.5"},
                    BadJson{R"({"$color": "red"})", "\"red\" is no colour"},
                    BadJson{R"({"$dictionary": [["a", 1], ["a", 2]]})", "the key \"a\" stands twice"},
                    BadJson{R"({"$dictionary": [[null, 1]]})", "a key of a Dictionary cannot be null"},
                    BadJson{R"({"$dictionary": [["a"]]})", "expected [key, value], found [\"a\"]"}));

TEST(Json, TooDeepANestingIsRefused)
{
    std::string deep = std::string(20000, '[') + std::string(20000, ']');
    Result result = plughost({"set", "variant", "Key", deep});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("nested deeper than 5000 levels"), std::string::npos);
}
