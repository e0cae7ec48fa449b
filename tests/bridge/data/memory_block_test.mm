// Bytes between MemoryBlocks and NSData.
#include "tests/bridge/crossing.h"

#include "tests/support/host_test.h"

using host::Creation;
using host::Value;

// Data of a length and a place of its own; nothing is read unless it is copied.
@interface DataOfLength : NSData {
@public
    NSUInteger length;
    const void *bytes;
}
@end

@implementation DataOfLength

- (NSUInteger)length
{
    return length;
}
- (const void *)bytes
{
    return bytes;
}

@end

namespace {

class MemoryBlock : public CrossingTest {
protected:
    static DataOfLength *dataOfLength(NSUInteger length, const void *bytes)
    {
        DataOfLength *data = [NSAllocateObject([DataOfLength class], 0, nullptr) autorelease];
        data->length = length;
        data->bytes = bytes;
        return data;
    }

    void expectOutOfMemory(id data, const std::string &size)
    {
        for (const char *getter : {"dataForKey", "variantForKey"}) {
            host::Outcome outcome = tryToHost(data, getter);
            EXPECT_TRUE(outcome.result.isNil());
            EXPECT_TRUE(support::raisedOnce(outcome.raised, "OutOfMemoryException",
                                            "Failed to allocate a memoryblock with " + size + " bytes in size."));
        }
    }
};

} // namespace

TEST_F(MemoryBlock, BytesCrossBothWays)
{
    start();
    std::string bytes;
    for (int i = 0; i < 70000; i++)
        bytes.push_back(char(i * 7));
    for (size_t size : {size_t(1), size_t(2), size_t(255), size_t(4096), bytes.size()}) {
        const std::string part = bytes.substr(0, size);
        NSData *data = toCocoaWith("setDataValue", Value::memoryBlock(part));
        EXPECT_TRUE([data isEqual:[NSData dataWithBytes:part.data() length:size]]) << size;
        EXPECT_EQ(toHostWith("dataForKey", data).bytes(), part) << size;
        EXPECT_EQ(toHost(data).bytes(), part) << size;
    }
}

TEST_F(MemoryBlock, NothingIsSharedBetweenTheTwo)
{
    start();
    Value block = Value::memoryBlock("abc");
    NSData *data = toCocoaWith("setDataValue", block);
    block.data()[0] = 'X';
    EXPECT_EQ(memcmp([data bytes], "abc", 3), 0);

    NSMutableData *changing = [NSMutableData dataWithBytes:"abc" length:3];
    Value copy = toHostWith("dataForKey", changing);
    static_cast<char *>([changing mutableBytes])[0] = 'Y';
    EXPECT_EQ(copy.bytes(), "abc");
    copy.data()[1] = 'Z';
    EXPECT_EQ(memcmp([changing bytes], "Ybc", 3), 0);
}

TEST_F(MemoryBlock, NilAndEmptyAreNilBothWays)
{
    start();
    EXPECT_EQ(toCocoaWith("setDataValue", Value()), nil);
    EXPECT_EQ(toCocoaWith("setDataValue", Value::memoryBlock("")), nil);
    EXPECT_TRUE(toHostWith("dataForKey", nil).isNil());
    EXPECT_TRUE(toHostWith("dataForKey", [NSData data]).isNil());
    EXPECT_EQ(host.creations(Creation::MemoryBlock), 0);
}

TEST_F(MemoryBlock, DataWithoutBytesIsNil)
{
    start();
    EXPECT_TRUE(toHostWith("dataForKey", dataOfLength(5, nullptr)).isNil());
}

TEST_F(MemoryBlock, DataOfTwoGigabytesAndMoreIsNilWithoutAWord)
{
    start();
    for (NSUInteger length : {NSUInteger(0x80000000u), NSUInteger(0xFFFFFFFFu)})
        EXPECT_TRUE(toHostWith("dataForKey", dataOfLength(length, "x")).isNil()) << length;
    EXPECT_EQ(host.creations(Creation::MemoryBlock), 0);
}

TEST_F(MemoryBlock, DataOfOneByteLessThanTwoGigabytesRaisesWithoutATry)
{
    start();
    host.resetCounts();
    expectOutOfMemory(dataOfLength(0x7FFFFFFF, "x"), "2147483647");
    EXPECT_EQ(host.calls("newMemoryBlock"), 0);
}

TEST_F(MemoryBlock, ABlockThatTheHostCannotMakeRaisesWithTheSize)
{
    start();
    host.failCreation(Creation::MemoryBlock, 1, 2);
    expectOutOfMemory([NSData dataWithBytes:"seventeen letters" length:17], "17");
    host.failCreation(Creation::MemoryBlock, 1, 2);
    expectOutOfMemory(dataOfLength(0x7FFFFFFE, "x"), "2147483646");
}

TEST_F(MemoryBlock, WithoutTheMakerDataRaises)
{
    host.hide("newMemoryBlock");
    start();
    expectOutOfMemory([NSData dataWithBytes:"abc" length:3], "3");
}

TEST_F(MemoryBlock, ABlockWhoseBytesCannotBeReachedIsReleasedAndRaises)
{
    host.hide("memoryBlockGetPtr");
    start();
    expectOutOfMemory([NSData dataWithBytes:"abc" length:3], "3");
    EXPECT_EQ(host.creations(Creation::MemoryBlock), 2);
}

TEST_F(MemoryBlock, WithoutSizeOrBytesABlockIsNil)
{
    start();
    Value block = Value::memoryBlock("abc");
    for (const char *entry : {"memoryBlockGetSize", "memoryBlockGetPtr"}) {
        host.replace(entry, bodyOf([](void *) -> int { return 0; })); // a null pointer, or no bytes
        EXPECT_EQ(toCocoaWith("setDataValue", block), nil) << entry;
        host.replace(entry, nullptr);
    }
    host.replace("memoryBlockGetSize", bodyOf([](void *) -> int { return -1; }));
    EXPECT_EQ(toCocoaWith("setDataValue", block), nil) << "a negative size counts as none";
    host.replace("memoryBlockGetSize", nullptr);
    EXPECT_NE(toCocoaWith("setDataValue", block), nil);
}

TEST_F(MemoryBlock, MissingServicesGiveNil)
{
    host.hide("memoryBlockGetSize");
    start();
    EXPECT_EQ(toCocoaWith("setDataValue", Value::memoryBlock("abc")), nil);
    host.showAll();
    EXPECT_NE(toCocoaWith("setDataValue", Value::memoryBlock("abc")), nil);
}

TEST_F(MemoryBlock, TheBlockIsLockedWhileItIsRead)
{
    start();
    Value block = Value::memoryBlock("abc");
    int ownLocksWhileRead = 0;
    host.beforeCall("memoryBlockGetPtr", [&] { ownLocksWhileRead = host.handleInfo(block.handle())->heldElsewhere(); });
    toCocoaWith("setDataValue", block);
    host.beforeCall("memoryBlockGetPtr", nullptr);
    EXPECT_EQ(ownLocksWhileRead, 1);
    EXPECT_EQ(block.lockCount(), 1);
}
