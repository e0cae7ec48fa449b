#include "platform/gnustep/test_support.h"
#include "tests/platform/support.h"

#import <AppKit/AppKit.h>

#include <set>

@interface NSObject (CoreFoundationType)
- (CFTypeID)_cfTypeID;
@end

namespace {

class Types : public PlatformTest {};

TEST_F(Types, EachOfThe26FunctionsHasItsOwnPositiveNumber)
{
    CFTypeID (*const functions[])() = {
        CFURLGetTypeID,         CFDictionaryGetTypeID,
        CFStringGetTypeID,      CFNumberGetTypeID,
        CFArrayGetTypeID,       CFBooleanGetTypeID,
        CFDataGetTypeID,        CFCharacterSetGetTypeID,
        CFBundleGetTypeID,      CFSetGetTypeID,
        CFBagGetTypeID,         CFUUIDGetTypeID,
        CFTimeZoneGetTypeID,    CFDateGetTypeID,
        CFErrorGetTypeID,       CFAttributedStringGetTypeID,
        CTFontGetTypeID,        CTFontCollectionGetTypeID,
        CTFrameGetTypeID,       CTFramesetterGetTypeID,
        CTGlyphInfoGetTypeID,   CTLineGetTypeID,
        CTRunGetTypeID,         CTParagraphStyleGetTypeID,
        CTRunDelegateGetTypeID, CTTypesetterGetTypeID,
    };
    std::set<CFTypeID> numbers;
    for (auto function : functions) {
        ASSERT_NE(nullptr, function);
        EXPECT_GT(function(), 1u);
        numbers.insert(function());
    }
    EXPECT_EQ(26u, numbers.size());
}

TEST_F(Types, BridgedObjectsHaveTheNumberOfTheirType)
{
    id attributed = [[[NSAttributedString alloc] initWithString:@"a"] autorelease];
    id error = [NSError errorWithDomain:@"d" code:1 userInfo:nil];
    EXPECT_EQ(CFStringGetTypeID(), CFGetTypeID(@"a"));
    EXPECT_EQ(CFStringGetTypeID(), CFGetTypeID([NSMutableString string]));
    EXPECT_EQ(CFURLGetTypeID(), CFGetTypeID([NSURL URLWithString:@"http://x.org/"]));
    EXPECT_EQ(CFDictionaryGetTypeID(), CFGetTypeID([NSDictionary dictionary]));
    EXPECT_EQ(CFArrayGetTypeID(), CFGetTypeID([NSMutableArray array]));
    EXPECT_EQ(CFDataGetTypeID(), CFGetTypeID([NSData data]));
    EXPECT_EQ(CFSetGetTypeID(), CFGetTypeID([NSSet set]));
    EXPECT_EQ(CFDateGetTypeID(), CFGetTypeID([NSDate date]));
    EXPECT_EQ(CFTimeZoneGetTypeID(), CFGetTypeID([NSTimeZone systemTimeZone]));
    EXPECT_EQ(CFCharacterSetGetTypeID(), CFGetTypeID([NSCharacterSet letterCharacterSet]));
    EXPECT_EQ(CFErrorGetTypeID(), CFGetTypeID(error));
    EXPECT_EQ(CFAttributedStringGetTypeID(), CFGetTypeID(attributed));
}

TEST_F(Types, BooleansAreNoNumbers)
{
    EXPECT_EQ(CFBooleanGetTypeID(), CFGetTypeID([NSNumber numberWithBool:YES]));
    EXPECT_EQ(CFBooleanGetTypeID(), CFGetTypeID([NSNumber numberWithBool:NO]));
    EXPECT_EQ(CFNumberGetTypeID(), CFGetTypeID([NSNumber numberWithInt:1]));
    EXPECT_EQ(CFNumberGetTypeID(), CFGetTypeID([NSNumber numberWithDouble:0]));
}

TEST_F(Types, PlainObjectsDoNotRespondToTheTypeSelector)
{
    NSObject *plain = [[[NSObject alloc] init] autorelease];
    EXPECT_FALSE([plain respondsToSelector:@selector(_cfTypeID)]);
    EXPECT_FALSE([[NSValue valueWithPointer:nullptr] respondsToSelector:@selector(_cfTypeID)]);
    EXPECT_EQ(1u, CFGetTypeID(plain));
    EXPECT_TRUE([@"a" respondsToSelector:@selector(_cfTypeID)]);
}

TEST_F(Types, RetainAndReleaseCountTheObjectItself)
{
    NSObject *object = [[NSObject alloc] init];
    EXPECT_EQ(object, CFRetain(object));
    EXPECT_EQ(2u, [object retainCount]);
    CFRelease(object);
    EXPECT_EQ(1u, [object retainCount]);
    [object release];
}

TEST_F(Types, TestObjectsHaveAnyTypeAndAreCounted)
{
    CFTypeRef frame = PlatformCreateObject(CTFrameGetTypeID());
    CFTypeRef unknown = PlatformCreateObject(4711);
    EXPECT_EQ(CTFrameGetTypeID(), CFGetTypeID(frame));
    EXPECT_EQ(4711u, CFGetTypeID(unknown));
    EXPECT_EQ(2, PlatformLiveObjects());
    CFRelease(CFRetain(frame));
    EXPECT_EQ(2, PlatformLiveObjects());
    CFRelease(frame);
    CFRelease(unknown);
    EXPECT_EQ(0, PlatformLiveObjects());
}

TEST_F(Types, TestObjectsMayAnswerNoType)
{
    CFTypeRef none = PlatformCreateObject(0);
    EXPECT_EQ(0u, [(id)none _cfTypeID]);
    EXPECT_EQ(1u, CFGetTypeID(none));
    CFRelease(none);
}

TEST_F(Types, TypesAreFoundByTheirNames)
{
    EXPECT_EQ(CFErrorGetTypeID(), PlatformTypeIDNamed("CFError"));
    EXPECT_EQ(CFURLGetTypeID(), PlatformTypeIDNamed("CFURL"));
    EXPECT_EQ(0u, PlatformTypeIDNamed("CFNothing"));
}

// macOS's NSObject very likely does.
TEST_F(Types, EveryObjectHasOneWhereTheSettingAsksForIt)
{
    NSObject *plain = [[[NSObject alloc] init] autorelease];
    if (inNewProcess({{"PLATFORM_TYPED_OBJECTS", "1"}})) {
        EXPECT_GT([plain _cfTypeID], 0u);
        EXPECT_EQ([plain _cfTypeID], CFGetTypeID(plain));
        EXPECT_EQ([plain _cfTypeID], [[NSProcessInfo processInfo] _cfTypeID]);
        EXPECT_EQ(CFStringGetTypeID(), CFGetTypeID(@"text"));
    } else {
        EXPECT_FALSE([plain respondsToSelector:@selector(_cfTypeID)]);
    }
}

} // namespace
