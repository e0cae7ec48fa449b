// The companion library by itself: what it registers, what it adds to Cocoa's classes, what a profile leaves out.
#include "tests/host/fixture.h"

#include "ground.h"

#include <AppKit/AppKit.h>
#include <CoreFoundation/CoreFoundation.h>
#include <Foundation/Foundation.h>
#include <objc/runtime.h>

@interface NSException (Companion)
+ (void *)NewNSExceptionKTZ:(NSException *)exception;
+ (void)PrepareNSExceptionKTZ;
+ (CFMutableDictionaryRef)GetInstancesDictionaryKTZ;
@end

@interface NSValue (Companion)
+ (void *)NewQTKitNSViewKTZ:(id)view;
+ (id)valueWithCMTimeMappingKTZ:(void *)object;
- (void *)CMTimeMappingValueKTZ;
+ (id)valueWithQTTimeKTZ:(void *)object;
- (void *)QTTimeValueKTZ;
@end

@interface NSObject (Companion)
+ (id)wrap:(void *)object;
- (void *)unwrap;
@end

@interface QTMovieView : NSView
@end

@implementation QTMovieView
@end

namespace {

using namespace host;
using host_tests::PluginFixture;

class Companion : public PluginFixture {
protected:
    void load(std::set<std::string> leftOut = {}, std::set<std::string> kept = {})
    {
        Profile profile = *Profile::named("2013.03");
        profile.familyLeavesOut = std::move(leftOut);
        profile.familyKeeps = std::move(kept);
        host.use(profile);
        host.load(std::string(kBuildDir) + "/Family.so");
        instances = [NSException respondsToSelector:@selector(GetInstancesDictionaryKTZ)]
                        ? [NSException GetInstancesDictionaryKTZ]
                        : nullptr;
    }

    // The first word of an object's instance data.
    static id &carriedBy(const Value &object) { return *static_cast<id *>(object.instanceData()); }

