#include "tests/platform/support.h"

#import <Foundation/Foundation.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>

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
