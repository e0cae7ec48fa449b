// Host objects as Cocoa objects: what each kind gives.
#include "tests/bridge/crossing.h"

#import <objc/runtime.h>

using host::Value;

// Keeps any host object on its way through Cocoa.
@interface HostObjectKeeper : NSObject {
@public
    void *object;
}
@end

static int timesUnwrapped;

@implementation HostObjectKeeper

+ (id)wrap:(void *)hostObject
{
    HostObjectKeeper *keeper = [[[self alloc] init] autorelease];
    keeper->object = hostObject;
    return keeper;
}

- (void *)unwrap
{
    timesUnwrapped++;
    return object;
}

@end

namespace {

const char kFolderItemMethod[] = "TrueItem(Index as integer) as Folderitem";

std::vector<std::string> asked;

class HostObject : public CrossingTest {
protected:
    void SetUp() override
    {
        start(profileWithBareFamily());
        defineWrapperClass("Thing");
    }
};

// Gives HostObjectKeeper the name that the plug-in looks for.
void addObjectWrapperClass()
{
    objc_registerClassPair(objc_allocateClassPair([HostObjectKeeper class], "KTZREALobjectWrapper", 0));
}

void *wrappedIn(id wrapper)
{
    return static_cast<HostObjectKeeper *>(wrapper)->object;
}

} // namespace

TEST_F(HostObject, AMemoryBlockIsDataAFolderItemAFileAddressADictionaryADictionary)
{
    EXPECT_TRUE([toCocoa(Value::memoryBlock("bytes")) isEqual:[NSData dataWithBytes:"bytes" length:5]]);
    EXPECT_EQ(toCocoa(Value::memoryBlock("")), nil);
    NSURL *url = toCocoa(Value::folderItem("/tmp/new file"));
    ASSERT_TRUE([url isKindOfClass:[NSURL class]]);
    EXPECT_TRUE([[url path] isEqual:@"/tmp/new file"]) << textOf(url);
    EXPECT_TRUE([toCocoa(Value::dictionary({{"k", "v"}})) isEqual:[NSDictionary dictionaryWithObject:@"v"
                                                                                              forKey:@"k"]]);
}

TEST_F(HostObject, WhateverHasTheMethodOfAFolderItemIsTakenForOne)
{
    host::HostClass definition;
    definition.name = "LooksLikeAFile";
    definition.superName = "Thing";
    definition.methods.push_back({kFolderItemMethod, [](const Value &, const host::Arguments &) { return Value(); }});
    host.defineClass(definition);
    defineWrapperClass("NSObjectKTZ");
    Value object = host.newInstance("LooksLikeAFile");
    host.replace("REALFSRefFromFolderItem", bodyOf([](void *, void *, void *) -> unsigned char {
                     asked.push_back("file");
                     return 0;
                 }));
    host.replace("REALFSSpecFromFolderItem", bodyOf([](void *, void *) -> unsigned char { return 0; }));
    asked.clear();
    EXPECT_EQ(toCocoa(object), nil);
    EXPECT_EQ(asked, (std::vector<std::string>{"file", "file"}));
}

TEST_F(HostObject, AWrapperGivesTheObjectThatItCarriesUnretained)
{
    defineWrapperClass("NSColorKTZ");
    Value color = host.newInstance("NSColorKTZ");
    EXPECT_EQ(toCocoa(color), nil) << "it carries nothing";
    id object = [[NSObject alloc] init];
    wordsOf(color)[0] = reinterpret_cast<uintptr_t>(object);
    tryToCocoa(color);
    EXPECT_EQ(sent(), object);
    tryToCocoa(Value());
    EXPECT_EQ([object retainCount], 1u);
    [object release];
}

TEST_F(HostObject, AClassOfHostCodeTakesThePathOfItsSuperclass)
{
    defineWrapperClass("NSObjectKTZ");
    defineWrapperClass("Mine", "NSObjectKTZ");
    defineWrapperClass("MineToo", "Mine");
    Value object = host.newInstance("MineToo");
    wordsOf(object)[0] = reinterpret_cast<uintptr_t>(@"carried");
    EXPECT_EQ(toCocoa(object), @"carried");
}

