// The validator as a program: what it prints, and that it finds faults.
#include "ground.h"
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

struct Ended {
    int status;
    std::string output;
};

Ended runLine(const std::string &line)
{
    FILE *pipe = popen((line + " 2>&1").c_str(), "r");
    std::string output;
    char buffer[4096];
    while (size_t count = fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, count);
    int status = pclose(pipe);
    return {WEXITSTATUS(status), output};
}

Ended validate(const std::string &options)
{
    return runLine(std::string(PLUGHOST) + " validate --level 1 " + options);
}

Ended validateBroken(const std::string &options)
{
    return validate("--plugin '" BROKEN_PLUGIN "' " + options);
}

std::vector<std::string> lines(const std::string &text)
{
    std::vector<std::string> all;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        all.push_back(line);
    return all;
}

const char kMember[] = "missing/nothing/2013.03/family/hidden/";

std::string only(const std::string &member)
{
    return "--only " + (kMember + member);
}

// The line that the validator prints for repeating a failure.
std::string reproducingLine(const std::string &output)
{
    for (const std::string &line : lines(output))
        if (line.find(" validate --plugin ") != std::string::npos)
            return line;
    return "";
}

std::string temporaryFile(const std::string &name)
{
    return ::testing::TempDir() + name + "-" + std::to_string(getpid());
}

} // namespace

TEST(Validate, ListsTheNamesOfEveryGroupAndRunsNone)
{
    Ended ended = validate("--list");
    EXPECT_EQ(ended.status, 0);
    for (const char *group :
         {"missing/", "raises/", "failures/", "arguments/", "state/", "reentry/", "load/", "persistence/"})
        EXPECT_THAT("\n" + ended.output, HasSubstr(std::string("\n") + group));
    std::vector<std::string> names = lines(ended.output);
    EXPECT_GT(names.size(), 1000u);
    EXPECT_THAT(ended.output, Not(HasSubstr("passed")));
}

TEST(Validate, RunsTheCasesOfAName)
{
    Ended ended = validate(only("synchronize"));
    EXPECT_EQ(ended.status, 0) << ended.output;
    EXPECT_EQ(lines(ended.output).back(), "1 passed, 0 failed");
}

TEST(Validate, RefusesANameThatNoCaseHas)
{
    Ended ended = validate("--only nonsense/");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("no case whose name begins with \"nonsense/\""));
}

TEST(Validate, RefusesAPluginThatIsNotThere)
{
    Ended ended = validate("--plugin /no/such/file " + only("synchronize"));
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("/no/such/file: there is no such file"));
}

// Instead of every case that fails.
TEST(Validate, SaysInOneLineThatAFileIsNoPlugin)
{
    std::string text = temporaryFile("text.so");
    std::ofstream(text) << "no library";
    const std::pair<std::string, const char *> rows[] = {
        {text, "cannot be loaded: "},
        {"/etc", "cannot be loaded: "},
        {kBuildDir + std::string("/libplatform-gnustep.so"), "no plug-in, it exports no REALPluginMain"},
        {kBuildDir + std::string("/Family.so"), "it registers no class NSUserDefaultsKTZ"},
        {CRASHING_PLUGIN, "the process was ended by signal 11"},
    };
    for (const auto &[file, why] : rows) {
        Ended ended = validate("--plugin '" + file + "'");
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(lines(ended.output).size(), 1u) << ended.output;
        EXPECT_THAT(ended.output, HasSubstr(file));
        EXPECT_THAT(ended.output, HasSubstr(why));
    }
    unlink(text.c_str());
}

TEST(Validate, RepeatsAndShuffles)
{
    size_t once = lines(validate("--list " + only("")).output).size();
    Ended ended = validate("--repeat 2 --shuffle --seed 3 --jobs 1 " + only(""));
    EXPECT_EQ(ended.status, 0) << ended.output;
    EXPECT_EQ(lines(ended.output).back(), std::to_string(2 * once) + " passed, 0 failed");
}

TEST(Validate, ReportsACrashAsOneFailedCaseAndGoesOn)
{
    Ended ended = validateBroken(only("integerForKey") + " --jobs 1");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("FAILED " + (kMember + std::string("integerForKey\n"))));
    EXPECT_THAT(ended.output, HasSubstr("the process was ended by signal 11"));
    EXPECT_EQ(lines(ended.output).back(), "1 passed, 1 failed"); // the assigned form is whole
}

TEST(Validate, EndsACaseThatHangs)
{
    Ended ended = validateBroken(only("boolForKey") + " --time-limit 2");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("hangs: no end after 2 s"));
    EXPECT_EQ(lines(ended.output).back(), "1 passed, 1 failed");
}

TEST(Validate, SeesAWrongResult)
{
    Ended ended = validateBroken(only("floatForKey"));
    EXPECT_THAT(ended.output, HasSubstr("messages to the defaults object: is [], and should be [floatForKey:\"Key\"]"));
    EXPECT_EQ(ended.status, 1);
}

TEST(Validate, SeesAMessageThatIsNotSent)
{
    Ended ended = validateBroken(only("removeObjectForKey"));
    EXPECT_THAT(ended.output, HasSubstr("is [], and should be [removeObjectForKey:\"Key\"]"));
    EXPECT_EQ(lines(ended.output).back(), "0 passed, 1 failed");
}

TEST(Validate, SeesALockTooMany)
{
    Ended ended = validateBroken(only("stringForKey"));
    EXPECT_THAT(ended.output, HasSubstr("locks: 1 too many and 0 too few"));
    EXPECT_EQ(ended.status, 1);
}

TEST(Validate, PrintsALineThatReproducesTheFailure)
{
    Ended first = validateBroken(only("removeObjectForKey"));
    std::string line = reproducingLine(first.output);
    ASSERT_FALSE(line.empty()) << first.output;
    Ended second = runLine(line);
    EXPECT_EQ(second.status, 1);
    EXPECT_EQ(lines(second.output).back(), "0 passed, 1 failed") << second.output;
}

TEST(Validate, WritesTheOutcomeAsJson)
{
    std::string file = temporaryFile("outcome.json");
    validateBroken(only("integerForKey") + " --json '" + file + "'");
    nlohmann::json outcome = nlohmann::json::parse(std::ifstream(file));
    unlink(file.c_str());
    EXPECT_EQ(outcome["passed"], 1);
    EXPECT_EQ(outcome["failed"], 1);
    EXPECT_EQ(outcome["groups"]["missing"]["failed"], 1);
    EXPECT_EQ(outcome["failures"][0]["name"], kMember + std::string("integerForKey"));
    EXPECT_THAT(outcome["failures"][0]["why"].get<std::string>(), HasSubstr("signal 11"));
}

TEST(Validate, RefusesLevelsThatAreNone)
{
    EXPECT_EQ(runLine(std::string(PLUGHOST) + " validate --level 11").status, 2);
    EXPECT_EQ(runLine(std::string(PLUGHOST) + " validate --level 0").status, 2);
}
