#include "tests/support/runner/runner.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

#include "host/isolation/configuration.h"
#include "host/isolation/folder.h"
#include "host/isolation/runner.h"
#include "tests/support/runner/new_process.h"

namespace test_runner {

namespace {

const char kUsage[] =
    "Options of this program, beside those of Google Test:\n"
    "  --no-fork          the selected cases in this process, one after the other: for a debugger or valgrind\n"
    "  --isolated         each case in a process of its own from its start, not a fork of one that has started Cocoa\n"
    "  --jobs=N           so many cases at a time [one for each processor]\n"
    "  --time-limit=N     seconds for a case [300]\n"
    "  --results=FILE     write \"passed NAME\" or \"failed NAME\" for each case to this file; its name goes before "
    "theirs\n";

struct Options {
    bool forks = true;
    bool isolated = false;
    unsigned jobs = std::thread::hardware_concurrency();
    int timeLimit = 300;
    std::string results;
};

// Empty when an argument is none of ours.
std::optional<Options> parsed(int count, char **arguments)
{
    Options options;
    // Every program of a run of tests at once.
    options.isolated = getenv("TESTS_ISOLATED") != nullptr;
    for (int i = 1; i < count; i++) {
        std::string argument = arguments[i], name = argument.substr(0, argument.find('='));
        std::string value = argument.substr(std::min(argument.size(), name.size() + 1));
        if (argument == "--no-fork")
            options.forks = false;
        else if (argument == "--isolated")
            options.isolated = true;
        else if (name == "--jobs" && atoi(value.c_str()) > 0)
            options.jobs = unsigned(atoi(value.c_str()));
        else if (name == "--time-limit" && atoi(value.c_str()) > 0)
            options.timeLimit = atoi(value.c_str());
        else if (name == "--results" && !value.empty())
            options.results = value;
        else
            return std::nullopt;
    }
    return options;
}

struct Selected {
    std::string name;
    bool isDisabled;
};

// Google Test decides which cases its options select when it is about to list or run them.
std::vector<Selected> selectedCases()
{
    fflush(stdout);
    int output = dup(STDOUT_FILENO), nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    GTEST_FLAG_SET(list_tests, true);
    (void)RUN_ALL_TESTS();
    GTEST_FLAG_SET(list_tests, false);
    fflush(stdout);
    dup2(output, STDOUT_FILENO);
    close(output);
    close(nowhere);

    std::vector<Selected> cases;
    const testing::UnitTest &all = *testing::UnitTest::GetInstance();
    for (int i = 0; i < all.total_test_suite_count(); i++) {
        const testing::TestSuite &suite = *all.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); j++) {
            const testing::TestInfo &info = *suite.GetTestInfo(j);
            if (info.is_reportable())
                cases.push_back({std::string(suite.name()) + "." + info.name(), !info.should_run()});
        }
    }
    return cases;
}

// A case that skips itself has not passed.
int runSelected()
{
    const testing::UnitTest &all = *testing::UnitTest::GetInstance();
    return RUN_ALL_TESTS() == 0 && all.successful_test_count() == all.test_to_run_count() ? 0 : 1;
}

std::string whyItFails(const std::string &name)
{
    GTEST_FLAG_SET(filter, name);
    return runSelected() == 0 ? "" : "an expectation does not hold, or the case is skipped";
}

// What people and tools/run-tests see of a run.
class Report {
public:
    explicit Report(const std::string &file)
    {
        if (file.empty())
            return;
        _prefix = std::filesystem::path(file).filename().string() + ".";
        std::filesystem::create_directories(std::filesystem::absolute(file).parent_path());
        _results.open(file);
    }

    void ended(const isolation::Outcome &outcome)
    {
        bool passed = outcome.why.empty();
        (passed ? _passed : _failed)++;
        if (_results.is_open())
            _results << (passed ? "passed " : "failed ") << _prefix << outcome.name << std::endl;
        if (!passed)
            printf("FAILED %s%s: %s\n%s\n", _prefix.c_str(), outcome.name.c_str(), outcome.why.c_str(),
                   outcome.output.c_str());
        fflush(stdout);
    }

    int finish() const
    {
        if (!_results.is_open()) // or whoever reads them counts
            printf("%d passed, %d failed\n", _passed, _failed);
        return _failed == 0 && _passed > 0 ? 0 : 1;
    }

private:
    std::string _prefix;
    std::ofstream _results;
    int _passed = 0, _failed = 0;
};

int runForked(const Options &options, void (*start)())
{
    Report report(options.results);
    std::vector<isolation::Batch> batches;
    for (const Selected &each : selectedCases()) {
        if (each.isDisabled) {
            report.ended({each.name, "it is disabled", ""});
            continue;
        }
        batches.push_back({{each.name},
                           [&options, name = each.name](size_t, bool) {
                               isolation::configurePrograms();
                               return options.isolated ? whyItFailsFromTheStart(name) : whyItFails(name);
                           },
                           options.timeLimit});
    }
    if (!options.isolated)
        start();
    isolation::run(batches, {options.jobs, true, true},
                   [&](const isolation::Outcome &outcome) { report.ended(outcome); });
    return report.finish();
}

} // namespace

int run(int count, char **arguments, void (*start)())
{
    GTEST_FLAG_SET(brief, true); // says nothing of cases that pass; unless the arguments want it
    testing::InitGoogleMock(&count, arguments);
    std::optional<Options> options = parsed(count, arguments);
    if (!options) {
        fputs(kUsage, stderr);
        return 2;
    }
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    // The environment of run-env has a defaults folder for this process alone.
    bool isPrepared = getenv("GNUSTEP_CONFIG_FILE") && !isolation::keepsDefaultsInCurrentFolder();
    if (!options->forks && isPrepared)
        return runSelected();
    isolation::keepDefaultsInCurrentFolder();
    if (options->forks)
        return runForked(*options, start);
    isolation::Folder folder;
    folder.enter();
    isolation::configurePrograms();
    return runSelected();
}

} // namespace test_runner
