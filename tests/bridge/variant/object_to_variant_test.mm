// Any Cocoa object as a host value: which kind it is taken for, and what each kind becomes.
#include "tests/bridge/crossing.h"

using host::Value;

// What an object answers about its Core Foundation type.
@interface ObjectWithType : NSObject {
@public
    long type;
    id thrown; // or this is thrown
}
- (unsigned long)_cfTypeID;
@end

@implementation ObjectWithType

- (unsigned long)_cfTypeID
{
    if (thrown)
        @throw thrown;
    return static_cast<unsigned long>(type);
}

@end

namespace {

class ObjectToVariant : public CrossingTest {
protected:
    void expectNilEntries(const Value &array, int count)
    {
        ASSERT_TRUE(array.isArray());
        EXPECT_EQ(array.elementType(), host::ElementType::Object);
        ASSERT_EQ(array.count(), count);
        for (int i = 0; i < count; i++)
            EXPECT_TRUE(array.at(i).isNil()) << i;
    }
};

} // namespace

TEST_F(ObjectToVariant, NilAndNullAreNil)
{
    start();
    EXPECT_TRUE(toHost(nil).isNil());
    EXPECT_TRUE(toHost([NSNull null]).isNil());
    EXPECT_EQ(host.creations(host::Creation::Variant), 0);
}

TEST_F(ObjectToVariant, AnArrayOfNullsKeepsItsNilEntries)
{
    start();
    NSNull *null = [NSNull null];
    expectNilEntries(toHost([NSArray arrayWithObjects:null, null, null, nil]), 3);
}

TEST_F(ObjectToVariant, AnEmptyCollectionIsAnEmptyArrayNotNil)
{
    start();
    expectNilEntries(toHost([NSArray array]), 0);
    expectNilEntries(toHost([NSSet set]), 0);
    expectNilEntries(toHost([NSMutableArray array]), 0);
}

TEST_F(ObjectToVariant, AnArrayKeepsItsOrderAndConvertsEachElement)
{
    start();
    NSData *data = [NSData dataWithBytes:"\0\1\2" length:3];
    NSArray *inner = [NSArray arrayWithObjects:@"x", [NSNull null], nil];
    Value array = toHost([NSArray arrayWithObjects:@"first", [NSNumber numberWithInt:-2], inner, data, nil]);
    ASSERT_EQ(array.count(), 4);
    EXPECT_EQ(array.at(0).text(), "first");
    EXPECT_TRUE(array.at(1).equals(-2));
    ASSERT_EQ(array.at(2).count(), 2);
    EXPECT_EQ(array.at(2).at(0).text(), "x");
    EXPECT_TRUE(array.at(2).at(1).isNil());
    EXPECT_EQ(array.at(3).bytes(), std::string("\0\1\2", 3));
}

TEST_F(ObjectToVariant, ASetBecomesAnArrayOfItsObjects)
{
    start();
    Value array = toHost([NSSet setWithObjects:@"a", @"b", @"c", nil]);
    ASSERT_EQ(array.count(), 3);
    std::vector<std::string> texts;
    for (int i = 0; i < 3; i++)
        texts.push_back(array.at(i).text());
    EXPECT_THAT(texts, testing::UnorderedElementsAre("a", "b", "c"));
}

TEST_F(ObjectToVariant, ACollectionNeedsTheHostsArrays)
{
    host.hide("RuntimeArrayCreateSingleDimBoundedArray");
    start();
    EXPECT_TRUE(toHost([NSArray arrayWithObject:@"x"]).isNil());
    host.showAll();
    host.failCreation(host::Creation::Array, 1);
    EXPECT_TRUE(toHost([NSArray arrayWithObject:@"x"]).isNil());
    EXPECT_EQ(toHost([NSArray arrayWithObject:@"x"]).count(), 1);
}

TEST_F(ObjectToVariant, WithoutInsertProceduresAnArrayStaysEmptyAndNothingLeaks)
{
    host.hide("RuntimeArrayDirectGetInsertProc");
    start();
    EXPECT_EQ(toHost([NSArray arrayWithObjects:@"x", @"y", nil]).count(), 0);
}

