#include "tests/support/allocations.h"

static Allocations *listener;
static bool failing;
static bool noting; // the lists allocate too

extern "C" void *__real_malloc(size_t size);
extern "C" void *__real_calloc(size_t count, size_t size);

static void note(std::vector<size_t> Allocations::*list, size_t size)
{
    if (!listener || noting)
        return;
    noting = true;
    (listener->*list).push_back(size);
    noting = false;
}

extern "C" void *__wrap_malloc(size_t size)
{
    note(&Allocations::mallocs, size);
    return __real_malloc(size);
}

extern "C" void *__wrap_calloc(size_t count, size_t size)
{
    note(&Allocations::callocs, count * size);
    return failing ? nullptr : __real_calloc(count, size);
}

Allocations::Allocations()
{
    listener = this;
}

Allocations::~Allocations()
{
    listener = nullptr;
    failing = false;
}

void Allocations::failCallocs()
{
    failing = true;
}
