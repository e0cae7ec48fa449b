#include "host/runtime/memory_blocks.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/state.h"

namespace host::runtime::entries {

namespace {

MemoryBlockPayload *expectBlock(void *record, const char *user)
{
    return payloadOf<MemoryBlockPayload>(expectObject(record, user));
}

void *newMemoryBlock(int32_t size)
{
    if (creationFails(Creation::MemoryBlock))
        return nullptr;
    ObjectHandle *block = runtime::newMemoryBlock(size);
    return block ? block->record : nullptr;
}

void *memoryBlockPointer(void *record)
{
    MemoryBlockPayload *block = expectBlock(record, "memoryBlockGetPtr");
    return block ? block->data : nullptr;
}

int32_t memoryBlockSize(void *record)
{
    MemoryBlockPayload *block = expectBlock(record, "memoryBlockGetSize");
    return block ? block->size : 0;
}

} // namespace

EntryPoints memoryBlockEntryPoints()
{
    return {
        entry<newMemoryBlock>("newMemoryBlock"),
        entry<memoryBlockPointer>("memoryBlockGetPtr"),
        entry<memoryBlockSize>("memoryBlockGetSize"),
    };
}

} // namespace host::runtime::entries
