// For which kind a Cocoa object is taken: the first that fits, in one order.
#include "tests/bridge/crossing.h"
#include "tests/support/next_function.h"

#import <objc/runtime.h>

#include <algorithm>
#include <set>

using host::Value;

// Says NO to every class that it is asked for, except those named, and writes the names down.
@interface ObjectOfKinds : NSObject {
@public
    std::vector<std::string> *asked;
    std::vector<std::string> kinds;
}
@end

@implementation ObjectOfKinds

- (BOOL)isKindOfClass:(Class)kind
{
    if (asked)
        asked->push_back(kind ? [NSStringFromClass(kind) UTF8String] : "Nil");
    for (const std::string &each : kinds)
        if (kind && each == [NSStringFromClass(kind) UTF8String])
            return YES;
    return NO;
}

@end

namespace {

const std::vector<std::string> kKindsInOrder = {
    "NSArray",
    "NSSet",
    "NSString",
    "NSData",
    "NSNumber",
    "NSDate",
    "NSDictionary",
    "NSAttributedString",
    "NSCalendar",
    "NSError",
    "NSRunningApplication",
    "NSFont",
    "NSFileHandle",
    "NSCharacterSet",
    "NSLocale",
    "NSTimer",
    "NSWindow",
    "NSView",
    "NSTimeZone",
    "NSParagraphStyle",
    "NSURL",
    "KTZREALobjectWrapper",
    "NSValue",
};

// Classes that are not there now, as those of a bundle that was unloaded, and the names that were looked for.
std::set<std::string> gone;
std::vector<std::string> lookedFor;

class ObjectKinds : public CrossingTest {
protected:
    // The classes that an object of no kind is asked for, one after the other.
    std::vector<std::string> kindsAskedFor()
    {
        std::vector<std::string> asked;
        ObjectOfKinds *object = [[[ObjectOfKinds alloc] init] autorelease];
        object->asked = &asked;
        toHost(object);
        object->asked = nullptr;
        return asked;
    }
    static std::vector<std::string> allKindsBut(const std::set<std::string> &missing)
    {
        std::vector<std::string> kinds;
        std::copy_if(kKindsInOrder.begin(), kKindsInOrder.end(), std::back_inserter(kinds),
                     [&](const std::string &kind) { return missing.count(kind) == 0; });
        return kinds;
    }
};

} // namespace

// The product looks classes up here; in this program it comes before the runtime's own.
extern "C" __attribute__((visibility("default"))) decltype(objc_getClass("")) objc_getClass(const char *name)
{
    auto next = nextFunction<decltype(objc_getClass)>(__func__);
    lookedFor.push_back(name);
    return gone.count(name) ? nil : next(name);
}

TEST_F(ObjectKinds, ObjectsAreAskedForTheirKindInOneOrder)
{
    start();
    host.removeClass("NSObjectKTZ");
    std::vector<std::string> asked;
    ObjectOfKinds *object = [[[ObjectOfKinds alloc] init] autorelease];
    object->asked = &asked;
    host::Value value = toHost(object);
    EXPECT_TRUE(everyObjectIsTyped() ? value.isA("CFObjectKTZ") : value.isNil());
    EXPECT_EQ(asked, kKindsInOrder);
}

TEST_F(ObjectKinds, AKindWhoseClassIsLackingIsPassedOverWithoutAMessage)
{
    start();
    host.removeClass("NSObjectKTZ");
    host.removeClass("CFObjectKTZ");
    gone = {"NSRunningApplication", "KTZREALobjectWrapper"};
    EXPECT_EQ(kindsAskedFor(), allKindsBut(gone));
}

// A bundle that has it may be unloaded and loaded again.
TEST_F(ObjectKinds, AClassFoundByNameIsLookedForAnewWithEveryObject)
{
    start();
    host.removeClass("NSObjectKTZ");
    host.removeClass("CFObjectKTZ");
    for (const char *name : {"NSRunningApplication", "KTZREALobjectWrapper"}) {
        for (bool isGone : {false, true, false}) {
            gone.clear();
            if (isGone)
                gone = {name};
            lookedFor.clear();
            EXPECT_EQ(kindsAskedFor(), allKindsBut(gone)) << name;
            EXPECT_EQ(std::count(lookedFor.begin(), lookedFor.end(), name), 1);
        }
    }
}

TEST_F(ObjectKinds, TheFirstKindThatFitsDecidesAndNoOtherIsAsked)
{
    start();
    for (size_t i = 0; i < kKindsInOrder.size(); i++) {
        if (kKindsInOrder[i] != "NSAttributedString" && kKindsInOrder[i] != "NSError" && kKindsInOrder[i] != "NSTimer")
            continue; // their conversions send the object nothing but retain
        SCOPED_TRACE(kKindsInOrder[i]);
        const std::string wrapper = i == 7 ? "ObjectOfKindsKTZ" : kKindsInOrder[i] + "KTZ";
        defineWrapperClass(wrapper);
        std::vector<std::string> asked;
        ObjectOfKinds *object = [[[ObjectOfKinds alloc] init] autorelease];
        object->kinds.assign(kKindsInOrder.begin() + i, kKindsInOrder.end());
        Value value;
        object->asked = &asked;
        value = toHost(object);
        object->asked = nullptr;
        ASSERT_TRUE(value.isObject());
        EXPECT_EQ(value.className(), wrapper);
        std::vector<std::string> expected(kKindsInOrder.begin(), kKindsInOrder.begin() + i + 1);
        if (i == 7)
            expected.push_back("NSAttributedString"); // the walk asks again
        EXPECT_EQ(asked, expected);
        [carriedBy(value) release];
        wordsOf(value)[0] = 0;
    }
}

TEST_F(ObjectKinds, AKindThatCannotBeConvertedIsNilAndNoLaterKindIsTried)
{
    start();
    defineWrapperClass("ObjectOfKindsKTZ");
    defineWrapperClass("NSValueKTZ");
    host.removeClass("NSErrorKTZ");
    ObjectOfKinds *object = [[[ObjectOfKinds alloc] init] autorelease];
    object->kinds = {"NSError", "NSValue"};
    EXPECT_TRUE(toHost(object).isNil());
}
