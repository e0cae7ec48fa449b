// Values of the plug-in family's own classes there and back, with its companion library as it is.
#include "tests/bridge/crossing.h"

#import <AppKit/AppKit.h>

using host::Value;

namespace {

class Family : public CrossingTest {
protected:
    // The same bytes in an object of the same class, after a way through Cocoa.
    void expectSameAfterCocoa(const std::string &className, size_t size)
    {
        Value object = host.newInstance(className);
        for (size_t i = 0; i < size; i++)
            static_cast<uint8_t *>(object.instanceData())[i] = uint8_t(i + 1);
        id value = toCocoa(object);
        ASSERT_TRUE([value isKindOfClass:[NSValue class]]) << className;
        Value back = toHost(value);
        ASSERT_TRUE(back.isA(className)) << className;
        EXPECT_FALSE(back.sameHandle(object));
        EXPECT_EQ(memcmp(back.instanceData(), object.instanceData(), size), 0) << className;
    }

    void forgetAnswer()
    {
        toHost(nil);
        tryToCocoa(Value());
        pool->drain();
    }
};

} // namespace

TEST_F(Family, StructuresAndTimesComeBackAsTheyWere)
{
    start();
    const struct {
        const char *className;
        size_t size;
    } rows[] = {
        {"NSRectKTZ", 16}, {"NSSizeKTZ", 8},       {"NSPointKTZ", 8},
        {"NSRangeKTZ", 8}, {"QTKitTimeKTZ", 16},   {"QTKitTimeRangeKTZ", 32},
        {"CMTimeKTZ", 24}, {"CMTimeRangeKTZ", 48}, {"CMTimeMappingKTZ", 96},
    };
    for (const auto &row : rows)
        expectSameAfterCocoa(row.className, row.size);
}

TEST_F(Family, AnyObjectOfHostCodeComesBackAsItselfAndLivesMeanwhile)
{
    start();
    defineWrapperClass("Thing");
    Value thing = host.newInstance("Thing");
    const void *handle = thing.handle();
    Value list = toHost(toCocoa(Value::variants({Value::dictionary({{"thing", thing}}), thing})));
    EXPECT_TRUE(list.at(0).lookup("thing").sameHandle(thing));
    EXPECT_TRUE(list.at(1).sameHandle(thing));
    list = Value();

    id wrapper = [toCocoa(thing) retain];
    thing = Value();
    forgetAnswer();
    EXPECT_TRUE(host.handleInfo(handle).has_value()) << "the Cocoa object keeps it alive";
    thing = toHost(wrapper);
    EXPECT_EQ(thing.handle(), handle);
    [wrapper release];
    forgetAnswer();
    EXPECT_EQ(thing.lockCount(), 1);
}

TEST_F(Family, ASharedWrapperIsForgottenWhenItDies)
{
    start();
    NSLocale *locale = [[NSLocale alloc] initWithLocaleIdentifier:@"de_DE"];
    const NSUInteger retains = [locale retainCount];
    {
        Value wrapper = toHost(locale);
        ASSERT_TRUE(wrapper.isA("NSLocaleKTZ"));
        EXPECT_EQ(toCocoa(wrapper), locale);
        EXPECT_TRUE(toHost(locale).sameHandle(wrapper));
    }
    EXPECT_EQ(CFDictionaryGetValue(familyInstances(), locale), nullptr);
    EXPECT_TRUE(toHost(locale).isA("NSLocaleKTZ"));
    forgetAnswer();
    EXPECT_EQ([locale retainCount], retains);
    [locale release];
}

TEST_F(Family, AWalkedWrapperGivesItsObjectBackWhenItDies)
{
    start();
    carrier();
    NSView *view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    {
        Value wrapper = toHost(view);
        ASSERT_TRUE(wrapper.isA("NSViewKTZ"));
        EXPECT_EQ(toCocoa(wrapper), view);
    }
    forgetAnswer();
    EXPECT_EQ([view retainCount], 1u);
    [view release];
}

TEST_F(Family, ACoreFoundationWrapperWithoutItsTagIsRefused)
{
    host::Profile profile = *host::Profile::named("2013.03");
    profile.familyLeavesOut = {"CFObjectKTZ.tag"};
    start(profile);
    id object = [[[NSObject alloc] init] autorelease];
    if (!everyObjectIsTyped())
        addMethod("NSObject", "_cfTypeID", bodyOf([](id, SEL) -> unsigned long { return 9999; }));
    EXPECT_TRUE(toHost(object).isNil());
    EXPECT_EQ(releaseLeftBehind("CFObjectKTZ"), 1);
}

TEST_F(Family, WhatAProfileLeavesOutIsNil)
{
    host::Profile profile = *host::Profile::named("2013.03");
    profile.familyLeavesOut = {"NSRectKTZ", "CMTimeValueKTZ", "NSLocaleKTZ", "KTZREALobjectWrapper"};
    start(profile);
    defineWrapperClass("Thing");
    EXPECT_TRUE(toHost([NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]).isNil());
    EXPECT_TRUE(toHost([[[NSLocale alloc] initWithLocaleIdentifier:@"de_DE"] autorelease]).isNil());
    EXPECT_TRUE(toHost(toCocoa(host.newInstance("CMTimeKTZ"))).isNil());
    EXPECT_EQ(toCocoa(host.newInstance("Thing")), nil);
}
