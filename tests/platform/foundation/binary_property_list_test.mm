#include "platform/gnustep/foundation/property_lists.h"
#include "tests/platform/support.h"

#include <math.h>
#include <string.h>

using platform::binaryPropertyList;
using platform::isPropertyList;
using platform::isSameValue;
using platform::propertyListFromBinary;

namespace {

NSNumber *boolean(bool value)
{
    return [NSNumber numberWithBool:value];
}
NSNumber *integer(int value)
{
    return [NSNumber numberWithInt:value];
}
NSNumber *real(double value)
{
    return [NSNumber numberWithDouble:value];
}

class BinaryPropertyList : public PlatformTest {
protected:
    static id thereAndBack(id root) { return propertyListFromBinary(binaryPropertyList(root)); }

    // One of everything that there is.
    static NSArray *everything()
    {
        NSString *wave = [NSString stringWithUTF8String:"gr\xC3\xBC\xC3\x9F e\xCC\x81 \xF0\x9F\x91\x8B"];
        NSMutableData *long64 = [NSMutableData dataWithLength:65536];
        NSMutableArray *many = [NSMutableArray array];
        for (int i = 0; i < 300; ++i)
            [many addObject:integer(i)];
        return [NSArray
            arrayWithObjects:boolean(true), boolean(false), integer(0), integer(1), integer(-1), integer(255),
                             integer(256), integer(65535), integer(65536), integer(INT_MAX), integer(INT_MIN),
                             [NSNumber numberWithUnsignedInt:UINT_MAX], [NSNumber numberWithLongLong:LLONG_MAX],
                             [NSNumber numberWithLongLong:LLONG_MIN], [NSNumber numberWithUnsignedLongLong:ULLONG_MAX],
                             [NSNumber numberWithUnsignedLongLong:1ULL << 63], real(0), real(-0.0), real(1), real(0.1),
                             real(INFINITY), real(-INFINITY), real(NAN), [NSNumber numberWithFloat:0.1f],
                             [NSNumber numberWithFloat:1], @"", @"a", @"fourteen chars", @"fifteen chars..", wave,
                             [@"" stringByPaddingToLength:70000 withString:@"long " startingAtIndex:0], [NSData data],
                             [NSData dataWithBytes:"\0\1" length:2], long64,
                             [NSDate dateWithTimeIntervalSinceReferenceDate:1234.5678], [NSArray array],
                             [NSDictionary dictionary], many, [NSDictionary dictionaryWithObject:many forKey:wave],
                             nil];
    }
};

TEST_F(BinaryPropertyList, EverythingComesBackWithItsKind)
{
    NSArray *list = everything();
    NSArray *read = thereAndBack(list);
    ASSERT_EQ([list count], [read count]);
    for (NSUInteger i = 0; i < [list count]; ++i) {
        id value = [list objectAtIndex:i];
        id back = [read objectAtIndex:i];
        EXPECT_TRUE(isSameValue(value, back)) << i;
        if ([value isKindOfClass:[NSNumber class]] && platform::isReal(value))
            EXPECT_STREQ([value objCType], [back objCType]) << i;
    }
}

TEST_F(BinaryPropertyList, DatesKeepTheirFractions)
{
    id back = thereAndBack([NSDate dateWithTimeIntervalSinceReferenceDate:0.123456789]);
    EXPECT_EQ(0.123456789, [back timeIntervalSinceReferenceDate]);
}

TEST_F(BinaryPropertyList, EqualNumbersOfDifferentKindsStayApart)
{
    NSArray *back = thereAndBack([NSArray arrayWithObjects:integer(1), boolean(true), real(1), nil]);
    EXPECT_STREQ("i", [[back objectAtIndex:0] objCType]);
    EXPECT_STREQ("c", [[back objectAtIndex:1] objCType]);
    EXPECT_STREQ("d", [[back objectAtIndex:2] objCType]);
}

TEST_F(BinaryPropertyList, FoundationsReaderIsInitialisedByItsFirstMessage)
{
    if (!inNewProcess({}))
        return;
    NSData *data = binaryPropertyList(@"text");
    id read = [NSPropertyListSerialization propertyListWithData:data options:0 format:nullptr error:nullptr];
    EXPECT_TRUE([read isEqual:@"text"]);
}

TEST_F(BinaryPropertyList, MoreThan65535ObjectsAreReferredTo)
{
    NSMutableArray *list = [NSMutableArray array];
    for (int i = 0; i < 70000; ++i)
        [list addObject:integer(i)];
    EXPECT_TRUE(isSameValue(list, thereAndBack(list)));
}

TEST_F(BinaryPropertyList, DeepNestingComesBack)
{
    id list = @"core";
    for (int i = 0; i < 1000; ++i)
        list = i % 2 ? (id)[NSArray arrayWithObject:list] : (id)[NSDictionary dictionaryWithObject:list forKey:@"k"];
    EXPECT_TRUE(isSameValue(list, thereAndBack(list)));
}

TEST_F(BinaryPropertyList, WhatIsNoPropertyListIsRefused)
{
    id url = [NSURL URLWithString:@"http://x.org/"];
    EXPECT_EQ(nil, binaryPropertyList(url));
    EXPECT_EQ(nil, binaryPropertyList([NSArray arrayWithObject:url]));
    EXPECT_EQ(nil, binaryPropertyList([NSDictionary dictionaryWithObject:@"v" forKey:integer(1)]));
    EXPECT_EQ(nil, binaryPropertyList([NSDictionary dictionaryWithObject:url forKey:@"k"]));
}

// The domain that another program put them into must stay writable.
TEST_F(BinaryPropertyList, NullAndSetsComeBackThoughTheyAreNoPropertyLists)
{
    NSSet *set = [NSSet setWithObject:@"a"];
    EXPECT_EQ([NSNull null], thereAndBack([NSNull null]));
    EXPECT_TRUE([thereAndBack(set) isEqual:set]);
    EXPECT_FALSE(isPropertyList([NSNull null]));
    EXPECT_FALSE(isPropertyList(set));
}

TEST_F(BinaryPropertyList, DamagedDataGivesNilOrAList)
{
    NSData *data = binaryPropertyList(everything());
    data = [data subdataWithRange:NSMakeRange([data length] - 2000, 2000)];
    NSMutableData *small =
        [[binaryPropertyList([NSArray arrayWithObjects:@"text", integer(300), boolean(true),
                                                       [NSDictionary dictionaryWithObject:@"v" forKey:@"k"], nil])
            mutableCopy] autorelease];
    EXPECT_EQ(nil, propertyListFromBinary(data));
    EXPECT_EQ(nil, propertyListFromBinary([NSData data]));
    int unreadable = 0;
    for (NSUInteger i = 0; i < [small length]; ++i) {
        UInt8 *byte = static_cast<UInt8 *>([small mutableBytes]) + i;
        UInt8 before = *byte;
        for (int value : {0x00, 0x0F, 0x1F, 0x33, 0x4F, 0x5F, 0x6F, 0xAF, 0xDF, 0xFF}) {
            *byte = value;
            unreadable += propertyListFromBinary(small) == nil;
        }
        *byte = before;
        unreadable += propertyListFromBinary([small subdataWithRange:NSMakeRange(0, i)]) == nil;
    }
    EXPECT_GT(unreadable, 100);
    EXPECT_NE(nil, propertyListFromBinary(small));
}

TEST_F(BinaryPropertyList, AnArrayThatContainsItselfIsRefused)
{
    const char bytes[] = "bplist00\xA1\0\x08"
                         "\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x0A";
    EXPECT_EQ(nil, propertyListFromBinary([NSData dataWithBytes:bytes length:sizeof bytes - 1]));
}

// A change of one value in the data of a small list.
NSMutableData *changed(id root, const char *from, const char *to, size_t size)
{
    NSMutableData *data = [[binaryPropertyList(root) mutableCopy] autorelease];
    char *place = static_cast<char *>(memmem([data mutableBytes], [data length], from, size));
    EXPECT_NE(nullptr, place);
    if (place)
        memcpy(place, to, size);
    return data;
}

TEST_F(BinaryPropertyList, ADateMayBeAnyNumberAndNone)
{
    for (double seconds : {1e15, -1e15, static_cast<double>(INFINITY)})
        EXPECT_EQ(seconds, [thereAndBack([NSDate dateWithTimeIntervalSinceReferenceDate:seconds])
                               timeIntervalSinceReferenceDate]);
    id none = thereAndBack([NSDate dateWithTimeIntervalSinceReferenceDate:NAN]);
    EXPECT_TRUE(isnan([none timeIntervalSinceReferenceDate]));
}

TEST_F(BinaryPropertyList, CalendarDatesEndAtTheYear4001)
{
    for (double seconds : {1e15, 1e300, static_cast<double>(INFINITY), static_cast<double>(NAN)}) {
        id date = [[NSCalendarDate alloc] initWithTimeIntervalSinceReferenceDate:seconds];
        EXPECT_EQ(4001, [date yearOfCommonEra]) << seconds;
        [date release];
    }
}

TEST_F(BinaryPropertyList, AKeyThatIsNoStringIsRefused)
{
    id dictionary = [NSDictionary dictionaryWithObject:@"v" forKey:@"k"];
    EXPECT_NE(nil, propertyListFromBinary(changed(dictionary, "\x51k", "\x51l", 2)));
    EXPECT_EQ(nil, propertyListFromBinary(changed(dictionary, "\x51k", "\x10k", 2)));
}

class PropertyLists : public PlatformTest {};

TEST_F(PropertyLists, KeysAreStrings)
{
    EXPECT_TRUE(isPropertyList([NSDictionary dictionaryWithObject:integer(1) forKey:@"k"]));
    EXPECT_FALSE(isPropertyList([NSDictionary dictionaryWithObject:@"v" forKey:integer(1)]));
    EXPECT_FALSE(isPropertyList([NSNull null]));
    EXPECT_FALSE(isPropertyList([NSURL URLWithString:@"http://x.org/"]));
}

TEST_F(PropertyLists, ValuesOfDifferentKindsAreNotTheSame)
{
    EXPECT_FALSE(isSameValue(integer(1), boolean(true)));
    EXPECT_FALSE(isSameValue(integer(1), real(1)));
    EXPECT_FALSE(isSameValue(real(1), [NSNumber numberWithFloat:1]));
    EXPECT_FALSE(isSameValue(real(0), real(-0.0)));
    EXPECT_TRUE(isSameValue(real(NAN), real(NAN)));
    EXPECT_TRUE(isSameValue(@"a", [NSMutableString stringWithString:@"a"]));
    EXPECT_FALSE(isSameValue([NSArray arrayWithObject:integer(1)], [NSArray arrayWithObject:boolean(true)]));
    EXPECT_FALSE(isSameValue([NSDictionary dictionaryWithObject:integer(1) forKey:@"k"],
                             [NSDictionary dictionaryWithObject:boolean(true) forKey:@"k"]));
    EXPECT_FALSE(isSameValue([NSArray array], [NSArray arrayWithObject:@"a"]));
    EXPECT_FALSE(isSameValue([NSArray array], [NSDictionary dictionary]));
}

} // namespace
