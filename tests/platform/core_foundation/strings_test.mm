#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

namespace {

class Strings : public PlatformTest {
protected:
    static NSString *make(const std::u16string &units)
    {
        return [(NSString *)CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units.data()),
                                                         units.size()) autorelease];
    }

    static std::u16string unitsOf(id string)
    {
        std::u16string units(CFStringGetLength((CFStringRef)string), u' ');
        CFStringGetCharacters((CFStringRef)string, CFRangeMake(0, units.size()),
                              reinterpret_cast<UniChar *>(units.data()));
        return units;
    }

    static std::u16string normalized(const std::u16string &units, CFStringNormalizationForm form)
    {
        CFMutableStringRef copy = CFStringCreateMutableCopy(nullptr, 0, (CFStringRef)make(units));
        CFStringNormalize(copy, form);
        std::u16string result = unitsOf((id)copy);
        CFRelease(copy);
        return result;
    }
};

const std::u16string awkward[] = {
    u"",
    u"plain",
    u"\uFEFFmarked",
    u"\uFFFEswapped",
    std::u16string(1, 0xD800),
    std::u16string(1, 0xDC00),
    std::u16string{'a', 0xDC00, 0xD800, 'b'},
    u"\U0001F44B",
    std::u16string{'a', 0, 'b'},
};

TEST_F(Strings, UnitsAreKeptWhateverTheyAre)
{
    for (const std::u16string &units : awkward)
        EXPECT_EQ(units, unitsOf(make(units)));
}

TEST_F(Strings, AMutableCopyKeepsThemToo)
{
    for (const std::u16string &units : awkward) {
        CFMutableStringRef copy = CFStringCreateMutableCopy(nullptr, 0, (CFStringRef)make(units));
        EXPECT_EQ(units, unitsOf((id)copy));
        EXPECT_TRUE([(id)copy isEqual:make(units)]);
        CFRelease(copy);
    }
}

TEST_F(Strings, TheyAreKeysOfDictionariesAndSurviveTheDefaultsDatabase)
{
    NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
    for (const std::u16string &units : awkward) {
        NSDictionary *dictionary = [NSDictionary dictionaryWithObject:@"value" forKey:make(units)];
        EXPECT_TRUE([[dictionary objectForKey:make(units)] isEqual:@"value"]);
        [defaults setObject:[NSArray arrayWithObjects:make(units), dictionary, nil] forKey:@"key"];
        EXPECT_TRUE([defaults synchronize]);
        NSArray *read = [[[[NSUserDefaults alloc] init] autorelease] objectForKey:@"key"];
        EXPECT_EQ(units, unitsOf([read objectAtIndex:0]));
        EXPECT_TRUE([[[read objectAtIndex:1] objectForKey:make(units)] isEqual:@"value"]);
    }
}

TEST_F(Strings, NothingIsMadeOfANullPointerOrANegativeLength)
{
    const UniChar unit = 'a';
    EXPECT_EQ(nullptr, CFStringCreateWithCString(nullptr, nullptr, kCFStringEncodingUTF8));
    EXPECT_EQ(nullptr, CFStringCreateWithBytes(nullptr, nullptr, 1, kCFStringEncodingUTF8, false));
    EXPECT_EQ(nullptr, CFStringCreateWithCharacters(nullptr, nullptr, 1));
    EXPECT_EQ(nullptr, CFStringCreateWithCharacters(nullptr, &unit, -1));
    EXPECT_EQ(nullptr, CFStringCreateMutableCopy(nullptr, 0, nullptr));
}

TEST_F(Strings, ACStringEndsAtItsFirstZero)
{
    CFStringRef string = CFStringCreateWithCString(nullptr, "ab\0cd", kCFStringEncodingUTF8);
    EXPECT_EQ(u"ab", unitsOf((id)string));
    CFRelease(string);
}

TEST_F(Strings, ABufferMustHoldTheFinalZeroToo)
{
    char buffer[4] = "???";
    CFStringRef string = (CFStringRef) @"abc";
    EXPECT_FALSE(CFStringGetCString(string, buffer, 3, kCFStringEncodingUTF8));
    EXPECT_FALSE(CFStringGetCString(string, buffer, 0, kCFStringEncodingUTF8));
    EXPECT_TRUE(CFStringGetCString(string, buffer, 4, kCFStringEncodingUTF8));
    EXPECT_STREQ("abc", buffer);
}

TEST_F(Strings, ALimitOnTheCopyIsKept)
{
    CFMutableStringRef copy = CFStringCreateMutableCopy(nullptr, 3, (CFStringRef) @"abc");
    EXPECT_NE(nullptr, copy);
    CFRelease(copy);
    EXPECT_EQ(nullptr, CFStringCreateMutableCopy(nullptr, 2, (CFStringRef) @"abc"));
}

TEST_F(Strings, PartsAreReadByRange)
{
    UniChar units[2];
    CFStringGetCharacters((CFStringRef) @"abcd", CFRangeMake(1, 2), units);
    EXPECT_EQ('b', units[0]);
    EXPECT_EQ('c', units[1]);
    EXPECT_EQ("NSRangeException",
              raisedBy([&] { CFStringGetCharacters((CFStringRef)make(awkward[2]), CFRangeMake(5, 9), units); }));
}

TEST_F(Strings, TheFourNormalForms)
{
    const std::u16string text = u"\u00E9\uFB01\uAC01";
    EXPECT_EQ(u"e\u0301\uFB01\u1100\u1161\u11A8", normalized(text, kCFStringNormalizationFormD));
    EXPECT_EQ(u"e\u0301fi\u1100\u1161\u11A8", normalized(text, kCFStringNormalizationFormKD));
    EXPECT_EQ(u"\u00E9\uFB01\uAC01", normalized(u"e\u0301\uFB01\u1100\u1161\u11A8", kCFStringNormalizationFormC));
    EXPECT_EQ(u"\u00E9fi\uAC01", normalized(u"e\u0301\uFB01\u1100\u1161\u11A8", kCFStringNormalizationFormKC));
}

TEST_F(Strings, MarksAreOrdered)
{
    EXPECT_EQ(u"a\u0323\u0301", normalized(u"a\u0301\u0323", kCFStringNormalizationFormD));
}

TEST_F(Strings, GreekLettersOfFourUnitsAreDecomposed)
{
    EXPECT_EQ(u"\u03B1\u0313\u0300\u0345", normalized(u"\u1F82", kCFStringNormalizationFormD));
    EXPECT_EQ(u"\u03B1\u0313\u0300\u0345\u03B1\u0313\u0300\u0345",
              normalized(u"\u1F82\u1F82", kCFStringNormalizationFormD));
}

TEST_F(Strings, NormalizingKeepsAwkwardUnits)
{
    for (const std::u16string &units : awkward)
        EXPECT_EQ(units, normalized(units, kCFStringNormalizationFormD));
    EXPECT_EQ((std::u16string{0xD800, 'e', 0x301, 0xDC00}),
              normalized(std::u16string{0xD800, 0xE9, 0xDC00}, kCFStringNormalizationFormD));
}

} // namespace
