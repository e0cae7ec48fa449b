// Cocoa raises in the middle of a conversion: whatever the plug-in held is let go, host code gets one exception and
// nothing is stored. (Every test ends with a look at the locks of all handles.)
#include "tests/bridge/crossing.h"

#import <objc/runtime.h>

using host::Value;
using support::MethodOf;
using support::RaisingMethod;

// Raises when it is asked for its length, its bytes, its kind: somewhere in each conversion.
@interface RaisingObject : NSObject
@end

@implementation RaisingObject

- (BOOL)isKindOfClass:(Class)kind
{
    (void)kind;
    [NSException raise:@"NSTestException" format:@"raised by the test"];
    return NO;
}

@end

// Of no class of Cocoa's: a root class of its own, which knows no message.
__attribute__((objc_root_class))
@interface RootObject {
    Class isa;
}
@end

@implementation RootObject
@end

namespace {

// Collections raise once, for one marked text: Foundation itself needs them on an exception's way.
IMP usualAdd;
IMP usualSet;
bool isArmed;

void raiseForMark(id object)
{
    if (!isArmed || ![object isEqual:@"raise here"])
        return;
    isArmed = false;
    [NSException raise:@"NSTestException" format:@"raised by the test"];
}

void addOrRaise(id self, SEL selector, id object)
{
    raiseForMark(object);
    reinterpret_cast<void (*)(id, SEL, id)>(usualAdd)(self, selector, object);
}

void setOrRaise(id self, SEL selector, id object, id key)
{
    raiseForMark(key);
    reinterpret_cast<void (*)(id, SEL, id, id)>(usualSet)(self, selector, object, key);
}

struct RaisingCollections {
    RaisingCollections() { isArmed = true; }

    support::CocoaMethod add{"GSMutableArray", "addObject:", MethodOf::Instance, reinterpret_cast<void *>(addOrRaise)};
    support::CocoaMethod set{"GSMutableDictionary", "setObject:forKey:", MethodOf::Instance,
                             reinterpret_cast<void *>(setOrRaise)};
};

const char kDateMaker[] = "dateWithYear:month:day:hour:minute:second:timeZone:";

class Unwinding : public CrossingTest, public testing::WithParamInterface<const char *> {
protected:
    void SetUp() override
    {
        start(GetParam());
        usualAdd =
            method_getImplementation(class_getInstanceMethod(objc_getClass("GSMutableArray"), @selector(addObject:)));
        usualSet = method_getImplementation(
            class_getInstanceMethod(objc_getClass("GSMutableDictionary"), @selector(setObject:forKey:)));
        carrier();
    }

    void expectRaisedOnce(const std::vector<host::RaisedException> &raised)
    {
        ASSERT_EQ(raised.size(), 1u);
        EXPECT_EQ(raised[0].className, "NSExceptionKTZ");
        ASSERT_EQ(log.messages().size(), 1u);
        EXPECT_EQ(log.messages()[0], support::kRaisingMethodLogLine);
    }

    void expectNothingSent(const Value &value, const char *setter = "setVariantValue")
    {
        expectRaisedOnce(tryToCocoa(value, setter));
        EXPECT_EQ(timesSent(), 0);
    }

    support::LogCapture log;
};

INSTANTIATE_TEST_SUITE_P(Hosts, Unwinding, testing::Values("2011.4", "2013.03", "2014.1"),
                         [](const auto &info) { return std::string("Host") + std::string(info.param).substr(0, 4); });

Value nested(const Value &innermost, int levels)
{
    Value value = innermost;
    for (int level = 0; level < levels; level++) {
        if (level % 2)
            value = Value::dictionary({{"first", 1}, {"inner", value}, {"last", "x"}});
        else
            value = Value::variants({"first", value, "last"});
    }
    return value;
}

id nestedObject(id innermost, int levels)
{
    for (int level = 0; level < levels; level++) {
        if (level % 2)
            innermost = [NSDictionary dictionaryWithObjectsAndKeys:@"1", @"first", innermost, @"inner", nil];
        else
            innermost = [NSArray arrayWithObjects:@"first", innermost, @"last", nil];
    }
    return innermost;
}

} // namespace

TEST_P(Unwinding, FromAnArrayOfStrings)
{
    Value array = Value::strings({"a", "raise here", "b"});
    RaisingCollections raising;
    expectNothingSent(array);
}

TEST_P(Unwinding, FromAnArrayOfDatesWhileADateIsConverted)
{
    Value array = Value::array(host::ElementType::Date, {Value::date(2000, 1, 1), Value::date(2001, 1, 1)});
    RaisingMethod raising("NSCalendarDate", kDateMaker, MethodOf::Class);
    expectNothingSent(array);
}

TEST_P(Unwinding, FromADate)
{
    Value date = Value::date(2000, 1, 1);
    RaisingMethod raising("NSCalendarDate", kDateMaker, MethodOf::Class);
    expectNothingSent(date);
}

TEST_P(Unwinding, FromAMemoryBlock)
{
    Value block = Value::memoryBlock("bytes");
    RaisingMethod raising("NSData", "dataWithBytes:length:", MethodOf::Class);
    expectNothingSent(block, "setDataValue");
}

