#include "host/isolation/cocoa.h"
#include "tests/support/loaded_ahead.h"
#include "tests/support/runner/runner.h"

int main(int count, char **arguments)
{
    return test_runner::run(count, arguments, [] {
        isolation::startCocoa();
        support::loadFilesAhead();
    });
}
