#include "platform/gnustep/test_support.h"
#include "tests/platform/support.h"

#include <CoreText/CoreText.h>

#include <dlfcn.h>

namespace {

// Behind a volatile, so that no compiler answers in the linker's place.
bool isPresent(CFTypeID (*function)())
{
    CFTypeID (*volatile address)() = function;
    return address != nullptr;
}

TEST(LaterFunctions, ArePresentUnlessTheEnvironmentSaysOtherwise)
{
    EXPECT_TRUE(isPresent(CFErrorGetTypeID));
    EXPECT_TRUE(isPresent(CTFontGetTypeID));
    EXPECT_TRUE(isPresent(CTRunDelegateGetTypeID));
    EXPECT_EQ(PlatformTypeIDNamed("CTRunDelegate"), CTRunDelegateGetTypeID());
}

TEST(LaterFunctions, AreNullWhenTheProcessStartsWithoutThem)
{
    if (!inNewProcess({{PLATFORM_ABSENT_VARIABLE, "CFErrorGetTypeID CTFontGetTypeID,CTRunDelegateGetTypeID"}}))
        return;
    EXPECT_FALSE(isPresent(CFErrorGetTypeID));
    EXPECT_FALSE(isPresent(CTFontGetTypeID));
    EXPECT_FALSE(isPresent(CTRunDelegateGetTypeID));
    EXPECT_GT(PlatformTypeIDNamed("CFError"), 1u);
}

TEST(LaterFunctions, CanBeAbsentOneByOne)
{
    if (!inNewProcess({{PLATFORM_ABSENT_VARIABLE, "CTRunDelegateGetTypeID"}}))
        return;
    EXPECT_TRUE(isPresent(CFErrorGetTypeID));
    EXPECT_TRUE(isPresent(CTFontGetTypeID));
    EXPECT_FALSE(isPresent(CTRunDelegateGetTypeID));
}

TEST(LaterFunctions, ALongerNameDoesNotHideAShorterOne)
{
    if (!inNewProcess({{PLATFORM_ABSENT_VARIABLE, "CTFontGetTypeIDs"}}))
        return;
    EXPECT_TRUE(isPresent(CTFontGetTypeID));
}

TEST(LaterFunctions, TheEnvironmentCountsWhenALookUpIsMade)
{
    EXPECT_NE(nullptr, dlsym(RTLD_DEFAULT, "CTFontGetTypeID"));
    setenv(PLATFORM_ABSENT_VARIABLE, "CTFontGetTypeID", 1);
    EXPECT_EQ(nullptr, dlsym(RTLD_DEFAULT, "CTFontGetTypeID"));
    EXPECT_NE(nullptr, dlsym(RTLD_DEFAULT, "CFErrorGetTypeID"));
}

TEST(LaterFunctions, ALibraryLoadedWithImmediateBindingSeesThemAbsent)
{
    setenv(PLATFORM_ABSENT_VARIABLE, "CFErrorGetTypeID", 1);
    void *library = dlopen(WEAK_REFERENCES_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(nullptr, library) << dlerror();
    auto addressOf = reinterpret_cast<void *(*)(const char *)>(dlsym(library, "addressSeen"));
    EXPECT_EQ(nullptr, addressOf("CFErrorGetTypeID"));
    EXPECT_NE(nullptr, addressOf("CTFontGetTypeID"));
    EXPECT_NE(nullptr, addressOf("CTRunDelegateGetTypeID"));
}

} // namespace