TEST_P(Unwinding, FromDataDeepInArraysAndDictionaries)
{
    Value value = nested(Value::memoryBlock("bytes"), 9);
    RaisingMethod raising("NSData", "dataWithBytes:length:", MethodOf::Class);
    expectNothingSent(value);
}

TEST_P(Unwinding, FromADictionaryWhileItsEntryIsStored)
{
    Value dictionary = Value::dictionary({{"k", "v"}, {"inner", Value::dictionary({{"a", 1}, {"raise here", 2}})}});
    RaisingCollections raising;
    expectNothingSent(dictionary, "setDictionaryValue");
}

TEST_P(Unwinding, FromAnArgumentArrayOfStrings)
{
    Value array = Value::strings({"a", Value::nullString(), "raise here", "b"});
    RaisingCollections raising;
    expectNothingSent(array, "setStringArrayValue");
}

TEST_P(Unwinding, FromAnArgumentArrayOfVariants)
{
    Value array = Value::variants({1, nested(Value::memoryBlock("bytes"), 5), 2});
    RaisingMethod raising("NSData", "dataWithBytes:length:", MethodOf::Class);
    expectNothingSent(array, "setArrayValue");
}

TEST_P(Unwinding, FromAnElementWhileAnArrayIsRead)
{
    NSArray *array = [NSArray arrayWithObjects:@"x", [[[RaisingObject alloc] init] autorelease], @"y", nil];
    host::Outcome outcome = tryToHost(array);
    expectRaisedOnce(outcome.raised);
    EXPECT_TRUE(outcome.result.isNil());
}

TEST_P(Unwinding, FromDeepInArraysAndDictionariesThatAreRead)
{
    host::Outcome outcome = tryToHost(nestedObject([[[RaisingObject alloc] init] autorelease], 9));
    expectRaisedOnce(outcome.raised);
    EXPECT_TRUE(outcome.result.isNil());
}

TEST_P(Unwinding, FromAnElementOfAnArrayGetterWhichKeepsWhatItHas)
{
    NSArray *array = [NSArray arrayWithObjects:@"x", @"y", [[[RaisingObject alloc] init] autorelease], @"z", nil];
    host::Outcome outcome = tryToHost(array, "arrayForKey");
    expectRaisedOnce(outcome.raised);
    ASSERT_EQ(outcome.result.count(), 2);
    EXPECT_EQ(outcome.result.at(1).text(), "y");
}

TEST_P(Unwinding, FromAnElementOfAStringArrayGetterWhichKeepsWhatItHas)
{
    NSArray *array = [NSArray arrayWithObjects:@"x", @"", [NSNull null], @"z", nil];
    host::Outcome outcome = tryToHost(array, "stringArrayForKey"); // its elements are not tested: NSNull has no length
    ASSERT_EQ(outcome.raised.size(), 1u);
    ASSERT_EQ(outcome.result.count(), 2);
    EXPECT_EQ(outcome.result.at(0).text(), "x");
    EXPECT_TRUE(outcome.result.at(1).isNullHandle());
}

TEST_P(Unwinding, FromADictionaryGetterGivesNoDictionary)
{
    NSDictionary *dictionary = [NSDictionary
        dictionaryWithObjectsAndKeys:[[[RaisingObject alloc] init] autorelease], @"k", @"x", @"other", nil];
    host::Outcome outcome = tryToHost(dictionary, "dictionaryForKey");
    expectRaisedOnce(outcome.raised);
    EXPECT_TRUE(outcome.result.isNil());
}

TEST_P(Unwinding, AConversionAfterwardsIsAsIfNothingHadBeen)
{
    {
        Value value = nested(Value::memoryBlock("bytes"), 6);
        RaisingMethod raising("NSData", "dataWithBytes:length:", MethodOf::Class);
        expectNothingSent(value);
    }
    Value dictionary = nested("innermost", 6);
    id object = toCocoa(dictionary);
    Value back = toHost(object);
    EXPECT_EQ(back.describe().find("innermost") != std::string::npos, true) << back.describe();
    EXPECT_EQ(back.lookup("last").text(), "x");
}

id foreign;

TEST_P(Unwinding, AnObjectThatIsNoExceptionPassesThroughAndLocksAreLetGo)
{
    support::CocoaMethod throwing("NSData", "dataWithBytes:length:", MethodOf::Class,
                                  bodyOf([](id, SEL, const void *, unsigned) -> id { @throw foreign; }));
    Value value = nested(Value::memoryBlock("bytes"), 5);
    const host::MethodDescription &setter = method("setVariantValue");
    Value key = "key";
    for (id object : {id(@"foreign"), class_createInstance(objc_getClass("RootObject"), 0)}) {
        foreign = object;
        id caught = nil;
        @try {
            reinterpret_cast<void (*)(void *, void *, void *)>(setter.function)(carrier().handle(), key.handle(),
                                                                                value.handle());
        } @catch (id thrown) {
            caught = thrown;
        }
        EXPECT_EQ(caught, foreign);
        EXPECT_EQ(timesSent(), 0);
        EXPECT_TRUE(host.imbalances().empty()) << "of class " << object_getClassName(foreign);
    }
}
