// For tests of what runs on Cocoa: every case finds Foundation and AppKit started, and nothing else.
#include "host/isolation/cocoa.h"
#include "tests/support/runner/runner.h"

int main(int count, char **arguments)
{
    return test_runner::run(count, arguments, isolation::startCocoa);
}