TEST_F(ObjectToVariant, TheInsertProcedureIsAskedForAnewForEachElement)
{
    start();
    host.resetCounts();
    toHost([NSArray arrayWithObjects:@"x", [NSNull null], @"y", nil]);
    EXPECT_EQ(host.calls("RuntimeArrayDirectGetInsertProc"), 3);
}

TEST_F(ObjectToVariant, AnElementThatIsNotInsertedKeepsItsIndexFree)
{
    start();
    EXPECT_EQ(indexesWithoutTheSecondProcedure([&] { toHost([NSArray arrayWithObjects:@"x", @"y", @"z", nil]); }),
              (std::vector<int>{0, 2}));
}

TEST_F(ObjectToVariant, TextBecomesAStringVariant)
{
    start();
    Value value = toHost(@"Größe \U0001F600");
    EXPECT_TRUE(value.isString());
    EXPECT_EQ(value.text(), "Größe \U0001F600");
}

TEST_F(ObjectToVariant, EmptyTextIsAVariantOfTheNullString)
{
    start();
    host.resetCounts();
    Value value = toHost(@"");
    EXPECT_TRUE(value.isString());
    EXPECT_TRUE(value.isNullHandle());
    EXPECT_EQ(host.calls("StringToVariant"), 1);
}

TEST_F(ObjectToVariant, TextWithoutStringVariantsIsNilAndItsStringIsReleased)
{
    host.hide("StringToVariant");
    start();
    EXPECT_TRUE(toHost(@"text").isNil());
}

TEST_F(ObjectToVariant, AnObjectWithALiveWrapperComesBackAsItWhateverItsKind)
{
    start();
    host.defineClass({"Holder", "", 0, {}, {}, nullptr, nullptr});
    Value holder = host.newInstance("Holder");
    const id objects[] = {@"text",         [NSNumber numberWithInt:5],
                          [NSArray array], [NSDictionary dictionary],
                          [NSDate date],   [[[NSObject alloc] init] autorelease]};
    for (id object : objects) {
        SCOPED_TRACE(textOf(object));
        CFDictionarySetValue(familyInstances(), object, holder.handle());
        Value result = toHost(object);
        EXPECT_TRUE(result.sameHandle(holder));
        EXPECT_EQ(holder.lockCount(), 2);
        result = Value();
        CFDictionaryRemoveValue(familyInstances(), object);
        EXPECT_FALSE(toHost(object).sameHandle(holder));
    }
}

TEST_F(ObjectToVariant, AnObjectWithALiveWrapperComesBackAlsoFromAHostWithoutLocks)
{
    host.hide("REALLockObject");
    start();
    host.defineClass({"Holder", "", 0, {}, {}, nullptr, nullptr});
    Value holder = host.newInstance("Holder");
    standIn()->answer = [@"text" retain];
    CFDictionarySetValue(familyInstances(), @"text", holder.handle());
    Value key = "key";
    auto *getter = reinterpret_cast<void *(*)(void *, void *)>(method("variantForKey").function);
    EXPECT_EQ(getter(carrier().handle(), key.handle()), holder.handle());
    EXPECT_EQ(holder.lockCount(), 1);
    CFDictionaryRemoveValue(familyInstances(), @"text");
}

TEST_F(ObjectToVariant, AnEntryOfTheRegistryWithoutAWrapperIsNone)
{
    start();
    int locks = 0;
    host.beforeCall("REALLockObject", [&] { locks++; });
    CFDictionarySetValue(familyInstances(), @"text", nullptr);
    EXPECT_EQ(toHost(@"text").text(), "text");
    EXPECT_EQ(locks, 0);
    CFDictionaryRemoveValue(familyInstances(), @"text");
}

TEST_F(ObjectToVariant, ADictionaryIsADictionaryAlthoughItHasACoreFoundationType)
{
    start();
    defineTaggedClass("CFDictionaryKTZ");
    Value value = toHost([NSDictionary dictionaryWithObject:@"v" forKey:@"k"]);
    ASSERT_TRUE(value.isA("Dictionary"));
    EXPECT_EQ(value.lookup("k").text(), "v");
}

TEST_F(ObjectToVariant, AWebAddressIsItsText)
{
    start();
    EXPECT_EQ(toHost([NSURL URLWithString:@"http://example.org/a%20b?c=d#e"]).text(), "http://example.org/a%20b?c=d#e");
    NSURL *base = [NSURL URLWithString:@"http://example.org/dir/"];
    EXPECT_EQ(toHost([NSURL URLWithString:@"file.txt" relativeToURL:base]).text(), "http://example.org/dir/file.txt");
}

