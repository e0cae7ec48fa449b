// C++ exceptions, the image's own and the test program's.
#include "tests/tools/machorun/image/exported.h"

#include <new>

extern "C" void passThroughTry(Callback callback);

namespace {

// Compared by the runtime through their names, so they must have some.
struct Failure {
    int code;
    virtual ~Failure() {}
};
struct SpecialFailure : Failure {};

__attribute__((noinline)) void throwSpecial(int code)
{
    SpecialFailure failure;
    failure.code = code;
    throw failure;
}

} // namespace

enum { kNothing, kBadAlloc, kInt, kOther };

EXPORTED int catchesCxx(Callback callback, int *destroyed)
{
    try {
        Guard guard(destroyed);
        callback();
    } catch (const std::bad_alloc &) {
        return kBadAlloc;
    } catch (int) {
        return kInt;
    } catch (...) {
        return kOther;
    }
    return kNothing;
}

EXPORTED int catchesOwnByBase(int code)
{
    try {
        throwSpecial(code);
    } catch (const Failure &failure) {
        return failure.code;
    }
    return 0;
}

EXPORTED int catchesBehindTry(Callback callback)
{
    try {
        passThroughTry(callback);
    } catch (const std::bad_alloc &) {
        return kBadAlloc;
    }
    return kNothing;
}

// `catch (...)` sees no Objective-C exception: the runtime's longjmp goes past it.
EXPORTED int catchesAll(Callback callback)
{
    try {
        callback();
    } catch (...) {
        return kOther;
    }
    return kNothing;
}

EXPORTED int allocates(unsigned count)
{
    int *numbers = new int[count];
    numbers[count - 1] = 17;
    int last = numbers[count - 1];
    delete[] numbers;
    return last;
}
