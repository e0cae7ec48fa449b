// MemoryBlocks: bytes of a fixed size.
#pragma once

#include <string_view>

#include "host/runtime/objects.h"

namespace host::runtime {

struct MemoryBlockPayload : Payload {
    ~MemoryBlockPayload() override;
    std::string describe() const override { return "of " + std::to_string(size) + " bytes"; }
    // False when there is not enough memory; the block is unchanged then. New bytes are zero.
    bool resize(int32_t newSize);
    std::string_view bytes() const { return {reinterpret_cast<const char *>(data), size_t(size)}; }

    uint8_t *data = nullptr; // never null once the size was set, not even for size 0
    int32_t size = 0;
};

// With one lock for the caller; null for a negative size or without memory.
ObjectHandle *newMemoryBlock(int32_t size);

} // namespace host::runtime
