#include "tests/platform/support.h"

#import <Foundation/Foundation.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

bool inNewProcess(const Environment &environment)
{
    if (getenv("PLATFORM_TEST_AGAIN"))
        return true;
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    std::string filter = std::string("--gtest_filter=") + test->test_suite_name() + "." + test->name();
    pid_t child = fork();
    if (child == 0) {
        setenv("PLATFORM_TEST_AGAIN", "1", 1);
        for (const auto &[name, value] : environment)
            setenv(name.c_str(), value.c_str(), 1);
        execl("/proc/self/exe", "platform_test", filter.c_str(), nullptr);
        _exit(127);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "in the new process";
    return false;
}

std::string outputOf(const std::string &command)
{
    std::string output;
    FILE *pipe = popen(command.c_str(), "r");
    for (int c; (c = getc(pipe)) != EOF;)
        output.push_back(c);
    EXPECT_EQ(0, pclose(pipe)) << command;
    return output;
}

TemporaryFolder::TemporaryFolder()
{
    char name[] = "/tmp/platform-test-XXXXXX";
    path = std::filesystem::canonical(mkdtemp(name));
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

void writeFile(const std::string &path, const std::string &contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}

std::string contentsOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

PlatformTest::PlatformTest() : pool([[NSAutoreleasePool alloc] init]) {}

PlatformTest::~PlatformTest()
{
    [(NSAutoreleasePool *)pool release];
}
