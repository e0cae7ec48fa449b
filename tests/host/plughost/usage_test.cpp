// Help, version and wrong usage.
#include <gtest/gtest.h>

#include "ground.h"
#include "tests/host/plughost/program.h"

using namespace plughost_test;

static const char *const kCommands[] = {"describe", "get",    "set",  "remove", "call", "domains", "suite",
                                        "register", "forced", "dump", "load",   "tour", "run"};

TEST(Help, NamesEveryCommand)
{
    std::string help = printed({"--help"});
    for (const char *command : kCommands)
        EXPECT_NE(help.find(std::string("\n  ") + command + " "), std::string::npos) << command;
}

TEST(Help, IsThereForEveryCommand)
{
    for (const char *command : kCommands) {
        std::string help = printed({command, "--help"});
        EXPECT_NE(help.find("Usage: plughost"), std::string::npos) << command;
        EXPECT_NE(help.find(command), std::string::npos) << command;
    }
}

TEST(Version, IsThatOfTheProject)
{
    EXPECT_EQ(printed({"--version"}), std::string("plughost ") + kVersion);
}

class WrongUsage : public testing::TestWithParam<Words> {};

TEST_P(WrongUsage, HasStatusTwoAndSaysWhy)
{
    Result result = plughost(GetParam());
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors.rfind("plughost: ", 0), 0u) << result.errors;
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, WrongUsage,
                         testing::Values(Words{"run"}, Words{"fly"}, Words{"get"}, Words{"get", "integer"},
                                         Words{"get", "number", "Key"}, Words{"get", "integer", "Key", "more"},
                                         Words{"set", "integer", "Key"}, Words{"get", "integer", "Key", "--fast"},
                                         Words{"describe", "--host", "new"}, Words{"describe", "--host", "-1"},
                                         Words{"describe", "--host", "1"}, Words{"describe", "--host", "2099.1"},
                                         Words{"describe", "--without", "REALFly"},
                                         Words{"describe", "--domain", "a/b"}, Words{"describe", "--domain", ""},
                                         Words{"suite"}, Words{"suite", "add"},
                                         Words{"describe", "--defaults-dir", "/proc/nowhere"}, Words{"tour"},
                                         Words{"tour", "basics"}, Words{"tour", "everything"}));

TEST(WrongUsage, SaysWhatMayHaveBeenMeantAndWhatIsKnown)
{
    const struct {
        Words words;
        const char *message;
    } rows[] = {
        {{"gett", "integer", "Key"}, "there is no command \"gett\"; did you mean \"get\"?"},
        {{"validat"}, "there is no command \"validat\"; did you mean \"validate\"?"},
        {{"fly"},
         "there is no command \"fly\"; commands are describe, get, set, remove, call, domains, suite, register, run, "
         "forced, dump, load, tour, validate"},
        {{"suite", "Name"}, "there is no command \"Name\"; commands are add, remove"},
        {{"suite", "remov", "x"}, "there is no command \"remov\"; did you mean \"remove\"?"},
        {{"--hots", "2009", "describe"}, "there is no option \"--hots\"; did you mean \"--host\"?"},
        {{"get", "integer", "Key", "--jsn"}, "there is no option \"--jsn\"; did you mean \"--json\"?"},
        {{"describe", "--host", "2099.1"},
         "--host: there is no version \"2099.1\" of the host; known are 2009, 2011.4, 2012.0, 2012.2, 2013.0, 2013.02, "
         "2013.03, 2014.1, and other numbers from 2009 to 2014.x"},
    };
    for (const auto &row : rows) {
        Result result = plughost(row.words);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, std::string("plughost: ") + row.message + "\n");
    }
}

TEST(WrongUsage, IsAnArgumentThatIsNoText)
{
    for (const char *bytes : {"\xFF", "a\x80", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
        Result result = startedPlughost({"set", "string", "Key", bytes}); // behind --plugin FILE
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.errors, "plughost: argument 6 is no UTF-8 text\n");
    }
    EXPECT_EQ(printed({"set", "string", "Key", "\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFD\U00010000\U0010FFFF"}), "");
}

TEST(WrongPlugin, NamesTheFileThatRegistersNoClass)
{
    std::string family = std::string(kBuildDir) + "/Family.so";
    Result result = plughostWith(family, {"describe"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "plughost: " + family + ": it registers no class NSUserDefaultsKTZ\n");
}

TEST(WrongPlugin, IsOneLineAndStatusOne)
{
    for (const std::string &file : {std::string("/nowhere/Plugin.so"), std::string("/etc"),
                                    temporaryFile("empty.so", ""), temporaryFile("text.dylib", "no library")}) {
        Result result = plughostWith(file, {"describe"});
        EXPECT_EQ(result.status, 1) << file;
        EXPECT_EQ(result.errors.rfind("plughost: ", 0), 0u) << result.errors;
        EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    }
}

TEST(Usage, ShortensMessagesOfSeveralKilobytes)
{
    std::string deep;
    for (int i = 0; i < 2500; i++)
        deep += "{\"key\":";
    Result result = plughost({"set", "dictionary", "D", deep});
    EXPECT_NE(result.status, 0);
    EXPECT_LT(result.errors.size(), 1200u);
    result = plughost({"get", "string", "K", "--host", std::string(10000, 'x')});
    EXPECT_NE(result.errors.find("x … (9,"), std::string::npos) << result.errors;
    EXPECT_LT(result.errors.size(), 1200u);
}
