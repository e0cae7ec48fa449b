#include "tests/platform/foundation/support.h"

#include <filesystem>

namespace {

class ManagedDefaults : public DefaultsTest {
protected:
    void manage(NSString *name, NSDictionary *values)
    {
        std::string managed = folder() + "/Managed Preferences";
        std::filesystem::create_directories(managed);
        [values writeToFile:text((managed + "/" + [name UTF8String] + ".plist").c_str()) atomically:YES];
        [standard synchronize];
    }

    static NSDictionary *one(NSString *value, NSString *key)
    {
        return [NSDictionary dictionaryWithObject:value forKey:key];
    }
};

TEST_F(ManagedDefaults, NothingIsForcedWithoutTheFolder)
{
    [standard setInteger:1 forKey:@"key"];
    EXPECT_FALSE([standard objectIsForcedForKey:@"key"]);
    EXPECT_FALSE([standard objectIsForcedForKey:@"key" inDomain:domain()]);
}

TEST_F(ManagedDefaults, AForcedValueStandsInFrontOfAllOthers)
{
    manage(domain(), one(@"fixed", @"key"));
    [standard setObject:@"mine" forKey:@"key"];
    EXPECT_EQ("fixed", textOf([standard stringForKey:@"key"]));
    EXPECT_EQ("fixed", textOf([[standard dictionaryRepresentation] objectForKey:@"key"]));
    EXPECT_TRUE([standard objectIsForcedForKey:@"key"]);
    EXPECT_TRUE([standard objectIsForcedForKey:@"key" inDomain:domain()]);
    EXPECT_EQ("fixed", textOf([fresh() stringForKey:@"key"]));
}

TEST_F(ManagedDefaults, ArgumentsStandInFrontOfIt)
{
    manage(domain(), one(@"fixed", @"key"));
    [standard removeVolatileDomainForName:NSArgumentDomain];
    [standard setVolatileDomain:one(@"argument", @"key") forName:NSArgumentDomain];
    EXPECT_EQ("argument", textOf([standard stringForKey:@"key"]));
    EXPECT_EQ("argument", textOf([[standard dictionaryRepresentation] objectForKey:@"key"]));
    EXPECT_TRUE([standard objectIsForcedForKey:@"key"]);
}

TEST_F(ManagedDefaults, WhatWasSetComesToLightWhenItIsForcedNoMore)
{
    manage(domain(), one(@"fixed", @"key"));
    [standard setObject:@"mine" forKey:@"key"];
    manage(domain(), [NSDictionary dictionary]);
    EXPECT_EQ("mine", textOf([standard stringForKey:@"key"]));
    EXPECT_FALSE([standard objectIsForcedForKey:@"key"]);
}

TEST_F(ManagedDefaults, OtherKeysAreFree)
{
    manage(domain(), one(@"fixed", @"key"));
    [standard setInteger:2 forKey:@"other"];
    EXPECT_EQ(2, [standard integerForKey:@"other"]);
    EXPECT_FALSE([standard objectIsForcedForKey:@"other"]);
}

TEST_F(ManagedDefaults, TheGlobalDomainForcesAfterTheApplications)
{
    manage(NSGlobalDomain, [NSDictionary dictionaryWithObjectsAndKeys:@"global", @"a", @"global", @"b", nil]);
    manage(domain(), one(@"application", @"a"));
    EXPECT_EQ("application", textOf([standard stringForKey:@"a"]));
    EXPECT_EQ("global", textOf([standard stringForKey:@"b"]));
    EXPECT_EQ("application", textOf([[standard dictionaryRepresentation] objectForKey:@"a"]));
    EXPECT_TRUE([standard objectIsForcedForKey:@"b"]);
    EXPECT_TRUE([standard objectIsForcedForKey:@"b" inDomain:NSGlobalDomain]);
    EXPECT_FALSE([standard objectIsForcedForKey:@"b" inDomain:domain()]);
}

TEST_F(ManagedDefaults, ADomainThatIsNotSearchedForcesNothingButInItself)
{
    manage(@"other.application", one(@"fixed", @"key"));
    EXPECT_FALSE([standard objectIsForcedForKey:@"key"]);
    EXPECT_TRUE([standard objectIsForcedForKey:@"key" inDomain:@"other.application"]);
    [standard addSuiteNamed:@"other.application"];
    EXPECT_TRUE([standard objectIsForcedForKey:@"key"]);
}

TEST_F(ManagedDefaults, NilAndEmptyNamesForceNothing)
{
    manage(domain(), one(@"fixed", @"key"));
    EXPECT_FALSE([standard objectIsForcedForKey:nil]);
    EXPECT_FALSE([standard objectIsForcedForKey:@""]);
    EXPECT_FALSE([standard objectIsForcedForKey:@"key" inDomain:nil]);
    EXPECT_FALSE([standard objectIsForcedForKey:@"key" inDomain:@""]);
    EXPECT_FALSE([standard objectIsForcedForKey:nil inDomain:domain()]);
}

TEST_F(ManagedDefaults, AFileThatIsNoPropertyListForcesNothing)
{
    manage(domain(), one(@"fixed", @"key"));
    writeFile(folder() + "/Managed Preferences/" + [domain() UTF8String] + ".plist", "{ broken");
    [standard synchronize];
    EXPECT_FALSE([standard objectIsForcedForKey:@"key"]);
}

} // namespace
