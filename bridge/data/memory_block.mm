#include "bridge/data/memory_block.h"

#include "bridge/exceptions/held_handles.h"
#include "hostapi/exceptions.h"
#include "hostapi/services.h"

#include <cstdio>
#include <cstring>

NSData *NewNSData(REALmemoryBlock block)
{
    if (!block)
        return nil;
    REALLockObject(AsObject(block));
    Hold(AsObject(block));

    const int32_t size = REALMemoryBlockGetSize(block);
    const void *bytes = REALMemoryBlockGetPtr(block);
    NSData *data = bytes && size > 0 ? [NSData dataWithBytes:bytes length:size] : nil;

    ReleaseNewestHeld();
    return data;
}

// A block filled with the bytes, or null when the host cannot make it or its bytes cannot be reached.
static REALmemoryBlock NewFilledBlock(const void *bytes, int32_t length)
{
    REALmemoryBlock block = REALNewMemoryBlockOriginal(length);
    if (!block)
        return nullptr;
    void *destination = REALMemoryBlockGetPtr(block);
    if (!destination) {
        REALUnlockObject(AsObject(block));
        return nullptr;
    }
    memcpy(destination, bytes, length);
    return block;
}

REALmemoryBlock NSDataRB(NSData *data)
{
    if (!data)
        return nullptr;
    const void *bytes = [data bytes];
    const int32_t length = static_cast<int32_t>([data length]); // 2^31 bytes and more count as none
    if (!bytes || length < 1)
        return nullptr;

    REALmemoryBlock block = length < INT32_MAX ? NewFilledBlock(bytes, length) : nullptr;
    if (!block) {
        char message[200];
        snprintf(message, sizeof message, "Failed to allocate a memoryblock with %lld bytes in size.",
                 static_cast<long long>(length));
        RaiseException("OutOfMemoryException", message, 0);
    }
    return block;
}
