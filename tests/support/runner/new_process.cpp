#include "tests/support/runner/new_process.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/isolation/runner.h"

namespace test_runner {

static const char kNewProcess[] = "TEST_IN_NEW_PROCESS";

std::string whyItFailsFromTheStart(const std::string &name, const Environment &environment)
{
    std::string filter = "--gtest_filter=" + name;
    // There from the beginning of the case to its end, to tell a case that ends its process.
    std::filesystem::path unfinished = std::filesystem::current_path() / ("unfinished-" + std::to_string(getpid()));
    pid_t child = fork();
    if (child == 0) {
        for (const auto &[variable, value] : environment)
            setenv(variable.c_str(), value.c_str(), 1);
        setenv("TEST_PREMATURE_EXIT_FILE", unfinished.c_str(), 1);
        // Under the same name, which is the name of the process's defaults, too.
        execl("/proc/self/exe", program_invocation_name, "--no-fork", filter.c_str(), nullptr);
        _exit(127);
    }
    int status = -1;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        ;
    std::string why = isolation::abnormalEnd(status);
    return why.empty() && std::filesystem::exists(unfinished) ? "the process ended by itself with status 0" : why;
}

bool isNewProcess()
{
    return getenv(kNewProcess) != nullptr;
}

bool inNewProcess(const Environment &environment)
{
    if (isNewProcess())
        return true;
    const testing::TestInfo &test = *testing::UnitTest::GetInstance()->current_test_info();
    Environment all = environment;
    all[kNewProcess] = "1";
    EXPECT_EQ(whyItFailsFromTheStart(std::string(test.test_suite_name()) + "." + test.name(), all), "")
        << "in the new process";
    return false;
}

} // namespace test_runner
