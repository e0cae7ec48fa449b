#include "tests/host/script/program.h"

#include "host/script/script.h"

namespace script_test {

Ran Programs::run(const std::string &program)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Ran ran;
    ran.isDone = script::runProgram("p", program);
    ran.output = testing::internal::GetCapturedStdout();
    ran.errors = testing::internal::GetCapturedStderr();
    return ran;
}

void Programs::expectOutputs(const std::vector<Sample> &samples)
{
    for (const Sample &sample : samples) {
        SCOPED_TRACE(sample.program);
        Ran ran = run(sample.program);
        EXPECT_TRUE(ran.isDone);
        EXPECT_EQ(ran.errors, "");
        EXPECT_EQ(ran.output, sample.expected);
    }
}

void Programs::expectValues(const std::vector<Sample> &samples)
{
    for (const Sample &sample : samples)
        expectOutputs({{"Print Str(" + sample.program + ")", sample.expected + "\n"}});
}

void Programs::expectErrors(const std::vector<Sample> &samples)
{
    for (const Sample &sample : samples) {
        SCOPED_TRACE(sample.program);
        Ran ran = run(sample.program);
        EXPECT_FALSE(ran.isDone);
        EXPECT_EQ(ran.output, "");
        EXPECT_EQ(ran.errors, sample.expected);
    }
}

} // namespace script_test
