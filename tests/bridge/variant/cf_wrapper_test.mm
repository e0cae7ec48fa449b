// Wrapper objects for Core Foundation and Core Text objects, chosen by type.
#include "tests/bridge/crossing.h"

#include "platform/gnustep/test_support.h"
#include "tests/support/runner/new_process.h"

using host::Value;

namespace {

struct TypeRow {
    const char *type;
    const char *wrapper;
};

const TypeRow kTypeRows[] = {
    {"CFURL", "CFURLKTZ"},
    {"CFDictionary", "CFDictionaryKTZ"},
    {"CFString", "CFStringKTZ"},
    {"CFNumber", "CFNumberKTZ"},
    {"CFArray", "CFArrayKTZ"},
    {"CFBoolean", "CFBooleanKTZ"},
    {"CFData", "CFBinaryDataKTZ"}, // the family's name for it, not one made from "CFData"
    {"CFCharacterSet", "CFCharacterSetKTZ"},
    {"CFBundle", "CFBundleKTZ"},
    {"CFSet", "CFSetKTZ"},
    {"CFBag", "CFBagKTZ"},
    {"CFUUID", "CFUUIDKTZ"},
    {"CFTimeZone", "CFTimeZoneKTZ"},
    {"CFDate", "CFDateKTZ"},
    {"CFAttributedString", "CFAttributedStringKTZ"},
    {"CFError", "CFErrorKTZ"},
    {"CTFont", "CTFontKTZ"},
    {"CTFontCollection", "CTFontCollectionKTZ"},
    {"CTFrame", "CTFrameKTZ"},
    {"CTFramesetter", "CTFramesetterKTZ"},
    {"CTGlyphInfo", "CTGlyphInfoKTZ"},
    {"CTLine", "CTLineKTZ"},
    {"CTParagraphStyle", "CTParagraphStyleKTZ"},
    {"CTRun", "CTRunKTZ"},
    {"CTTypesetter", "CTTypesetterKTZ"},
    {"CTRunDelegate", "CTRunDelegateKTZ"},
};
static_assert(std::size(kTypeRows) == 26);

const char kAnyCFObject[] = "CFObjectKTZ";
const CFTypeID kTypeOfNothing = 9999;
const uint32_t kTag = 0x52424346;

class CFWrapper : public CrossingTest {
protected:
    void startBare()
    {
        start(profileWithBareFamily());
        carrier();
    }

    // Which functions a system lacks is decided when a process starts.
    bool isDoneInASystemWithout(const char *function)
    {
        return !test_runner::inNewProcess({{PLATFORM_ABSENT_VARIABLE, function}});
    }

    id objectOfType(CFTypeID type) { return [(id)PlatformCreateObject(type) autorelease]; }
    id objectOfType(const char *type) { return objectOfType(PlatformTypeIDNamed(type)); }

    void expectWrapper(id object, const char *className)
    {
        Value wrapper = toHost(object);
        ASSERT_TRUE(wrapper.isObject()) << className;
        EXPECT_EQ(wrapper.className(), className);
        EXPECT_EQ(carriedBy(wrapper), object);
        EXPECT_EQ(wordsOf(wrapper)[1], 0u) << "the class's own word";
        EXPECT_EQ(wordsOf(wrapper)[2], kTag);
        [carriedBy(wrapper) release]; // what the wrapper class's finaliser does
    }
};

} // namespace

TEST_F(CFWrapper, EveryTypeHasItsClass)
{
    startBare();
    for (const TypeRow &row : kTypeRows)
        defineTaggedClass(row.wrapper);
    for (const TypeRow &row : kTypeRows) {
        SCOPED_TRACE(row.type);
        expectWrapper(objectOfType(row.type), row.wrapper);
    }
    toHost(nil); // the stand-in lets go of the last one
    pool->drain();
    EXPECT_EQ(PlatformLiveObjects(), 0) << "each wrapper owned one retain";
}

TEST_F(CFWrapper, AWrapperRetainsItsObjectOnce)
{
    startBare();
    defineTaggedClass("CFUUIDKTZ");
    CFTypeRef object = PlatformCreateObject(PlatformTypeIDNamed("CFUUID"));
    Value wrapper = toHost((id)object);
    toHost(nil);
    EXPECT_EQ([(id)object retainCount], 2u) << "ours and the wrapper's";
    CFRelease(carriedBy(wrapper));
    CFRelease(object);
}

