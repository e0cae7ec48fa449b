// For tests of tools, of programs that run as processes of their own, and of how Cocoa starts.
#include "tests/support/runner/runner.h"

int main(int count, char **arguments)
{
    return test_runner::run(count, arguments, [] {});
}
