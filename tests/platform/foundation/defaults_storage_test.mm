#include "tests/platform/foundation/support.h"

#include <ground.h>

#include <fcntl.h>
#include <math.h>
#include <sys/stat.h>
#include <time.h>

namespace {

class DefaultsStorage : public DefaultsTest {
protected:
    id readBack(NSString *key)
    {
        EXPECT_TRUE([standard synchronize]);
        return [fresh() objectForKey:key];
    }
};

TEST_F(DefaultsStorage, ADomainIsABinaryPropertyList)
{
    [standard setInteger:1 forKey:@"key"];
    [standard synchronize];
    EXPECT_EQ("bplist00", contentsOf(fileOf(domain())).substr(0, 8));
}

TEST_F(DefaultsStorage, OtherPropertyListsAreWrittenAsAsked)
{
    NSData *data = [NSPropertyListSerialization dataFromPropertyList:@"text"
                                                              format:NSPropertyListXMLFormat_v1_0
                                                    errorDescription:nullptr];
    EXPECT_EQ(0, memcmp("<?xml", [data bytes], 5));
}

TEST_F(DefaultsStorage, TextAboveU_FFFFSurvives)
{
    const char wave[] = "gr\xC3\xBC\xC3\x9F \xF0\x9F\x91\x8B";
    [standard setObject:text(wave) forKey:text(wave)];
    EXPECT_EQ(wave, textOf(readBack(text(wave))));
}

TEST_F(DefaultsStorage, DatesAreDatesAndKeepTheirFractions)
{
    [standard setObject:[NSDate dateWithTimeIntervalSinceReferenceDate:1234.5] forKey:@"date"];
    id date = readBack(@"date");
    EXPECT_TRUE([date isKindOfClass:[NSDate class]]);
    EXPECT_FALSE([date isKindOfClass:[NSCalendarDate class]]);
    EXPECT_EQ(1234.5, [date timeIntervalSinceReferenceDate]);
}

TEST_F(DefaultsStorage, NumbersKeepKindAndValue)
{
    [standard setFloat:0.1f forKey:@"float"];
    [standard setDouble:NAN forKey:@"nan"];
    [standard setObject:[NSNumber numberWithUnsignedLongLong:~0ull] forKey:@"large"];
    [standard setInteger:1 forKey:@"one"];
    [standard setBool:YES forKey:@"true"];
    EXPECT_STREQ("f", [readBack(@"float") objCType]);
    EXPECT_TRUE(isnan([readBack(@"nan") doubleValue]));
    EXPECT_EQ(~0ull, [readBack(@"large") unsignedLongLongValue]);
    EXPECT_STREQ("i", [readBack(@"one") objCType]);
    EXPECT_STREQ("c", [readBack(@"true") objCType]);
}

TEST_F(DefaultsStorage, XMLOfOtherProgramsIsReadAndItsDatesAreUsable)
{
    writeFile(fileOf(domain()),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"0.9\"><dict><key>date</key>"
              "<date>2001-01-01T00:20:34Z</date><key>text</key><string>hello</string></dict></plist>");
    NSUserDefaults *defaults = fresh();
    EXPECT_EQ("hello", textOf([defaults stringForKey:@"text"]));
    NSDate *date = [defaults objectForKey:@"date"];
    EXPECT_TRUE([date isKindOfClass:[NSDate class]]);
    EXPECT_EQ(1234, [date timeIntervalSinceReferenceDate]);
    [defaults setObject:date forKey:@"copy"];
    EXPECT_TRUE([defaults synchronize]);
    EXPECT_EQ(1234, [[fresh() objectForKey:@"copy"] timeIntervalSinceReferenceDate]);
}

TEST_F(DefaultsStorage, GNUstepsOwnToolReadsIt)
{
    [standard setObject:text("gr\xC3\xBC\xC3\x9F dich \xF0\x9F\x91\x8B") forKey:@"Greeting"];
    [standard setInteger:7 forKey:@"Seven"];
    [standard synchronize];
    std::string tool = std::string(kDefaultsTool) + " read " + [domain() UTF8String] + " ";
    EXPECT_NE(std::string::npos, outputOf(tool + "Seven").find("7"));
    EXPECT_NE(std::string::npos, outputOf(tool + "Greeting").find("gr\xC3\xBC\xC3\x9F dich \xF0\x9F\x91\x8B"));
}

TEST_F(DefaultsStorage, WhatGNUstepsOwnToolWritesIsRead)
{
    [standard setInteger:1 forKey:@"mine"];
    [standard synchronize];
    outputOf(std::string(kDefaultsTool) + " write " + [domain() UTF8String] + " Theirs hello");
    [standard synchronize];
    EXPECT_EQ("hello", textOf([standard stringForKey:@"Theirs"]));
    EXPECT_EQ(1, [standard integerForKey:@"mine"]);
}

// The time of the disk's clock, a tick behind, is set here as if the other had written within that tick.
TEST_F(DefaultsStorage, AWriteRightAfterTheLastLookIsSeenAtTheNext)
{
    NSUserDefaults *writer = fresh();
    [standard synchronize];
    timespec tick[2];
    clock_gettime(CLOCK_REALTIME, &tick[0]);
    tick[1] = tick[0];
    [standard synchronize];
    [writer setInteger:5 forKey:@"counter"];
    [writer synchronize];
    ASSERT_EQ(0, utimensat(AT_FDCWD, folder().c_str(), tick, 0));
    [standard synchronize];
    EXPECT_EQ(5, [standard integerForKey:@"counter"]);
}

} // namespace
