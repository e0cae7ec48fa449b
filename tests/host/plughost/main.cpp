#include "tests/host/plughost/program.h"
#include "tests/support/runner/runner.h"

int main(int count, char **arguments)
{
    return test_runner::run(count, arguments, plughost_test::startApplication);
}