TEST_F(ObjectToVariant, AFileAddressIsAFolderItemOrItsTextWhenItsFolderIsMissing)
{
    start();
    Value item = toHost([NSURL fileURLWithPath:@"/tmp/not yet there.txt"]);
    ASSERT_TRUE(item.isA("FolderItem")) << item.describe();
    EXPECT_EQ(item.path(), "/tmp/not yet there.txt");
    Value text = toHost([NSURL fileURLWithPath:@"/no such folder/file.txt"]);
    ASSERT_TRUE(text.isString()) << text.describe();
    EXPECT_THAT(text.text(),
                testing::AllOf(testing::StartsWith("file://"), testing::EndsWith("/no%20such%20folder/file.txt")));
}

TEST_F(ObjectToVariant, ATypeThatIsZeroNegativeOrRaisesLeadsToTheClassName)
{
    start();
    defineWrapperClass("ObjectWithTypeKTZ");
    defineTaggedClass("CFObjectKTZ");
    ObjectWithType *object = [[[ObjectWithType alloc] init] autorelease];
    for (long type : {0l, -1l, long(INT32_MIN)}) {
        object->type = type;
        Value value = toHost(object);
        ASSERT_TRUE(value.isA("ObjectWithTypeKTZ")) << type;
        EXPECT_EQ(carriedBy(value), object);
        [object release];
    }
    object->thrown = [NSException exceptionWithName:@"Test" reason:@"no type" userInfo:nil];
    EXPECT_TRUE(toHost(object).isA("ObjectWithTypeKTZ"));
    [object release];
    object->thrown = nil;
    object->type = 1;
    EXPECT_TRUE(toHost(object).isA("CFObjectKTZ"));
    [object release];
}

TEST_F(ObjectToVariant, AnObjectThatIsNoExceptionPassesThroughWhenAskingForTheType)
{
    start();
    defineWrapperClass("ObjectWithTypeKTZ");
    ObjectWithType *object = [[[ObjectWithType alloc] init] autorelease];
    object->thrown = @"no exception";
    standIn()->answer = [object retain];
    const host::MethodDescription &getter = method("variantForKey");
    Value key = "key";
    id caught = nil;
    @try {
        reinterpret_cast<void *(*)(void *, void *)>(getter.function)(carrier().handle(), key.handle());
    } @catch (id thrown) {
        caught = thrown;
    }
    EXPECT_EQ(caught, @"no exception");
    EXPECT_EQ(host.creations(host::Creation::Instance), 0);
}

TEST_F(ObjectToVariant, ACoreFoundationObjectWithoutItsWrapperIsNilAndTheClassNameIsNotTried)
{
    start();
    defineWrapperClass("ObjectWithTypeKTZ");
    host.removeClass("CFObjectKTZ");
    ObjectWithType *object = [[[ObjectWithType alloc] init] autorelease];
    object->type = 1;
    EXPECT_TRUE(toHost(object).isNil());
}

TEST_F(ObjectToVariant, AnythingElseIsWrappedByItsClassName)
{
    start(profileWithBareFamily());
    EXPECT_TRUE(toHost([[[ObjectWithType alloc] init] autorelease]).isNil()) << "no wrapper class, no value";
    defineWrapperClass("NSProcessInfoKTZ");
    if (everyObjectIsTyped()) {
        EXPECT_TRUE(toHost([NSProcessInfo processInfo]).isNil()) << "its class is not asked for";
        defineTaggedClass("CFObjectKTZ");
        Value any = toHost([NSProcessInfo processInfo]);
        EXPECT_TRUE(any.isA("CFObjectKTZ"));
        EXPECT_EQ(carriedBy(any), [NSProcessInfo processInfo]);
        return;
    }
    Value one = toHost([NSProcessInfo processInfo]);
    Value other = toHost([NSProcessInfo processInfo]);
    ASSERT_TRUE(one.isA("NSProcessInfoKTZ"));
    EXPECT_EQ(carriedBy(one), [NSProcessInfo processInfo]);
    EXPECT_FALSE(one.sameHandle(other)) << "only ten classes share their wrappers";
}
