// Functions that a system may lack.
#include "tests/tools/machorun/loaded_image.h"

#include <AppKit/AppKit.h>

class WeakImportsPresent : public LoadedImage {};
INSTANTIATE_FOR_EVERY_IMAGE(WeakImportsPresent);

TEST_P(WeakImportsPresent, TheyLeadToTheFunctions)
{
    EXPECT_EQ(call<unsigned long>("errorTypeID"), CFErrorGetTypeID());
    EXPECT_EQ(call<unsigned long>("fontTypeID"), CTFontGetTypeID());
    EXPECT_EQ(call<unsigned long>("runDelegateTypeID"), CTRunDelegateGetTypeID());
}

class WeakImportsAbsent : public LoadedImage {
protected:
    WeakImportsAbsent() : LoadedImage(withoutThem()) {}

private:
    static machorun::Options withoutThem()
    {
        machorun::Options options;
        options.absent = {"_CFErrorGetTypeID", "_CTFontGetTypeID", "_CTRunDelegateGetTypeID"};
        return options;
    }
};
INSTANTIATE_FOR_EVERY_IMAGE(WeakImportsAbsent);

TEST_P(WeakImportsAbsent, TheyAreNull)
{
    EXPECT_EQ(call<unsigned long>("errorTypeID"), 0u);
    EXPECT_EQ(call<unsigned long>("fontTypeID"), 0u);
    EXPECT_EQ(call<unsigned long>("runDelegateTypeID"), 0u);
    EXPECT_EQ(call<unsigned long>("stringTypeID"), CFStringGetTypeID());
}
