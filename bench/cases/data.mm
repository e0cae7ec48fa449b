// MemoryBlocks, beside the bare copy of as many bytes.
#include "bench/cases/arguments.h"

#include <cstring>
#include <vector>

namespace bench {

static std::vector<long> sizes(Extent extent)
{
    const long mebibyte = 1 << 20;
    if (extent == Extent::Everything)
        return {1024, mebibyte, 4 * mebibyte, 16 * mebibyte, 64 * mebibyte};
    return {1024, mebibyte, 4 * mebibyte};
}

namespace {

// Both sides of one size, made when its cases come.
struct Block {
    Value hostBlock;
    NSData *data = nil, *ours = nil;
};

} // namespace

void addData(Cases &cases, Ground &ground, Extent extent)
{
    for (long bytes : sizes(extent)) {
        const std::string what = "MemoryBlock of " + std::to_string(bytes) + " bytes";
        const Key key("m" + what, 24);
        auto block = std::make_shared<Block>();
        auto prepare = [=] {
            if (block->data)
                return;
            const std::string content(size_t(bytes), 'b');
            block->hostBlock = Value::memoryBlock(content);
            block->data = [[NSData alloc] initWithBytes:content.data() length:content.size()];
            block->ours = [[NSData alloc] initWithBytes:content.data() length:content.size()];
            [standard() setObject:block->data forKey:key.cocoa];
        };
        auto tidy = [=] {
            forget(key.cocoa);
            [block->data release];
            [block->ours release];
            *block = Block();
        };

        auto from = std::make_shared<std::string>(), to = std::make_shared<std::string>();
        cases.add("memcpy of " + std::to_string(bytes) + " bytes", bytes)
            .repeated(1)
            .byHand([=] { memcpy(to->data(), from->data(), from->size()); })
            .beforeEach([=] { from->resize(size_t(bytes), 'm'), to->resize(size_t(bytes)); })
            .atTheEnd([=] { from->clear(), from->shrink_to_fit(), to->clear(), to->shrink_to_fit(); });
        addCall<void *>(cases, ground, "dataForKey(key as string) as memoryblock", key)
            .named("get " + what, bytes)
            .repeated(1)
            .byHand([=] { return [standard() dataForKey:key.cocoa]; })
            .beforeEach(prepare);
        addCall(cases, ground, "setDataValue(key as string, value as memoryblock)", key,
                LateValue(block, &block->hostBlock))
            .named("set " + what, bytes)
            .repeated(1)
            .byHand([=] { [standard() setObject:block->ours forKey:key.cocoa]; })
            .beforeEach(prepare)
            .atTheEnd(tidy);
    }
}

} // namespace bench
