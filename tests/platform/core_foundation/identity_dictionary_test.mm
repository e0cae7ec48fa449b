#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

namespace {

class IdentityDictionary : public PlatformTest {
protected:
    CFMutableDictionaryRef dictionary = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
    ~IdentityDictionary() override { CFRelease(dictionary); }
};

const void *word(uintptr_t number)
{
    return reinterpret_cast<const void *>(number);
}

TEST_F(IdentityDictionary, FindsWhatWasSetAndReplacesIt)
{
    CFDictionarySetValue(dictionary, word(1), word(10));
    CFDictionarySetValue(dictionary, word(1), word(11));
    EXPECT_EQ(word(11), CFDictionaryGetValue(dictionary, word(1)));
    EXPECT_EQ(nullptr, CFDictionaryGetValue(dictionary, word(2)));
    EXPECT_EQ(1, CFDictionaryGetCount(dictionary));
}

TEST_F(IdentityDictionary, EqualObjectsAreDifferentKeys)
{
    NSString *a = [NSMutableString stringWithString:@"key"];
    NSString *b = [NSMutableString stringWithString:@"key"];
    CFDictionarySetValue(dictionary, a, word(1));
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(dictionary, a, nullptr));
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(dictionary, b, nullptr));
}

TEST_F(IdentityDictionary, RetainsNeitherKeysNorValues)
{
    NSObject *key = [[NSObject alloc] init];
    NSObject *value = [[NSObject alloc] init];
    CFDictionarySetValue(dictionary, key, value);
    EXPECT_EQ(1u, [key retainCount]);
    EXPECT_EQ(1u, [value retainCount]);
    CFDictionaryRemoveValue(dictionary, key);
    EXPECT_EQ(0, CFDictionaryGetCount(dictionary));
    [key release];
    [value release];
}

TEST_F(IdentityDictionary, NullIsAKeyAndAValue)
{
    const void *value = word(1);
    CFDictionarySetValue(dictionary, nullptr, nullptr);
    EXPECT_TRUE(CFDictionaryGetValueIfPresent(dictionary, nullptr, &value));
    EXPECT_EQ(nullptr, value);
    EXPECT_FALSE(CFDictionaryGetValueIfPresent(dictionary, word(3), &value));
}

TEST_F(IdentityDictionary, RemovingAMissingKeyDoesNothing)
{
    CFDictionarySetValue(dictionary, word(1), word(10));
    CFDictionaryRemoveValue(dictionary, word(2));
    EXPECT_EQ(1, CFDictionaryGetCount(dictionary));
}

TEST_F(IdentityDictionary, IsAMutableDictionaryOfFoundation)
{
    NSMutableDictionary *objects = (NSMutableDictionary *)dictionary;
    EXPECT_TRUE([objects isKindOfClass:[NSMutableDictionary class]]);
    [objects setObject:@"value" forKey:@"key"];
    NSUInteger seen = 0;
    for (id key in objects)
        seen += [[objects objectForKey:key] isEqual:@"value"];
    EXPECT_EQ(1u, seen);
    EXPECT_EQ(CFDictionaryGetTypeID(), CFGetTypeID(dictionary));
}

TEST_F(IdentityDictionary, CallBacksAreRefused)
{
    auto keys = static_cast<const CFDictionaryKeyCallBacks *>(word(4));
    auto values = static_cast<const CFDictionaryValueCallBacks *>(word(4));
    EXPECT_EQ(nullptr, CFDictionaryCreateMutable(nullptr, 0, keys, nullptr));
    EXPECT_EQ(nullptr, CFDictionaryCreateMutable(nullptr, 0, nullptr, values));
}

TEST_F(IdentityDictionary, TheFunctionsServeOrdinaryDictionariesToo)
{
    CFMutableDictionaryRef ordinary = (CFMutableDictionaryRef)[NSMutableDictionary dictionary];
    CFDictionarySetValue(ordinary, @"key", @"value");
    NSString *equalKey = [NSMutableString stringWithString:@"key"];
    EXPECT_TRUE([(id)CFDictionaryGetValue(ordinary, equalKey) isEqual:@"value"]);
    EXPECT_EQ(1, CFDictionaryGetCount(ordinary));
    CFDictionaryRemoveValue(ordinary, equalKey);
    EXPECT_EQ(0, CFDictionaryGetCount(ordinary));
}

} // namespace
