#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/runner/new_process.h"

using test_runner::inNewProcess;

// What a command of a shell prints; a test fails when its status is not 0.
std::string outputOf(const std::string &command);

// A folder that is removed with all its contents at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    std::string operator/(const std::string &name) const { return path + "/" + name; }
    std::string path;
};

void writeFile(const std::string &path, const std::string &contents = "");
std::string contentsOf(const std::string &path);

// An autorelease pool around each test.
class PlatformTest : public testing::Test {
protected:
    PlatformTest();
    ~PlatformTest() override;

private:
    void *pool;
};

#ifdef __OBJC__
#import <Foundation/Foundation.h>

// The name of the exception that a body raises, "nothing" when it raises none.
template <typename Body>
std::string raisedBy(Body body)
{
    @try {
        body();
    } @catch (NSException *exception) {
        return [[exception name] UTF8String];
    }
    return "nothing";
}
#endif
