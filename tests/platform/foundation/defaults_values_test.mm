#include "tests/platform/foundation/support.h"

namespace {

class DefaultsValues : public DefaultsTest {
protected:
    static const char *kindOf(id value) { return [value objCType]; }
};

TEST_F(DefaultsValues, StringForKeyGivesTheTextOfANumber)
{
    [standard setInteger:-42 forKey:@"integer"];
    [standard setDouble:0.5 forKey:@"real"];
    [standard setBool:YES forKey:@"boolean"];
    [standard setObject:@"text" forKey:@"text"];
    [standard setObject:[NSArray array] forKey:@"array"];
    EXPECT_EQ("-42", textOf([standard stringForKey:@"integer"]));
    EXPECT_EQ("0.5", textOf([standard stringForKey:@"real"]));
    EXPECT_EQ("1", textOf([standard stringForKey:@"boolean"]));
    EXPECT_EQ("text", textOf([standard stringForKey:@"text"]));
    EXPECT_EQ(nil, [standard stringForKey:@"array"]);
    EXPECT_EQ(nil, [standard stringForKey:@"missing"]);
}

TEST_F(DefaultsValues, StringArrayForKeyHoldsStringsOnly)
{
    [standard setObject:[NSArray arrayWithObjects:@"a", @"b", nil] forKey:@"strings"];
    [standard setObject:[NSArray arrayWithObjects:@"a", [NSNumber numberWithInt:1], nil] forKey:@"mixed"];
    EXPECT_EQ(2u, [[standard stringArrayForKey:@"strings"] count]);
    EXPECT_EQ(nil, [standard stringArrayForKey:@"mixed"]);
}

TEST_F(DefaultsValues, AnEqualNumberOfAnotherKindReplacesTheOneThere)
{
    [standard setInteger:1 forKey:@"key"];
    [standard setBool:YES forKey:@"key"];
    EXPECT_STREQ("c", kindOf([standard objectForKey:@"key"]));
    [standard setDouble:1 forKey:@"key"];
    EXPECT_STREQ("d", kindOf([standard objectForKey:@"key"]));
    [standard synchronize];
    EXPECT_STREQ("d", kindOf([fresh() objectForKey:@"key"]));
    [standard setInteger:1 forKey:@"key"];
    [standard synchronize];
    EXPECT_STREQ("i", kindOf([fresh() objectForKey:@"key"]));
}

TEST_F(DefaultsValues, SoDoesOneWithinACollection)
{
    NSArray *integers = [NSArray arrayWithObject:[NSNumber numberWithInt:1]];
    NSArray *booleans = [NSArray arrayWithObject:[NSNumber numberWithBool:YES]];
    [standard setObject:integers forKey:@"key"];
    [standard setObject:booleans forKey:@"key"];
    [standard synchronize];
    EXPECT_STREQ("c", kindOf([[fresh() objectForKey:@"key"] objectAtIndex:0]));
}

TEST_F(DefaultsValues, NilRemovesAndANilKeyIsRefused)
{
    [standard setInteger:1 forKey:@"key"];
    [standard setObject:nil forKey:@"key"];
    EXPECT_EQ(nil, [standard objectForKey:@"key"]);
    EXPECT_EQ("NSInvalidArgumentException", raisedBy([&] { [standard setInteger:1 forKey:nil]; }));
    EXPECT_EQ(0, [standard integerForKey:nil]);
    EXPECT_EQ(nil, [standard objectForKey:nil]);
}

// What cannot be written must not be taken: the whole domain would stay unwritten.
TEST_F(DefaultsValues, WhatIsNoPropertyListIsRefused)
{
    NSDictionary *numbered = [NSDictionary dictionaryWithObject:@"v" forKey:[NSNumber numberWithInt:1]];
    for (id value in [NSArray arrayWithObjects:numbered, [NSArray arrayWithObject:numbered], [NSNull null],
                                               [NSURL URLWithString:@"http://x.org/"], nil]) {
        EXPECT_EQ("NSInvalidArgumentException", raisedBy([&] { [standard setObject:value forKey:@"key"]; }));
        EXPECT_EQ(nil, [standard objectForKey:@"key"]);
    }
}

TEST_F(DefaultsValues, NorIsADomainThatIsNone)
{
    NSDictionary *numbered = [NSDictionary dictionaryWithObject:@"v" forKey:[NSNumber numberWithInt:1]];
    EXPECT_EQ("NSInvalidArgumentException",
              raisedBy([&] { [standard setPersistentDomain:numbered forName:@"other"]; }));
    EXPECT_EQ("NSInvalidArgumentException", raisedBy([&] {
                  [standard setPersistentDomain:[NSDictionary dictionaryWithObject:[NSNull null] forKey:@"k"]
                                        forName:@"other"];
              }));
    EXPECT_EQ(nil, [standard persistentDomainForName:@"other"]);
}

TEST_F(DefaultsValues, SettingADomainReplacesAllOfIt)
{
    [standard setPersistentDomain:[NSDictionary dictionaryWithObject:@"old" forKey:@"old"] forName:@"other"];
    [standard synchronize];
    NSUserDefaults *later = fresh(); // knows that the domain exists, and has not read it
    [later setPersistentDomain:[NSDictionary dictionaryWithObject:@"new" forKey:@"new"] forName:@"other"];
    [later synchronize];
    NSDictionary *domain = [fresh() persistentDomainForName:@"other"];
    EXPECT_EQ(1u, [domain count]);
    EXPECT_EQ("new", textOf([domain objectForKey:@"new"]));
}

} // namespace
