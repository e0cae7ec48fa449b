// The Core Foundation, Core Text and Core Services headers serve plain C++ too, with macOS's numbers and layouts.

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>

#include <gtest/gtest.h>

#include <stddef.h>

static_assert(sizeof(UInt32) == 4 && sizeof(SInt16) == 2 && sizeof(UniChar) == 2 && sizeof(Boolean) == 1);
static_assert(sizeof(CFIndex) == 4 && sizeof(CFTypeID) == 4 && sizeof(CFRange) == 8);
static_assert(sizeof(FSRef) == 80);
static_assert(sizeof(FSSpec) == 70 && offsetof(FSSpec, parID) == 2 && offsetof(FSSpec, name) == 6);
static_assert(sizeof(HFSUniStr255) == 512 && offsetof(HFSUniStr255, unicode) == 2);
static_assert(sizeof(FSCatalogInfo) == 144 && offsetof(FSCatalogInfo, nodeID) == 8);
static_assert(offsetof(FSCatalogInfo, permissions) == 56 && offsetof(FSCatalogInfo, textEncodingHint) == 140);

TEST(Headers, EncodingNumbersAreThoseOfTheMacOSHeaders)
{
    EXPECT_EQ(0x0000u, kCFStringEncodingMacRoman);
    EXPECT_EQ(0x0100u, kCFStringEncodingUnicode);
    EXPECT_EQ(0x0600u, kCFStringEncodingASCII);
    EXPECT_EQ(0x08000100u, kCFStringEncodingUTF8);
    EXPECT_EQ(0x0C000100u, kCFStringEncodingUTF32);
    EXPECT_EQ(0x1C000100u, kCFStringEncodingUTF32LE);
}

TEST(Headers, NormalizationFormDIsZero)
{
    EXPECT_EQ(0, kCFStringNormalizationFormD);
}

TEST(Headers, DefaultAllocatorIsNull)
{
    EXPECT_EQ(nullptr, kCFAllocatorDefault);
}
