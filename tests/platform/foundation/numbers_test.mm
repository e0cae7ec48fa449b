#include "platform/gnustep/foundation/numbers.h"
#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

#include <cmath>
#include <random>

namespace {

class Numbers : public PlatformTest {
protected:
    static NSData *dataOf(id root, NSPropertyListFormat format)
    {
        return [NSPropertyListSerialization dataFromPropertyList:root format:format errorDescription:nullptr];
    }

    static NSNumber *thereAndBack(id root, NSPropertyListFormat format)
    {
        return [NSPropertyListSerialization propertyListWithData:dataOf(root, format)
                                                         options:NSPropertyListImmutable
                                                          format:nullptr
                                                           error:nullptr];
    }

    static std::string xmlOf(id root)
    {
        NSData *data = dataOf(root, NSPropertyListXMLFormat_v1_0);
        std::string xml(static_cast<const char *>([data bytes]), [data length]);
        size_t start = xml.find("<plist version=\"1.0\">\n") + 22;
        return xml.substr(start, xml.find("\n</plist>") - start);
    }

    // The kinds of a number as it is made, from a binary property list, and from XML.
    static std::string kindsOf(NSNumber *number)
    {
        return std::string([number objCType]) + " " + [thereAndBack(number, NSPropertyListBinaryFormat_v1_0) objCType] +
               " " + [thereAndBack(number, NSPropertyListXMLFormat_v1_0) objCType];
    }
};

// The kinds as above, in all systems from 10.4 to 10.10. -1 to 12 are 4 bytes however they are made. Unsigned ones are
// of the next wider kind, which is what Foundation's documents lead to expect and nobody measured.
TEST_F(Numbers, KeepTheirKindsInTheProcessAndHaveTheDisksBehindIt)
{
    const struct {
        NSNumber *number;
        const char *kinds;
        const char *xml;
    } facts[] = {
        {[NSNumber numberWithChar:-1], "i i i", "<integer>-1</integer>"},
        {[NSNumber numberWithChar:12], "i i i", "<integer>12</integer>"},
        {[NSNumber numberWithChar:13], "c q q", "<integer>13</integer>"},
        {[NSNumber numberWithChar:-2], "c q q", "<integer>-2</integer>"},
        {[NSNumber numberWithShort:0], "i i i", "<integer>0</integer>"},
        {[NSNumber numberWithShort:800], "s q q", "<integer>800</integer>"},
        {[NSNumber numberWithInt:12], "i i i", "<integer>12</integer>"},
        {[NSNumber numberWithInt:2147483647], "i q q", "<integer>2147483647</integer>"},
        {[NSNumber numberWithLong:-129], "i q q", "<integer>-129</integer>"},
        {[NSNumber numberWithInteger:13], "i q q", "<integer>13</integer>"},
        {[NSNumber numberWithLongLong:12], "i i i", "<integer>12</integer>"},
        {[NSNumber numberWithLongLong:800], "q q q", "<integer>800</integer>"},
        {[NSNumber numberWithLongLong:LLONG_MIN], "q q q", "<integer>-9223372036854775808</integer>"},
        {[NSNumber numberWithUnsignedChar:200], "s q q", "<integer>200</integer>"},
        {[NSNumber numberWithUnsignedShort:200], "i q q", "<integer>200</integer>"},
        {[NSNumber numberWithUnsignedInt:200], "q q q", "<integer>200</integer>"},
        {[NSNumber numberWithUnsignedLongLong:200], "q q q", "<integer>200</integer>"},
        {[NSNumber numberWithUnsignedLongLong:1ULL << 63], "Q Q Q", "<integer>9223372036854775808</integer>"},
        {platform::numberOf16Bytes(5), "Q Q i", "<integer>5</integer>"},
        {[NSNumber numberWithBool:YES], "c c c", "<true/>"},
        {[NSNumber numberWithFloat:0.5], "f f d", "<real>0.5</real>"},
        {[NSNumber numberWithFloat:0.1f], "f f d", "<real>0.10000000149011612</real>"},
        {[NSNumber numberWithDouble:0.1], "d d d", "<real>0.10000000000000001</real>"},
        {[NSNumber numberWithDouble:100], "d d d", "<real>100</real>"},
        {[NSNumber numberWithDouble:-0.0], "d d d", "<real>0.0</real>"},
        {[NSNumber numberWithFloat:NAN], "d d d", "<real>nan</real>"},
        {[NSNumber numberWithFloat:INFINITY], "d d d", "<real>+infinity</real>"},
        {[NSNumber numberWithDouble:-INFINITY], "d d d", "<real>-infinity</real>"},
    };
    for (const auto &fact : facts) {
        EXPECT_EQ(fact.kinds, kindsOf(fact.number)) << fact.xml;
        EXPECT_EQ(fact.xml, xmlOf(fact.number));
    }
}

TEST_F(Numbers, WhatIsNoNumberAndTheInfinitiesExistOnce)
{
    EXPECT_EQ([NSNumber numberWithDouble:NAN], [NSNumber numberWithFloat:NAN]);
    EXPECT_EQ([NSNumber numberWithDouble:INFINITY], [NSNumber numberWithFloat:INFINITY]);
    EXPECT_NE([NSNumber numberWithDouble:INFINITY], [NSNumber numberWithDouble:-INFINITY]);
}

TEST_F(Numbers, OfAllKindsCompareByValue)
{
    NSArray *fives = [NSArray arrayWithObjects:[NSNumber numberWithChar:25], [NSNumber numberWithShort:25],
                                               [NSNumber numberWithInt:25], [NSNumber numberWithLongLong:25],
                                               platform::numberOf16Bytes(25), [NSNumber numberWithDouble:25], nil];
    for (NSNumber *a in fives) {
        for (NSNumber *b in fives) {
            EXPECT_TRUE([a isEqual:b]) << [a objCType] << [b objCType];
            EXPECT_EQ([a hash], [b hash]) << [a objCType] << [b objCType];
        }
        EXPECT_EQ(25, [a charValue]);
        EXPECT_EQ(25, [a unsignedLongLongValue]);
        EXPECT_STREQ("25", [[a stringValue] UTF8String]);
    }
}

TEST_F(Numbers, GiveAsManyBytesAsTheirKindHas)
{
    signed char bytes[4] = {1, 2, 3, 4};
    [[NSNumber numberWithChar:25] getValue:bytes];
    EXPECT_EQ(25, bytes[0]);
    EXPECT_EQ(2, bytes[1]);
    [[NSNumber numberWithShort:25] getValue:bytes];
    EXPECT_EQ(3, bytes[2]);
}

// A number written in decimal by the C library is what the list holds.
TEST_F(Numbers, RandomOnesComeBack)
{
    unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (int i = 0; i < 500; ++i) {
        SInt64 value = static_cast<SInt64>(random()) >> random() % 64;
        NSNumber *number = [NSNumber numberWithLongLong:value];
        EXPECT_EQ(value >= -1 && value <= 12 ? "i i i" : "q q q", kindsOf(number)) << value;
        EXPECT_EQ("<integer>" + std::to_string(value) + "</integer>", xmlOf(number));
        EXPECT_EQ(value, [thereAndBack(number, NSPropertyListBinaryFormat_v1_0) longLongValue]);
        EXPECT_EQ(value, [thereAndBack(number, NSPropertyListXMLFormat_v1_0) longLongValue]);
    }
}

// Text to number, as Core Foundation of 10.7 and 10.10 reads it.
TEST_F(Numbers, OfTexts)
{
    const struct {
        const char *text;
        int whole;
        double real;
    } facts[] = {
        {"", 0, 0},
        {"abc", 0, 0},
        {"5 ", 5, 5},
        {"\t5", 5, 5},
        {"-1.5", -1, -1.5},
        {".5", 0, 0.5},
        {"1e3", 1, 1000},
        {"1e", 1, 1},
        {"1e+", 1, 1},
        {"1E5", 1, 1e5},
        {"0x1F", 0, 0},
        {"inf", 0, 0},
        {"1,000", 1, 1},
        {"--5", 0, 0},
        {"+-5", 0, 0},
        {"1e400", 1, INFINITY},
        {"1e-400", 1, 0},
        {"\u00A05", 0, 0},
        {"YES", 0, 0},
        {"2147483648", 2147483647, 2147483648.0},
        {"9223372036854775807", 2147483647, 9.2233720368547758e18},
        {"1234567890123456789012", 2147483647, 1.2345678901234568e21},
    };
    for (const auto &fact : facts) {
        NSString *text = [NSString stringWithUTF8String:fact.text];
        EXPECT_EQ(fact.whole, [text intValue]) << fact.text;
        EXPECT_EQ(fact.whole, [text integerValue]) << fact.text;
        EXPECT_EQ(fact.real, [text doubleValue]) << fact.text;
        EXPECT_EQ(static_cast<float>(fact.real), [text floatValue]) << fact.text;
    }
    EXPECT_TRUE(std::signbit([@"-0" doubleValue]));
    EXPECT_EQ(2147483648LL, [@"2147483648" longLongValue]);
    const UniChar half[] = {'1', '2', 0xD800};
    NSString *text = [(id)CFStringCreateWithCharacters(nullptr, half, 3) autorelease];
    EXPECT_EQ(12, [text intValue]);
    EXPECT_EQ(12.0, [text doubleValue]);
}

} // namespace
