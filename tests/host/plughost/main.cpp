// Every case finds Foundation's texts started, which takes long and knows nothing of the process: no defaults yet, and
// no name of a program.
#include "host/cocoa_pool.h"
#include "tests/support/runner/runner.h"

int main(int count, char **arguments)
{
    return test_runner::run(count, arguments, [] { host::CocoaPool pool; });
}
