// malloc and its kin for the whole process: the C library's own, with an account. The program that holds this file
// comes first in the search for symbols, so every library calls these.
#include "bench/heap_account.h"

#include <algorithm>
#include <iterator>
#include <malloc.h>

extern "C" void *__libc_malloc(size_t size);
extern "C" void *__libc_calloc(size_t count, size_t size);
extern "C" void *__libc_realloc(void *block, size_t size);
extern "C" void __libc_free(void *block);

namespace bench {

static HeapAccount account;
static CodeRange ownCode;

// The plug-in has few blocks at a time.
static void *ownBlocks[256];

void setOwnCode(const CodeRange &code)
{
    ownCode = code;
}

void resetHeapPeaks()
{
    account.peak = account.live;
    account.ownPeak = account.ownLive;
    account.ownAllocations = 0;
}

const HeapAccount &heapAccount()
{
    return account;
}

static void *entered(void *block, const void *caller)
{
    if (!block)
        return nullptr;
    const long size = long(malloc_usable_size(block));
    account.live += size;
    account.peak = std::max(account.peak, account.live);
    if (!ownCode.contains(reinterpret_cast<uintptr_t>(caller)))
        return block;
    account.ownAllocations++;
    account.ownLive += size;
    account.ownPeak = std::max(account.ownPeak, account.ownLive);
    void **place = std::find(std::begin(ownBlocks), std::end(ownBlocks), nullptr);
    if (place != std::end(ownBlocks))
        *place = block;
    return block;
}

static void leave(void *block)
{
    if (!block)
        return;
    const long size = long(malloc_usable_size(block));
    account.live -= size;
    if (account.ownLive == 0)
        return;
    void **place = std::find(std::begin(ownBlocks), std::end(ownBlocks), block);
    if (place == std::end(ownBlocks))
        return;
    *place = nullptr;
    account.ownLive -= size;
}

} // namespace bench

extern "C" void *malloc(size_t size)
{
    return bench::entered(__libc_malloc(size), __builtin_return_address(0));
}

extern "C" void *calloc(size_t count, size_t size)
{
    return bench::entered(__libc_calloc(count, size), __builtin_return_address(0));
}

extern "C" void *realloc(void *block, size_t size)
{
    bench::leave(block);
    return bench::entered(__libc_realloc(block, size), __builtin_return_address(0));
}

extern "C" void free(void *block)
{
    bench::leave(block);
    __libc_free(block);
}
