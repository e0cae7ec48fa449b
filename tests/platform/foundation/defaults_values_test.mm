#include "tests/platform/foundation/support.h"

#include <stdlib.h>

#include <cmath>

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

// What is there, what is stored over it, and what is there then: a value that Core Foundation calls equal changes
// nothing, whatever its kind. Measured to 10.10 for Core Foundation; NSUserDefaults asks it at least to 10.7.
const struct {
    const char *there;
    const char *stored;
    const char *then;
} overwritten[] = {
    {"int 1", "double 1", "int 1"},
    {"double 1", "int 1", "double 1"},
    {"int 1", "int64 1", "int 1"},
    {"int 20", "int64 20", "int 20"},
    {"int64 20", "float 20", "int64 20"},
    {"int 1", "bool 1", "bool 1"},
    {"bool 1", "int 1", "int 1"},
    {"bool 1", "double 1", "double 1"},
    {"double 0", "double -0", "double -0"},
    {"int 0", "double -0", "double -0"},
    {"double nan", "float nan", "double nan"},
    {"double 0.5", "float 0.5", "double 0.5"},
    {"double 0.1", "float 0.1", "float 0.1"},
    {"int64 9007199254740993", "double 9007199254740993", "double 9007199254740993"},
};

TEST_F(DefaultsValues, AnEqualValueChangesNothing)
{
    auto number = [](std::string text) -> NSNumber * {
        const char *value = text.c_str() + text.find(' ') + 1;
        std::string kind = text.substr(0, text.find(' '));
        return kind == "int"     ? [NSNumber numberWithInt:atoi(value)]
               : kind == "int64" ? [NSNumber numberWithLongLong:atoll(value)]
               : kind == "bool"  ? [NSNumber numberWithBool:atoi(value)]
               : kind == "float" ? [NSNumber numberWithFloat:strtof(value, nullptr)]
                                 : [NSNumber numberWithDouble:strtod(value, nullptr)];
    };
    for (const auto &row : overwritten) {
        NSNumber *then = number(row.then);
        for (bool inside : {false, true}) {
            auto stored = [&](const char *text) -> id {
                return inside ? (id)[NSArray arrayWithObject:number(text)] : (id)number(text);
            };
            [standard setObject:stored(row.there) forKey:@"key"];
            [standard setObject:stored(row.stored) forKey:@"key"];
            id found = [standard objectForKey:@"key"];
            if (inside)
                found = [found objectAtIndex:0];
            EXPECT_STREQ([then objCType], [found objCType]) << row.there << ", " << row.stored;
            EXPECT_EQ(std::signbit([then doubleValue]), std::signbit([found doubleValue])) << row.stored;
            EXPECT_EQ(CFGetTypeID(then), CFGetTypeID(found)) << row.there << ", " << row.stored;
            [standard removeObjectForKey:@"key"];
        }
    }
}

// The kind changes when the value comes from the disk.
TEST_F(DefaultsValues, ANumberKeepsItsKindInTheProcessThatStoredIt)
{
    [standard setInteger:2147483647 forKey:@"integer"];
    [standard setObject:[NSNumber numberWithLongLong:800] forKey:@"long"];
    [standard setObject:[NSNumber numberWithShort:5] forKey:@"small"];
    for (int i = 0; i < 2; ++i) {
        EXPECT_STREQ("i", kindOf([standard objectForKey:@"integer"]));
        EXPECT_STREQ("q", kindOf([standard objectForKey:@"long"]));
        [standard synchronize];
    }
    EXPECT_STREQ("q", kindOf([fresh() objectForKey:@"integer"]));
    EXPECT_STREQ("q", kindOf([fresh() objectForKey:@"long"]));
    EXPECT_STREQ("i", kindOf([fresh() objectForKey:@"small"]));
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