TEST_F(CFWrapper, WithoutItsClassATypeGetsTheClassForAnyObject)
{
    startBare();
    defineTaggedClass(kAnyCFObject);
    for (const TypeRow &row : kTypeRows) {
        SCOPED_TRACE(row.type);
        expectWrapper(objectOfType(row.type), kAnyCFObject);
    }
}

TEST_F(CFWrapper, WithNoClassAtAllItIsNil)
{
    startBare();
    for (const TypeRow &row : kTypeRows)
        EXPECT_TRUE(toHost(objectOfType(row.type)).isNil()) << row.type;
}

TEST_F(CFWrapper, AnInstanceWithoutTheTagIsRefusedAndLeftBehind)
{
    startBare();
    defineTaggedClass(kAnyCFObject);
    for (const TypeRow &row : kTypeRows) {
        SCOPED_TRACE(row.type);
        defineWrapperClass(row.wrapper);
        id object = objectOfType(row.type);
        EXPECT_TRUE(toHost(object).isNil()) << "the class for any object is not tried then";
        toHost(nil);
        EXPECT_EQ(releaseLeftBehind(row.wrapper), 1);
    }
    defineWrapperClass(kAnyCFObject);
    EXPECT_TRUE(toHost(objectOfType(kTypeOfNothing)).isNil());
    EXPECT_EQ(releaseLeftBehind(kAnyCFObject), 1);
}

TEST_F(CFWrapper, AnUnknownTypeAsksForTheClassForAnyObjectTwice)
{
    startBare();
    host.resetCounts();
    EXPECT_TRUE(toHost(objectOfType(kTypeOfNothing)).isNil());
    EXPECT_EQ(host.calls("PluginNewInstance"), 2);
    defineTaggedClass(kAnyCFObject);
    host.resetCounts();
    expectWrapper(objectOfType(kTypeOfNothing), kAnyCFObject);
    EXPECT_EQ(host.calls("PluginNewInstance"), 1);
}

TEST_F(CFWrapper, WithoutTheErrorTypeItsObjectsAreAnyObjectAndCoreTextGoesOn)
{
    if (isDoneInASystemWithout("CFErrorGetTypeID"))
        return;
    startBare();
    for (const TypeRow &row : kTypeRows)
        defineTaggedClass(row.wrapper);
    defineTaggedClass(kAnyCFObject);
    expectWrapper(objectOfType("CFError"), kAnyCFObject);
    expectWrapper(objectOfType("CFAttributedString"), "CFAttributedStringKTZ");
    expectWrapper(objectOfType("CTFont"), "CTFontKTZ");
    expectWrapper(objectOfType("CTRunDelegate"), "CTRunDelegateKTZ");
}

TEST_F(CFWrapper, WithoutTheFontTypeNoCoreTextTypeIsTried)
{
    if (isDoneInASystemWithout("CTFontGetTypeID"))
        return;
    startBare();
    for (const TypeRow &row : kTypeRows)
        defineTaggedClass(row.wrapper);
    defineTaggedClass(kAnyCFObject);
    for (const TypeRow &row : kTypeRows) {
        SCOPED_TRACE(row.type);
        expectWrapper(objectOfType(row.type), strncmp(row.type, "CT", 2) == 0 ? kAnyCFObject : row.wrapper);
    }
}

TEST_F(CFWrapper, WithoutTheRunDelegateTypeTheOtherCoreTextTypesStay)
{
    if (isDoneInASystemWithout("CTRunDelegateGetTypeID"))
        return;
    startBare();
    for (const TypeRow &row : kTypeRows)
        defineTaggedClass(row.wrapper);
    defineTaggedClass(kAnyCFObject);
    expectWrapper(objectOfType("CTRunDelegate"), kAnyCFObject);
    expectWrapper(objectOfType("CTTypesetter"), "CTTypesetterKTZ");
    expectWrapper(objectOfType("CFError"), "CFErrorKTZ");
}

TEST_F(CFWrapper, AWrapperComesBackAsTheObjectThatItCarries)
{
    startBare();
    defineTaggedClass(kAnyCFObject);
    CFTypeRef object = PlatformCreateObject(kTypeOfNothing);
    Value wrapper = toHost((id)object);
    EXPECT_EQ(toCocoa(wrapper), (id)object);
    [(id)object release];
    CFRelease(object);
}
