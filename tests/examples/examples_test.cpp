// The examples print what stands beside them, as a person runs them and with every file of the plug-in.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/wait.h>

#include "ground.h"
#include "tests/support/plugin_under_test.h"

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path &path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// A program, or a folder of programs.
std::set<std::string> examples()
{
    std::set<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(EXAMPLES))
        if (entry.path().extension() == ".xojo_script" || (entry.is_directory() && !entry.path().has_extension()))
            names.insert(entry.path().stem());
    return names;
}

// What run.sh prints, errors included; its status stands behind it when it is not 0.
std::string printed(const std::string &example, const std::string &options = "")
{
    // An example may load a library before all others, which AddressSanitizer would refuse in its builds.
    std::string command = "ASAN_OPTIONS=\"$ASAN_OPTIONS:verify_asan_link_order=0\" PLUGHOST_BUILD='" +
                          std::string(kBuildDir) + "' '" + EXAMPLES "/run.sh' " + example + " --plugin '" +
                          support::pluginUnderTest() + "' " + options + " 2>&1";
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

class Example : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(Example, PrintsWhatStandsBesideIt)
{
    EXPECT_EQ(printed(GetParam(), "--check-handles"), contentOf(fs::path(EXAMPLES) / (GetParam() + ".expected")));
}

TEST_P(Example, PrintsTheSameOnAnOldHost)
{
    EXPECT_EQ(printed(GetParam(), "--host 2011.4"), contentOf(fs::path(EXAMPLES) / (GetParam() + ".expected")));
}

INSTANTIATE_TEST_SUITE_P(Named, Example, testing::ValuesIn(examples()),
                         [](const testing::TestParamInfo<std::string> &info) { return info.param; });

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