    CocoaPool pool;
    CFMutableDictionaryRef instances = nullptr;
};

TEST_F(Companion, RegistersEveryClassOfTheFamily)
{
    load();
    // 130 that the plug-in tests for (its own excluded), 26 of Core Foundation, 2 of views, the exception; without the
    // host's own MemoryBlock and Dictionary.
    EXPECT_EQ(host.classes(true).size(), 130u - 2 + 26 + 2 + 1);
    EXPECT_EQ(host.findClass("NSUserDefaultsKTZ"), nullptr);
    EXPECT_TRUE(host.faults().empty());
    for (const ClassDescription *each : host.classes(true))
        EXPECT_EQ(each->dataOffset, each->superName == "CFObjectKTZ" ? 40 : 24) << each->name;
}

TEST_F(Companion, AsksTheHostForOneEntryPointOnly)
{
    load();
    EXPECT_EQ(host.lookupLog(), std::vector<std::string>{"FamilyServices"});
}

TEST_F(Companion, ExceptionObjectsCarryTheException)
{
    load();
    NSException *exception = [NSException exceptionWithName:@"TestName" reason:@"gr\u00fc\u00df dich" userInfo:nil];
    NSUInteger before = [exception retainCount];
    Value object = Value::adopt([NSException NewNSExceptionKTZ:exception]);
    EXPECT_TRUE(object.isA("RuntimeException"));
    EXPECT_EQ(object.className(), "NSExceptionKTZ");
    EXPECT_EQ(object.property("Message").text(), "grüß dich");
    EXPECT_EQ(host.call(object, "name").text(), "TestName");
    EXPECT_EQ(carriedBy(object), exception);
    object = nullptr;
    EXPECT_EQ([exception retainCount], before);
    [NSException PrepareNSExceptionKTZ];
    EXPECT_EQ(host.callShared("NSExceptionKTZ", "preparations").int32(), 1);
}

TEST_F(Companion, WrappersReleaseWhatTheyCarryAndLeaveTheRegistry)
{
    load();
    NSObject *carried = [[NSObject new] autorelease];
    Value wrapper = host.newInstance("NSLocaleKTZ");
    carriedBy(wrapper) = [carried retain];
    CFDictionarySetValue(instances, carried, wrapper.handle());
    Value other = host.newInstance("NSLocaleKTZ");
    carriedBy(other) = [carried retain];
    other = nullptr;
    EXPECT_EQ(CFDictionaryGetValue(instances, carried), wrapper.handle()) << "the entry of another wrapper stays";
    wrapper = nullptr;
    EXPECT_EQ(CFDictionaryGetCount(instances), 0);
    EXPECT_EQ([carried retainCount], 1u);
}

TEST_F(Companion, CoreFoundationWrappersHaveTheTag)
{
    load({"CFArrayKTZ.tag"});
    for (const char *name : {"CFObjectKTZ", "CFStringKTZ", "CTFontKTZ"}) {
        Value wrapper = host.newInstance(name);
        EXPECT_EQ(static_cast<uint32_t *>(wrapper.instanceData())[2], 0x52424346u) << name;
        EXPECT_TRUE(wrapper.isA("CFObjectKTZ")) << name;
    }
    EXPECT_EQ(static_cast<uint32_t *>(host.newInstance("CFArrayKTZ").instanceData())[2], 0u);
    NSObject *carried = [[NSObject new] autorelease];
    Value wrapper = host.newInstance("CFStringKTZ");
    carriedBy(wrapper) = [carried retain];
    wrapper = nullptr;
    EXPECT_EQ([carried retainCount], 1u);
}

TEST_F(Companion, CoreFoundationWrappersStandAloneWithoutTheirRoot)
{
    load({"CFObjectKTZ"});
    EXPECT_EQ(host.findClass("CFObjectKTZ"), nullptr);
    EXPECT_EQ(static_cast<uint32_t *>(host.newInstance("CFStringKTZ").instanceData())[2], 0x52424346u);
}

TEST_F(Companion, ValueClassesHaveFields)
{
    load();
    Value rect = host.newObject("NSRectKTZ", {10, 20, 300, 400});
    auto *words = static_cast<float *>(rect.instanceData());
    EXPECT_EQ(words[3], 400.0f);
    host.assign(rect, "width", {}, 301);
    EXPECT_EQ(words[2], 301.0f);
    EXPECT_EQ(host.call(rect, "y").single(), 20.0f);
    EXPECT_EQ(host.call(host.newObject("NSRangeKTZ", {5u, 4000000000u}), "length").uint64(), 4000000000u);
}

TEST_F(Companion, TimesBecomeValuesAndComeBack)
{
    load();
    Value mapping = host.newInstance("CMTimeMappingKTZ");
    auto *words = static_cast<uint32_t *>(mapping.instanceData());
    for (uint32_t i = 0; i < 24; ++i)
        words[i] = i * 3 + 1;
    NSValue *value = [NSValue valueWithCMTimeMappingKTZ:mapping.handle()];
    EXPECT_STREQ([value objCType], "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}");
    Value back = Value::adopt([value CMTimeMappingValueKTZ]);
    EXPECT_EQ(back.className(), "CMTimeMappingKTZ");
    EXPECT_EQ(memcmp(back.instanceData(), words, 96), 0);
    Value time = host.newInstance("QTKitTimeKTZ");
    EXPECT_STREQ([[NSValue valueWithQTTimeKTZ:time.handle()] objCType], "{?=qll}");
}

TEST_F(Companion, ObjectWrappersKeepTheHostObjectAlive)
{
    load();
    Value object = host.newInstance("RuntimeException");
    {
        CocoaPool inner;
        Class wrapperClass = static_cast<Class>(objc_getClass("KTZREALobjectWrapper"));
        id wrapper = [wrapperClass wrap:object.handle()];
        EXPECT_EQ(object.lockCount(), 2);
        EXPECT_TRUE(Value::adopt([wrapper unwrap]).sameHandle(object));
        EXPECT_EQ(object.lockCount(), 2);
        EXPECT_TRUE([wrapper isEqual:[wrapperClass wrap:object.handle()]]);
        EXPECT_EQ([[wrapper copy] autorelease], wrapper);
    }
    EXPECT_EQ(object.lockCount(), 1);
}

TEST_F(Companion, ViewsOfTheMovieFrameworkHaveWrappersOfTheirOwn)
{
    load();
    NSView *movie = [[[QTMovieView alloc] initWithFrame:NSZeroRect] autorelease];
    Value wrapper = Value::adopt([NSValue NewQTKitNSViewKTZ:movie]);
    EXPECT_EQ(wrapper.className(), "QTMovieViewKTZ");
    EXPECT_EQ(carriedBy(wrapper), movie);
    NSView *plain = [[[NSView alloc] initWithFrame:NSZeroRect] autorelease];
    EXPECT_EQ([NSValue NewQTKitNSViewKTZ:plain], nullptr);
}

TEST_F(Companion, EveryFeatureCanBeLeftOut)
{
    load({"NewNSExceptionKTZ:", "PrepareNSExceptionKTZ", "GetInstancesDictionaryKTZ", "NewQTKitNSViewKTZ:",
          "valueWithQTTimeKTZ:", "QTTimeValueKTZ", "KTZREALobjectWrapper", "NSFontKTZ", "NSExceptionKTZ"});
    for (const char *selector : {"NewNSExceptionKTZ:", "PrepareNSExceptionKTZ", "GetInstancesDictionaryKTZ"})
        EXPECT_FALSE([NSException respondsToSelector:sel_registerName(selector)]) << selector;
    for (const char *selector : {"NewQTKitNSViewKTZ:", "valueWithQTTimeKTZ:"})
        EXPECT_FALSE([NSValue respondsToSelector:sel_registerName(selector)]) << selector;
    EXPECT_FALSE([NSValue instancesRespondToSelector:@selector(QTTimeValueKTZ)]);
    EXPECT_TRUE([NSValue instancesRespondToSelector:@selector(CMTimeMappingValueKTZ)]);
    EXPECT_EQ(objc_getClass("KTZREALobjectWrapper"), nil);
    EXPECT_EQ(host.findClass("NSFontKTZ"), nullptr);
    EXPECT_EQ(host.findClass("NSExceptionKTZ"), nullptr);
    EXPECT_NE(host.findClass("NSErrorKTZ"), nullptr);
}

TEST_F(Companion, AllButAFewCanBeLeftOut)
{
    load({"*"}, {"NSErrorKTZ", "GetInstancesDictionaryKTZ"});
    EXPECT_EQ(host.classes(true).size(), 1u);
    EXPECT_TRUE([NSException respondsToSelector:@selector(GetInstancesDictionaryKTZ)]);
    EXPECT_FALSE([NSException respondsToSelector:@selector(PrepareNSExceptionKTZ)]);
}

} // namespace
