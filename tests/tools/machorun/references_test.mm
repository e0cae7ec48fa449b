// What the loader fixes up before any code of an image runs.
#include "tests/tools/machorun/loaded_image.h"

#include <Foundation/Foundation.h>

class References : public LoadedImage {};
INSTANTIATE_FOR_EVERY_IMAGE(References);

TEST_P(References, PointersBetweenSectionsLeadWhereTheyShould)
{
    EXPECT_EQ(call<int>("pointersBetweenSections"), 1);
}

TEST_P(References, InitializersRunOnceAtLoading)
{
    EXPECT_EQ(call<int>("valueSetByInitializer"), 42);
}

TEST_P(References, UninitializedMemoryIsZero)
{
    EXPECT_EQ(call<int>("countedUpFromZero"), 1);
    EXPECT_EQ(call<int>("countedUpFromZero"), 2);
}

TEST_P(References, ClassesAreTheOnesOfTheProcess)
{
    NSString *string = [NSString stringWithUTF8String:"text"];
    EXPECT_EQ(call<int>("isKindOfString", static_cast<id>(string)), 1);
    EXPECT_EQ(call<int>("isKindOfString", static_cast<id>([NSNumber numberWithInt:1])), 0);
}

TEST_P(References, SelectorsAreTheOnesOfTheProcess)
{
    id defaults = [NSUserDefaults standardUserDefaults];
    EXPECT_EQ(call<int>("respondsTo", defaults, 1), 1);
    EXPECT_EQ(call<int>("respondsTo", defaults, 0), 0);
}

TEST_P(References, ConstantStringsAreStringsOfTheProcess)
{
    EXPECT_STREQ([call<id>("asciiString") UTF8String], "plain text");
    EXPECT_EQ([call<id>("asciiString") hash], [[NSString stringWithUTF8String:"plain text"] hash]);
    EXPECT_TRUE([[NSString stringWithUTF8String:"plain text"] isEqual:call<id>("asciiString")]);
    EXPECT_EQ([call<id>("emptyString") length], 0u);
    EXPECT_EQ(call<int>("characterOfAsciiString", 6u), 't');
}

TEST_P(References, ConstantStringsBeyondAsciiKeepTheirCharacters)
{
    EXPECT_STREQ([call<id>("utf16String") UTF8String], "h\u00e9llo \u2603 \U0001F600");
    EXPECT_EQ([call<id>("utf16String") length], 10u);
    EXPECT_EQ(call<unsigned>("lengthOfUtf16String"), 10u);
}

TEST_P(References, ConstantStringServesAsKey)
{
    NSDictionary *dictionary = [NSDictionary dictionaryWithObject:@"value"
                                                           forKey:[NSString stringWithUTF8String:"plain text"]];
    EXPECT_TRUE([[dictionary objectForKey:call<id>("asciiString")] isEqual:@"value"]);
}

TEST_P(References, VariablesOfFoundationAreTheProcessesOwn)
{
    EXPECT_EQ(call<id>("importedVariable"), NSGlobalDomain);
}

TEST_P(References, CoreFoundationTakesConstantStrings)
{
    EXPECT_EQ(call<long>("lengthOfConstantThroughCoreFoundation"), 4);
}
