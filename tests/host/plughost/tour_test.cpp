#include <gtest/gtest.h>

#include "tests/host/plughost/program.h"

using namespace plughost_test;

// Each member on each host is the self check's among the examples.
TEST(Tour, IsAsExpectedOnTheOldestAndOnTheNewestHost)
{
    for (const std::string part : {"basics", "values"}) {
        for (const std::string host : {"2009", "2014.1"}) {
            Result result = plughost(
                {"tour", part, "--host", host, "--defaults-dir", temporaryFolder(part + host), "--check-handles"});
            EXPECT_EQ(result.status, 0) << host << "\n" << result.output;
            EXPECT_EQ(result.errors, "");
            EXPECT_EQ(result.output.find("***"), std::string::npos) << result.output;
        }
    }
}

TEST(Tour, FailsWhenAResultIsNotAsExpected)
{
    std::string folder = temporaryFolder("filled");
    printed({"set", "integer", "Missing", "1", "--domain", "Tour", "--defaults-dir", folder});
    Result result = plughost({"tour", "basics", "--defaults-dir", folder});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("d.integerForKey(\"Missing\")"), std::string::npos);
    EXPECT_NE(result.output.find("*** expected: 0"), std::string::npos) << result.output;
    EXPECT_EQ(result.errors, "plughost: lines of the tour that are not as expected: 1\n");
}
