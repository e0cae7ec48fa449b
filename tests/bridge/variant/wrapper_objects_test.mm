// Wrapper objects for Cocoa objects: shared ones of named classes, and new ones of the most derived class.
#include "tests/bridge/crossing.h"

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

#include <functional>

using host::Value;

@interface DerivedWindow : NSWindow
@end
@implementation DerivedWindow
@end

@interface DerivedView : NSView
@end
@implementation DerivedView
@end

// Of the kind NSAttributedString when it is asked first, of no kind later.
@interface ObjectOfPassingKind : NSObject {
    int _asked;
}
@end

@implementation ObjectOfPassingKind

- (BOOL)isKindOfClass:(Class)kind
{
    return kind == [NSAttributedString class] && ++_asked == 1;
}

@end

namespace {

struct SharedRow {
    const char *wrapper;
    std::function<id()> make;
};

const SharedRow kSharedRows[] = {
    {"NSCalendarKTZ", [] { return [[[NSCalendar alloc] initWithCalendarIdentifier:NSGregorianCalendar] autorelease]; }},
    {"NSErrorKTZ", [] { return [NSError errorWithDomain:@"test" code:7 userInfo:nil]; }},
    {"NSRunningApplicationKTZ", [] { return [[[NSRunningApplication alloc] init] autorelease]; }},
    {"NSFontKTZ", [] { return [NSFont systemFontOfSize:12]; }},
    {"NSFileHandleKTZ", [] { return [NSFileHandle fileHandleWithNullDevice]; }},
    {"NSCharacterSetKTZ", [] { return [NSCharacterSet characterSetWithCharactersInString:@"xyz"]; }},
    {"NSLocaleKTZ", [] { return [[[NSLocale alloc] initWithLocaleIdentifier:@"de_DE"] autorelease]; }},
    {"NSTimerKTZ",
     [] {
         return [NSTimer timerWithTimeInterval:1000
                                        target:@"x"
                                      selector:@selector(description)
                                      userInfo:nil
                                       repeats:NO];
     }},
    {"NSTimeZoneKTZ", [] { return [NSTimeZone timeZoneForSecondsFromGMT:3600]; }},
    {"NSParagraphStyleKTZ", [] { return [NSParagraphStyle defaultParagraphStyle]; }},
};
static_assert(std::size(kSharedRows) == 10);

struct WalkedRow {
    const char *wrapper;
    std::function<id()> make;
};

NSWindow *newWindow(Class windowClass)
{
    return [[[windowClass alloc] initWithContentRect:NSMakeRect(0, 0, 10, 10)
                                           styleMask:NSBorderlessWindowMask
                                             backing:NSBackingStoreBuffered
                                               defer:YES] autorelease];
}

const WalkedRow kWalkedRows[] = {
    {"NSAttributedStringKTZ", [] { return [[[NSMutableAttributedString alloc] initWithString:@"x"] autorelease]; }},
    {"NSWindowKTZ", [] { return newWindow([DerivedWindow class]); }},
    {"NSViewKTZ", [] { return [[[DerivedView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)] autorelease]; }},
};

class WrapperObjects : public CrossingTest {
protected:
    // What the wrapper class's finaliser does in the family.
    void letGo(const Value &wrapper)
    {
        if (familyInstances())
            CFDictionaryRemoveValue(familyInstances(), carriedBy(wrapper));
        [carriedBy(wrapper) release];
        wordsOf(wrapper)[0] = 0;
    }
};

} // namespace

TEST_F(WrapperObjects, TheTenSharedClassesGiveOneWrapperForOneObject)
{
    start(profileWithBareFamily());
    for (const SharedRow &row : kSharedRows) {
        SCOPED_TRACE(row.wrapper);
        carrier(); // AppKit is started with the first instance
        defineWrapperClass(row.wrapper);
        id object = row.make();
        ASSERT_NE(object, nil);
        const NSUInteger retains = [object retainCount];
        Value one = toHost(object);
        ASSERT_TRUE(one.isObject());
        EXPECT_EQ(one.className(), row.wrapper);
        EXPECT_EQ(carriedBy(one), object);
        EXPECT_EQ(CFDictionaryGetValue(familyInstances(), object), one.handle());
        EXPECT_EQ(one.lockCount(), 1) << "an entry in the registry takes no lock";

        Value other = toHost(object);
        EXPECT_TRUE(one.sameHandle(other));
        EXPECT_EQ(one.lockCount(), 2);
        standIn()->answer = nil;
        [object release]; // the stand-in's
        if (retains < 1000)
            EXPECT_EQ([object retainCount], retains + 1) << "the wrapper owns one retain";
        letGo(one);
    }
}

TEST_F(WrapperObjects, ASharedClassThatTheHostLacksIsNil)
{
    start(profileWithBareFamily());
    defineWrapperClass("NSObjectKTZ");
    defineTaggedClass("CFObjectKTZ");
    carrier();
    for (const SharedRow &row : kSharedRows)
        EXPECT_TRUE(toHost(row.make()).isNil()) << row.wrapper;
}

