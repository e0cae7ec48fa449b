// The examples print what stands beside them, as a person runs them and with every file of the plug-in.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "ground.h"
#include "tests/host/plughost/program.h"
#include "tests/support/plugin_under_test.h"
#include "tests/support/profiles.h"

namespace fs = std::filesystem;

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

std::string contentOf(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// Tells the host's version, which is the one thing about it that differs from host to host.
const std::string kSelfCheckFile = EXAMPLES "/self_check.xojo_script";

// A program, or a folder of programs.
std::set<std::string> examples()
{
    std::set<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(EXAMPLES))
        if (entry.path().extension() == ".xojo_script" || (entry.is_directory() && !entry.path().has_extension()))
            names.insert(entry.path().stem());
    return names;
}

// Its status stands behind it when it is not 0.
std::string outputOf(const std::string &command)
{
    FILE *pipe = popen(command.c_str(), "r");
    std::string output;
    char buffer[4096];
    while (size_t length = fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, length);
    int status = pclose(pipe);
    if (status != 0)
        output += "status " + std::to_string(WEXITSTATUS(status)) + "\n";
    return output;
}

// What run.sh prints, errors included.
std::string printed(const std::string &example, const std::string &options = "")
{
    // An example may load a library before all others, which AddressSanitizer would refuse in its builds.
    std::string command = "ASAN_OPTIONS=\"$ASAN_OPTIONS:verify_asan_link_order=0\" PLUGHOST_BUILD='" +
                          std::string(kBuildDir) + "' '" + EXAMPLES "/run.sh' " + example + " --plugin '" +
                          support::pluginUnderTest() + "' " + options + " 2>&1";
    return outputOf(command);
}

// What the self check prints, errors included, in a process that need not start.
std::string checked(const plughost_test::Words &options)
{
    using plughost_test::operator+;
    const plughost_test::Result ended = plughost_test::plughost(plughost_test::Words{"run", kSelfCheckFile} + options);
    return ended.output + ended.errors;
}

class Example : public testing::TestWithParam<std::string> {};

// The lines of the self check that say neither "ok" nor what came of something that is not known.
std::vector<std::string> complaints(const std::string &output)
{
    std::vector<std::string> lines;
    std::istringstream text(output);
    for (std::string line; std::getline(text, line);)
        if (line.rfind("ok   ", 0) != 0 && line.rfind("told ", 0) != 0)
            lines.push_back(line);
    return lines;
}

class SelfCheck : public testing::TestWithParam<support::ProfileFacts> {};

} // namespace

TEST_P(Example, PrintsWhatStandsBesideIt)
{
    EXPECT_EQ(printed(GetParam(), "--check-handles"), contentOf(fs::path(EXAMPLES) / (GetParam() + ".expected")));
}

TEST_P(Example, PrintsTheSameOnAnOldHost)
{
    const std::string wanted = contentOf(fs::path(EXAMPLES) / (GetParam() + ".expected"));
    EXPECT_EQ(printed(GetParam(), "--host 2011.4"),
              std::regex_replace(wanted, std::regex("host version 2013.03"), "host version 2011.4"));
}

INSTANTIATE_TEST_SUITE_P(Named, Example, testing::ValuesIn(examples()),
                         [](const testing::TestParamInfo<std::string> &info) { return info.param; });

TEST_P(SelfCheck, FindsEverythingRight)
{
    EXPECT_THAT(complaints(checked({"--check-handles", "--host", GetParam().name})),
                ElementsAre(HasSubstr("host version"), EndsWith(" checks, all ok")));
}

TEST_P(SelfCheck, FindsEverythingRightWithoutTheFamily)
{
    EXPECT_THAT(complaints(checked({"--no-family", "--host", GetParam().name})),
                ElementsAre(HasSubstr("host version"), HasSubstr("were not tried"), EndsWith(" checks, all ok")));
}

INSTANTIATE_TEST_SUITE_P(Hosts, SelfCheck, support::everyProfile(), support::profileTestName);

TEST(Examples, SelfCheckAsksTheMemberThatNeedsTheFamilyWhenItIsToldTo)
{
    const std::string output = plughost_test::printed(
        {"run", plughost_test::temporaryFile(
                    "with_family.xojo_script",
                    std::regex_replace(contentOf(kSelfCheckFile), std::regex("#If False"), "#If True"))});
    EXPECT_THAT(output, HasSubstr("\nok   _exception\n"));
    EXPECT_THAT(complaints(output), ElementsAre(HasSubstr("host version"), EndsWith(" checks, all ok")));
}

TEST(Examples, SelfCheckSaysWhatCameInstead)
{
    const std::vector<std::string> lines =
        complaints(checked({"--host", "2014.1", "--without", "RuntimeDirectReadStringArray"}));
    EXPECT_THAT(lines, Contains("NOT  setStringArrayValue, stringArrayForKey: wanted first|zweiter ü, got "));
    EXPECT_THAT(lines.back(), EndsWith(" NOT as wanted"));
}

TEST(Examples, SelfCheckGoesOnBehindAnException)
{
    const std::vector<std::string> lines = complaints(checked({"--without", "newMemoryBlock"}));
    EXPECT_THAT(lines, Contains(HasSubstr("NOT  Variants: wanted no exception, got an exception: Failed to allocate")));
    EXPECT_THAT(lines.back(), EndsWith(" NOT as wanted"));
}

TEST(Examples, SelfCheckLeavesNothingBehind)
{
    checked({});
    const std::string left = plughost_test::printed({"domains"}) + plughost_test::printed({"dump"});
    EXPECT_NE(left, "");
    EXPECT_EQ(left.find("SelfCheck"), std::string::npos) << left;
}

TEST(Examples, AreListedInTheirReadme)
{
    std::string readme = contentOf(fs::path(EXAMPLES) / "README.md");
    EXPECT_GE(examples().size(), 10u);
    for (const std::string &name : examples())
        EXPECT_NE(readme.find("[" + name + "](" + name), std::string::npos) << name;
}

TEST(Examples, OfAnUnknownNameAreRefused)
{
    EXPECT_EQ(printed("no_such_example").rfind("usage: run.sh NAME", 0), 0u);
    EXPECT_NE(printed("no_such_example").find("status 2\n"), std::string::npos);
}
