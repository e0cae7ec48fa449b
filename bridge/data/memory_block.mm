#include "bridge/data/memory_block.h"

#include "hostapi/exceptions.h"
#include "hostapi/held_handles.h"

#include <cstdio>
#include <cstring>

NSData *NewNSData(REALmemoryBlock block, HeldHandles &held)
{
    if (!block)
        return nil;
    REALLockObject(AsObject(block));
    held.hold(block);

    const int32_t size = REALMemoryBlockGetSize(block);
    const void *bytes = REALMemoryBlockGetPtr(block);
    NSData *data = bytes && size > 0 ? [NSData dataWithBytes:bytes length:size] : nil;

    held.release(block);
    return data;
}

// A block filled with the bytes, or null when the host cannot make it or its bytes cannot be reached.
static REALmemoryBlock NewFilledBlock(const void *bytes, int32_t length, HeldHandles &held)
{
    REALmemoryBlock block = held.hold(REALNewMemoryBlockOriginal(length));
    if (!block)
        return nullptr;
    void *destination = REALMemoryBlockGetPtr(block);
    if (!destination) {
        held.release(block);
        return nullptr;
    }
    memcpy(destination, bytes, length);
    return block;
}

REALmemoryBlock NSDataRB(NSData *data, HeldHandles &held)
{
    if (!data)
        return nullptr;
    const void *bytes = [data bytes];
    const int32_t length = static_cast<int32_t>([data length]); // 2^31 bytes and more count as none
    if (!bytes || length < 1)
        return nullptr;

    REALmemoryBlock block = length < INT32_MAX ? NewFilledBlock(bytes, length, held) : nullptr;
    if (!block) {
        char message[200];
        snprintf(message, sizeof message, "Failed to allocate a memoryblock with %lld bytes in size.",
                 static_cast<long long>(length));
        RaiseException("OutOfMemoryException", message, 0);
    }
    return block;
}