TEST_F(WrapperObjects, WithoutARegistryEachConversionMakesAWrapper)
{
    host::Profile profile = profileWithBareFamily();
    profile.familyKeeps.erase("GetInstancesDictionaryKTZ");
    start(profile);
    defineWrapperClass("NSLocaleKTZ");
    id object = [[[NSLocale alloc] initWithLocaleIdentifier:@"fr_FR"] autorelease];
    Value one = toHost(object);
    Value other = toHost(object);
    EXPECT_FALSE(one.sameHandle(other));
    EXPECT_EQ(carriedBy(one), object);
    EXPECT_EQ(carriedBy(other), object);
    [object release];
    [object release];
}

TEST_F(WrapperObjects, AHostThatCannotMakeInstancesGivesNil)
{
    host.hide("PluginNewInstance");
    start(profileWithBareFamily());
    carrier();
    for (const SharedRow &row : kSharedRows)
        EXPECT_TRUE(toHost(row.make()).isNil()) << row.wrapper;
    for (const WalkedRow &row : kWalkedRows)
        EXPECT_TRUE(toHost(row.make()).isNil()) << row.wrapper;
    EXPECT_TRUE(toHost([NSProcessInfo processInfo]).isNil());
    EXPECT_TRUE(toHost([NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]).isNil());
    EXPECT_TRUE(toHost([NSDictionary dictionary]).isNil());
    EXPECT_TRUE(toHost([NSDate date]).isNil());
}

TEST_F(WrapperObjects, TheThreeWalkedClassesGiveANewWrapperEachTime)
{
    start(profileWithBareFamily());
    carrier();
    for (const WalkedRow &row : kWalkedRows) {
        SCOPED_TRACE(row.wrapper);
        EXPECT_TRUE(toHost(row.make()).isNil()) << "the host knows no class for it";
        defineWrapperClass(row.wrapper);
        id object = row.make();
        Value one = toHost(object);
        Value other = toHost(object);
        ASSERT_TRUE(one.isObject());
        EXPECT_EQ(one.className(), row.wrapper);
        EXPECT_EQ(carriedBy(one), object);
        EXPECT_FALSE(one.sameHandle(other));
        EXPECT_EQ(CFDictionaryGetValue(familyInstances(), object), nullptr);
        letGo(one);
        letGo(other);
    }
}

TEST_F(WrapperObjects, TheMostDerivedClassThatTheHostKnowsIsTaken)
{
    start(profileWithBareFamily());
    carrier();
    for (const char *wrapper : {"NSObjectKTZ", "NSResponderKTZ", "NSWindowKTZ", "DerivedWindowKTZ"}) {
        defineWrapperClass(wrapper);
        Value value = toHost(newWindow([DerivedWindow class]));
        ASSERT_TRUE(value.isObject());
        EXPECT_EQ(value.className(), wrapper);
        letGo(value);
    }
}

TEST_F(WrapperObjects, AClassNameOf199CharactersIsTriedAndOneOf200IsPassedOver)
{
    start(profileWithBareFamily());
    defineWrapperClass("NSObjectKTZ");
    for (size_t length : {198, 199, 200, 201, 400}) {
        const std::string name = "N" + std::string(length - 1, 'n');
        Class longNamed = objc_allocateClassPair([NSObject class], name.c_str(), 0);
        objc_registerClassPair(longNamed);
        defineWrapperClass(name + "KTZ");
        Value value = toHost([[[longNamed alloc] init] autorelease]);
        ASSERT_EQ(!everyObjectIsTyped(), value.isObject()) << length;
        if (everyObjectIsTyped())
            continue; // the names of its classes are not asked for
        EXPECT_EQ(value.className(), length < 200 ? name + "KTZ" : "NSObjectKTZ") << length;
        letGo(value);
    }
}

// The instance is made first and the question asked after: host classes count their instances, and the family's
// libraries have been seen to rely on the order of the two.
TEST_F(WrapperObjects, AnObjectOfAnotherKindLeavesAnInstanceOfEachClassBehind)
{
    start(profileWithBareFamily());
    for (const char *wrapper : {"NSObjectKTZ", "ObjectOfPassingKindKTZ"})
        defineWrapperClass(wrapper);
    ObjectOfPassingKind *object = [[[ObjectOfPassingKind alloc] init] autorelease];
    EXPECT_TRUE(toHost(object).isNil());
    EXPECT_EQ(releaseLeftBehind("NSObjectKTZ"), 1);
    EXPECT_EQ(releaseLeftBehind("ObjectOfPassingKindKTZ"), 1);
}

TEST_F(WrapperObjects, AViewIsOfferedToTheMovieLibraryFirst)
{
    start(profileWithBareFamily());
    defineWrapperClass("NSViewKTZ");
    defineWrapperClass("MovieView");
    static void *answer;
    static id offered;
    id view = [[[DerivedView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)] autorelease];
    Value plain = toHost(view);
    EXPECT_TRUE(plain.isA("NSViewKTZ")) << "without that library";
    letGo(plain);

    addClassMethod("NSValue", "NewQTKitNSViewKTZ:", bodyOf([](id, SEL, id object) -> void * {
                       offered = object;
                       return answer;
                   }));
    Value declined = toHost(view);
    EXPECT_EQ(offered, view);
    EXPECT_TRUE(declined.isA("NSViewKTZ")) << "declined by it";
    letGo(declined);

    Value movie = host.newInstance("MovieView");
    answer = lockedForPlugin(movie);
    EXPECT_TRUE(toHost(view).sameHandle(movie));
    EXPECT_EQ(movie.lockCount(), 1);
}