TEST_F(HostObject, AUserDefaultsObjectIsTheOneThatItCarries)
{
    Value defaults = standardUserDefaults();
    EXPECT_EQ(toCocoa(defaults), [NSUserDefaults standardUserDefaults]);
}

TEST_F(HostObject, AnyOtherObjectTravelsInAWrapperAndComesBackAsItself)
{
    Value thing = host.newInstance("Thing");
    EXPECT_EQ(toCocoa(thing), nil) << "nothing wraps it yet";
    EXPECT_TRUE(toHost([[[NSObject alloc] init] autorelease]).isNil()); // the wrapping class is looked for, in vain

    addObjectWrapperClass();
    id wrapper = toCocoa(thing);
    ASSERT_NE(wrapper, nil);
    EXPECT_EQ(wrappedIn(wrapper), thing.handle());

    lockedForPlugin(thing); // what the wrapper hands out with the object
    Value back = toHost(wrapper);
    EXPECT_TRUE(back.sameHandle(thing));
    EXPECT_EQ(thing.lockCount(), 2) << "no lock is added to the one that came with it";
    EXPECT_EQ(timesUnwrapped, 1);
}

TEST_F(HostObject, ATimeClassWithoutItsMessageRaisesInHostCode)
{
    for (const char *name : {"QTKitTimeKTZ", "QTKitTimeRangeKTZ", "CMTimeMappingKTZ", "CMTimeRangeKTZ", "CMTimeKTZ"}) {
        defineWrapperClass(name);
        support::LogCapture log;
        std::vector<host::RaisedException> raised = tryToCocoa(host.newInstance(name));
        ASSERT_EQ(raised.size(), 1u) << name;
        EXPECT_EQ(raised[0].className, "NSExceptionKTZ");
        EXPECT_EQ(timesSent(), 0);
        EXPECT_EQ(log.messages().size(), 1u);
    }
}

namespace {

class HostObjectWithout : public CrossingTest {};

} // namespace

TEST_F(HostObjectWithout, ClassReferencesOnlyFilesAreKnownAndTheRestIsWrapped)
{
    host.hide("pluginObjectType");
    start(profileWithBareFamily());
    EXPECT_EQ(toCocoa(Value::memoryBlock("x")), nil);
    EXPECT_EQ(toCocoa(Value::dictionary()), nil);
    EXPECT_NE(toCocoa(Value::folderItem("/tmp")), nil);
    addObjectWrapperClass();
    EXPECT_NE(wrappedIn(toCocoa(Value::memoryBlock("x"))), nullptr);
}

TEST_F(HostObjectWithout, TheClassTestEveryClassTestFails)
{
    host.hide("RuntimeObjectIsa");
    start(profileWithBareFamily());
    EXPECT_EQ(toCocoa(Value::memoryBlock("x")), nil);
    EXPECT_EQ(toCocoa(Value::dictionary()), nil);
}

TEST_F(HostObjectWithout, MethodsByDeclarationAFolderItemIsAnyObject)
{
    host.hide("REALLoadObjectMethod");
    start(profileWithBareFamily());
    EXPECT_EQ(toCocoa(Value::folderItem("/tmp")), nil);
    EXPECT_NE(toCocoa(Value::memoryBlock("x")), nil);
}

TEST_F(HostObjectWithout, AnythingOfTheFamilyOnlyTheHostsOwnClassesHaveAForm)
{
    start(profileWithBareFamily());
    defineWrapperClass("Thing");
    EXPECT_EQ(toCocoa(host.newInstance("Thing")), nil);
    EXPECT_NE(toCocoa(Value::memoryBlock("x")), nil);
    EXPECT_NE(toCocoa(Value::folderItem("/tmp")), nil);
    EXPECT_NE(toCocoa(Value::dictionary()), nil);
}
