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
                                         Words{"describe", "--without", "REALFly"},
                                         Words{"describe", "--domain", "a/b"}, Words{"describe", "--domain", ""},
                                         Words{"suite"}, Words{"suite", "add"},
                                         Words{"describe", "--defaults-dir", "/proc/nowhere"}, Words{"tour"},
                                         Words{"tour", "basics"}, Words{"tour", "everything"}));

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
