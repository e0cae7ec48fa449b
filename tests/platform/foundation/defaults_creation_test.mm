#include "tests/platform/foundation/support.h"

#include <malloc.h>
#include <unistd.h>

namespace {

class DefaultsCreation : public DefaultsTest {};

TEST_F(DefaultsCreation, AnObjectMadeWithInitSearchesTheUsualDomains)
{
    [standard setInteger:5 forKey:@"key"];
    [standard synchronize];
    NSUserDefaults *other = [[NSUserDefaults alloc] init];
    EXPECT_NE(standard, other);
    EXPECT_EQ(5, [other integerForKey:@"key"]);
    EXPECT_TRUE([[other searchList] isEqual:[standard searchList]]);
    [other release];
}

TEST_F(DefaultsCreation, WhatItStoresIsThereForTheOthers)
{
    NSUserDefaults *other = fresh();
    [other setInteger:6 forKey:@"key"];
    EXPECT_EQ(6, [other integerForKey:@"key"]);
    EXPECT_TRUE([other synchronize]);
    [standard synchronize];
    EXPECT_EQ(6, [standard integerForKey:@"key"]);
    [other removeObjectForKey:@"key"];
    [other synchronize];
    EXPECT_EQ(nil, [fresh() objectForKey:@"key"]);
}

TEST_F(DefaultsCreation, ItHasArgumentsAndItsOwnRegistrationDomain)
{
    NSUserDefaults *other = fresh();
    [other registerDefaults:[NSDictionary dictionaryWithObject:@"registered" forKey:@"key"]];
    EXPECT_EQ("registered", textOf([other stringForKey:@"key"]));
    EXPECT_EQ(nil, [standard objectForKey:@"key"]);
}

TEST_F(DefaultsCreation, TheFirstObjectMayBeMadeBeforeTheStandardOne)
{
    if (!inNewProcess({}))
        return;
    NSUserDefaults *first = [[[NSUserDefaults alloc] init] autorelease];
    EXPECT_NE(0u, [[first searchList] count]);
    EXPECT_NE(first, [NSUserDefaults standardUserDefaults]);
    EXPECT_EQ([NSUserDefaults standardUserDefaults], [NSUserDefaults standardUserDefaults]);
}

TEST_F(DefaultsCreation, TheStandardObjectStaysUsableAfterAReset)
{
    [standard setInteger:5 forKey:@"key"];
    [NSUserDefaults resetStandardUserDefaults];
    EXPECT_EQ(5, [[NSUserDefaults standardUserDefaults] integerForKey:@"key"]);
}

TEST_F(DefaultsCreation, AnObjectThatDiesLeavesNothingBehind)
{
    long afterTheFirst = 0;
    for (int i = 0; i < 200; i++) {
        if (i == 100)
            afterTheFirst = long(mallinfo2().uordblks);
        @autoreleasepool {
            [[[NSUserDefaults alloc] init] release];
        }
    }
    EXPECT_LT(long(mallinfo2().uordblks) - afterTheFirst, 100 * 16);
}

TEST_F(DefaultsCreation, NoUserNameMeansTheCurrentUser)
{
    [standard setInteger:5 forKey:@"key"];
    [standard synchronize];
    NSUserDefaults *other = [[[NSUserDefaults alloc] initWithUser:nil] autorelease];
    EXPECT_EQ(5, [other integerForKey:@"key"]);
    other = [[[NSUserDefaults alloc] initWithUser:NSUserName()] autorelease];
    EXPECT_EQ(5, [other integerForKey:@"key"]);
}

TEST_F(DefaultsCreation, AnUnknownUserGivesNil)
{
    EXPECT_EQ(nil, [[NSUserDefaults alloc] initWithUser:@"nobody-has-this-name"]);
    EXPECT_EQ(nil, [[NSUserDefaults alloc] initWithUser:@""]);
}

// A password file, a home folder for each user, and a configuration with a defaults folder in each.
class SeveralUsers : public testing::Test {
protected:
    bool inTheirProcess()
    {
        if (test_runner::isNewProcess()) {
            pool = [[NSAutoreleasePool alloc] init];
            return true;
        }
        TemporaryFolder home;
        std::string user = std::to_string(geteuid());
        writeFile(home / "passwd",
                  "one:x:" + user + ":0::" + home / "one:/bin/sh\ntwo:x:54321:0::" + home / "two" + ":/bin/sh\n");
        for (const char *name : {"one", "two"})
            mkdir((home / name).c_str(), 0700);
        std::string config = contentsOf(getenv("GNUSTEP_CONFIG_FILE"));
        writeFile(home / "GNUstep.conf", config + "\nGNUSTEP_USER_DEFAULTS_DIR=Defaults\n");
        chmod((home / "GNUstep.conf").c_str(), 0600);
        return inNewProcess({{"PLATFORM_TEST_PASSWD", home / "passwd"},
                             {"GNUSTEP_CONFIG_FILE", home / "GNUstep.conf"},
                             {"LOGNAME", "one"},
                             {"USER", "one"},
                             {"HOME", home / "one"}});
    }
    void TearDown() override { [(NSAutoreleasePool *)pool release]; }

private:
    id pool = nil;
};

TEST_F(SeveralUsers, HaveDefaultsOfTheirOwn)
{
    if (!inTheirProcess())
        return;
    EXPECT_EQ("one", textOf(NSUserName()));
    NSUserDefaults *one = [[[NSUserDefaults alloc] init] autorelease];
    NSUserDefaults *two = [[[NSUserDefaults alloc] initWithUser:@"two"] autorelease];
    [one setObject:@"of one" forKey:@"key"];
    [two setObject:@"of two" forKey:@"key"];
    EXPECT_TRUE([one synchronize]);
    EXPECT_TRUE([two synchronize]);
    two = [[[NSUserDefaults alloc] initWithUser:@"two"] autorelease];
    EXPECT_EQ("of two", textOf([two stringForKey:@"key"]));
    one = [[[NSUserDefaults alloc] initWithUser:@"one"] autorelease];
    EXPECT_EQ("of one", textOf([one stringForKey:@"key"]));
    NSString *path = [NSHomeDirectoryForUser(@"two") stringByAppendingPathComponent:@"Defaults/platform_test.plist"];
    EXPECT_TRUE([[NSFileManager defaultManager] fileExistsAtPath:path]);
}

TEST_F(SeveralUsers, OthersAreUnknown)
{
    if (!inTheirProcess())
        return;
    EXPECT_EQ(nil, [[NSUserDefaults alloc] initWithUser:@"root"]);
    EXPECT_EQ(nil, [[NSUserDefaults alloc] initWithUser:@"three"]);
}

TEST_F(SeveralUsers, FixedValuesAreThoseOfTheUser)
{
    if (!inTheirProcess())
        return;
    NSString *folder = [NSHomeDirectoryForUser(@"two") stringByAppendingPathComponent:@"Defaults/Managed Preferences"];
    [[NSFileManager defaultManager] createDirectoryAtPath:folder
                              withIntermediateDirectories:YES
                                               attributes:nil
                                                    error:nullptr];
    [[NSDictionary dictionaryWithObject:@"fixed" forKey:@"key"]
        writeToFile:[folder stringByAppendingPathComponent:@"platform_test.plist"]
         atomically:YES];
    NSUserDefaults *two = [[[NSUserDefaults alloc] initWithUser:@"two"] autorelease];
    EXPECT_TRUE([two objectIsForcedForKey:@"key"]);
    EXPECT_FALSE([[NSUserDefaults standardUserDefaults] objectIsForcedForKey:@"key"]);
}

} // namespace
