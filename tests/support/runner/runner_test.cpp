// What becomes of the cases in samples.mm, in forks and in processes of their own.
#include <array>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/wait.h>

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

struct Ended {
    int status;
    std::string output;
};

class Runner : public testing::TestWithParam<std::string> {
protected:
    static Ended run(const std::string &options)
    {
        std::string output;
        FILE *pipe = popen((RUNNER_SAMPLES " " + GetParam() + " " + options + " 2>&1").c_str(), "r");
        std::array<char, 4096> part;
        while (size_t count = fread(part.data(), 1, part.size(), pipe))
            output.append(part.data(), count);
        int status = pclose(pipe);
        return {WEXITSTATUS(status), output};
    }
};

INSTANTIATE_TEST_SUITE_P(Cases, Runner, testing::Values("--jobs=2", "--isolated"),
                         [](const auto &info) { return info.index == 0 ? "Forked" : "Isolated"; });

} // namespace

TEST_P(Runner, CountsWhatPassesAndIsSilentOtherwise)
{
    Ended ended = run("--gtest_filter='Passes.*'");
    EXPECT_EQ(ended.output, "5 passed, 0 failed\n");
    EXPECT_EQ(ended.status, 0);
}

TEST_P(Runner, NamesEveryCaseThatFailsAndSaysWhy)
{
    Ended ended = run("--gtest_filter='Fails.*'");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, EndsWith("\n0 passed, 6 failed\n"));
    EXPECT_THAT(ended.output, HasSubstr("FAILED Fails.ByAnExpectation: "));
    EXPECT_THAT(ended.output, HasSubstr("what the case has printed\n"));
    EXPECT_THAT(ended.output, HasSubstr("FAILED Fails.ByACrash: the process was ended by signal 11"));
    EXPECT_THAT(ended.output, HasSubstr("FAILED Fails.InAProcessFromItsStart: "));
    EXPECT_THAT(ended.output, HasSubstr("FAILED Fails.DISABLED_BecauseItDoesNotRun: it is disabled"));
    for (const char *name : {"ByEndingTheProcess", "BySkippingItself"})
        EXPECT_THAT(ended.output, HasSubstr(std::string("FAILED Fails.") + name + ": "));
}

TEST_P(Runner, EndsACaseThatHangsAndGoesOn)
{
    Ended ended = run("--gtest_filter='Hangs.*:Passes.InAFreshProcess' --time-limit=2");
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("FAILED Hangs.ForEver: hangs: no end after 2 s"));
    EXPECT_THAT(ended.output, EndsWith("1 passed, 1 failed\n"));
}

TEST_P(Runner, WritesTheOutcomeOfEachCaseToAFile)
{
    run("--gtest_filter='*InAFreshProcess:*ByACrash' --jobs=1 --results=told/so.samples");
    std::ifstream file("told/so.samples");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}),
              "passed so.samples.Passes.InAFreshProcess\nfailed so.samples.Fails.ByACrash\n");
}

TEST_P(Runner, RunsInTheProgramItselfWhenAsked)
{
    Ended ended = run("--no-fork --gtest_filter='Passes.*FreshProcess'");
    EXPECT_EQ(ended.status, 1) << "the second case sees the first one";
    EXPECT_THAT(ended.output, Not(HasSubstr("passed, ")));
}

TEST_P(Runner, WithoutACaseHasFailed)
{
    Ended ended = run("--gtest_filter=Nothing");
    EXPECT_EQ(ended.output, "0 passed, 0 failed\n");
    EXPECT_EQ(ended.status, 1);
}

TEST_P(Runner, RefusesAnOptionThatItDoesNotKnow)
{
    Ended ended = run("--no-such-option");
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.output, HasSubstr("--no-fork"));
}
