// The database that plughost fills is the system's own: its defaults tool reads and writes the same.
#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

#include "tests/host/plughost/program.h"

using namespace plughost_test;

TEST(Database, TextIsPrintedByTheDefaultsTool)
{
    printed({"set", "string", "Greeting", "grüß dich 👋"});
    Result result = defaultsTool({"read", "plughost", "Greeting"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "plughost Greeting 'grüß dich 👋'\n");
}

TEST(Database, WhatTheDefaultsToolWroteIsPrinted)
{
    ASSERT_EQ(defaultsTool({"write", "plughost", "Visitor", "Ada Lovelace"}).status, 0);
    EXPECT_EQ(printed({"get", "string", "Visitor"}), "Ada Lovelace");
    ASSERT_EQ(defaultsTool({"write", "plughost", "List", "(one, (two, three), {a = b;}, <00ff>)"}).status, 0);
    EXPECT_EQ(printed({"get", "variant", "List"}), R"(["one",["two","three"],{"a":"b"},{"$data":"00ff"}])");
}

// Every kind of value that the database holds, in two applications and what they share.
static const char kEverything[] = R"({
  "Bool": true, "Int": -5, "Int64": 1234567890123, "Double": 0.1, "Whole": {"$double": 4}, "Single": {"$single": 0.1},
  "NotANumber": {"$double": "NaN"}, "Far": {"$single": "-Infinity"},
  "Text": "grüß dich 👋", "Empty": "", "Date": {"$date": "2012-02-29T10:20:30"}, "Data": {"$data": "00ff10"},
  "List": [1, "two", [], {}, {"$date": "1999-12-31T23:59:59"}], "Dictionary": {"a": {"b": {"c": false}}},
  "Dollars": {"$dictionary": [["$data", "no data"]]}
})";

static const Words kFirst = {"--domain", "com.example.first"};

// GNUstep's configuration names the defaults folder.
static std::string withoutConfiguration(const std::string &dump)
{
    std::istringstream stream(dump);
    std::string rest;
    for (std::string line; std::getline(stream, line);)
        if (line.rfind("  \"GNUSTEP_USER_DEFAULTS_DIR\": ", 0) != 0)
            rest += line + "\n";
    return rest;
}

TEST(Dump, FedBackGivesTheSameDatabase)
{
    Words here = kFirst + Words{"--defaults-dir", temporaryFolder("here")};
    Words there = kFirst + Words{"--defaults-dir", temporaryFolder("there")};
    Result loaded = plughost(Words{"load", "-"} + here, kEverything);
    ASSERT_EQ(loaded.status, 0) << loaded.errors;
    EXPECT_EQ(loaded.output, "15 of 15 values stored\n");
    printed(Words{"set", "file", "Log", "/etc/hosts"} + here);
    printed(Words{"set", "url", "Home", "http://example.com/"} + here);

    std::string dump = printed(Words{"dump"} + here);
    loaded = plughost(Words{"load", "-"} + there, dump);
    ASSERT_EQ(loaded.status, 0) << loaded.errors;

    EXPECT_EQ(withoutConfiguration(printed(Words{"dump"} + there)), withoutConfiguration(dump));
    EXPECT_EQ(printed(Words{"dump", "com.example.first"} + there), printed(Words{"dump", "com.example.first"} + here));
    EXPECT_EQ(printed(Words{"get", "url", "Home"} + there), "http://example.com/");
    EXPECT_EQ(printed(Words{"get", "file", "Log"} + there), "/etc/hosts");
}

// The tool prints a domain's keys in no order.
static std::vector<std::string> sortedLines(const std::string &text, const std::string &domain)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.rfind(domain, 0) == 0 ? line.substr(domain.size()) : line);
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(Dump, ByTheDefaultsToolIsTheSameAfterFeedingBackToo)
{
    Words everything = Words{"load", temporaryFile("everything.json", kEverything)};
    ASSERT_EQ(plughost(everything + Words{"--domain", "First"}).status, 0);
    std::string first = printed({"dump", "First"});
    ASSERT_EQ(plughost({"load", "-", "--into", "Second"}, first).status, 0);
    std::string firstText = defaultsTool({"read", "First"}).output;
    std::string secondText = defaultsTool({"read", "Second"}).output;
    ASSERT_EQ(firstText.rfind("First ", 0), 0u);
    EXPECT_EQ(sortedLines(firstText, "First "), sortedLines(secondText, "Second "));
}

TEST(Dump, OfAnUnknownDomainIsBadInput)
{
    Result result = plughost({"dump", "com.example.none"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "plughost: there is no persistent domain \"com.example.none\"\n");
}

TEST(Load, LeavesWhatTheSystemProvidesWhereItIs)
{
    printed({"set", "integer", "Runs", "5"});
    std::string dump = printed({"dump"});
    Result result = plughost({"load", "-"}, dump);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output.rfind("0 of ", 0), 0u) << result.output;
    EXPECT_EQ(printed({"dump", "plughost"}), "{\n  \"Runs\": 5\n}");
}

TEST(Load, StoresNothingWhenAnyValueCannotBe)
{
    const char *const files[] = {
        R"({"A": 1, "B": {"$date": "soon"}})",                  // refused before anything is stored
        R"({"A": 1, "B": {"$dictionary": [[1, 2]]}, "C": 3})"}; // refused by Foundation in the middle
    for (const char *file : files) {
        Result result = plughost({"load", temporaryFile("bad.json", file)});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(printed({"get", "variant", "A"}), "nil");
        EXPECT_EQ(printed({"get", "variant", "C"}), "nil");
    }
}
