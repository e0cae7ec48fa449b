// The one way this library asks for a zero-filled block.
#pragma once

#include <cstdint>
#include <cstdlib>

// A zero-filled block of `size` bytes, to be freed with free(), or null: for 0 bytes, for more than
// 0x7FFFFFFF bytes, and when there is no memory.
inline void *ZeroedAllocation(uint64_t size)
{
    if (size == 0 || size > INT32_MAX)
        return nullptr;
    return calloc(1, static_cast<size_t>(size));
}
