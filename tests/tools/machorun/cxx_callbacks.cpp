#include "tests/tools/machorun/callbacks.h"

#include <new>

void throwBadAlloc()
{
    throw std::bad_alloc();
}

void throwInt()
{
    throw 7;
}

void throwDouble()
{
    throw 0.5;
}
