// Cases whose ends are known, for runner_test.cpp.
#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <unistd.h>

#include "tests/support/runner/new_process.h"

namespace {

int casesBefore = 0;

TEST(Passes, InAFreshProcess)
{
    EXPECT_EQ(casesBefore++, 0);
}
TEST(Passes, InAnotherFreshProcess)
{
    EXPECT_EQ(casesBefore++, 0);
}

// Each finds defaults that nobody has written to.
void findNoneAndStore()
{
    @autoreleasepool {
        NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
        EXPECT_EQ([defaults objectForKey:@"Key"], nil);
        [defaults setObject:@"value" forKey:@"Key"];
        EXPECT_TRUE([defaults synchronize]);
    }
}
TEST(Passes, WithDefaultsOfItsOwn)
{
    findNoneAndStore();
}
TEST(Passes, WithDefaultsOfItsOwn2)
{
    findNoneAndStore();
}
TEST(Passes, InAProcessFromItsStart)
{
    if (!test_runner::inNewProcess({{"SAMPLE", "seen"}}))
        return;
    EXPECT_STREQ(getenv("SAMPLE"), "seen");
}

TEST(Fails, ByAnExpectation)
{
    printf("what the case has printed\n");
    EXPECT_EQ(1, 2);
}
TEST(Fails, ByACrash)
{
    raise(SIGSEGV);
}
TEST(Fails, ByEndingTheProcess)
{
    exit(0);
}
TEST(Fails, InAProcessFromItsStart)
{
    if (test_runner::inNewProcess())
        raise(SIGSEGV);
}
TEST(Fails, BySkippingItself)
{
    GTEST_SKIP();
}
TEST(Fails, DISABLED_BecauseItDoesNotRun) {}

TEST(Hangs, ForEver)
{
    for (;;)
        pause();
}

} // namespace
