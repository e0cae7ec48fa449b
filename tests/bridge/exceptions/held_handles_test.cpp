// The list of host handles that are held across messages to Cocoa.
#include "bridge/exceptions/held_handles.h"
#include "tests/support/fake_host.h"
#include "tests/support/service_probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

REALobject object(int number)
{
    return service_probe::sample<REALobject>(number);
}
REALstring string(int number)
{
    return service_probe::sample<REALstring>(number);
}

std::vector<void *> unlockedObjects, unlockedStrings;
REALobject heldWhileUnlocking = nullptr;

void unlockObject(REALobject handle)
{
    unlockedObjects.push_back(handle);
    if (heldWhileUnlocking) { // as host code that runs because an object dies
        Hold(heldWhileUnlocking);
        heldWhileUnlocking = nullptr;
        ReleaseNewestHeld();
    }
}

void unlockString(REALstring handle)
{
    unlockedStrings.push_back(handle);
}

class HeldHandles : public ::testing::Test {
protected:
    void SetUp() override
    {
        fake_host::install();
        fake_host::offer("REALUnlockObject", unlockObject);
        fake_host::offer("REALUnlockString", unlockString);
    }
};

TEST_F(HeldHandles, AreHandedBackAsTheyAre)
{
    EXPECT_EQ(Hold(object(1)), object(1));
    EXPECT_EQ(Hold(string(2)), string(2));
    EXPECT_EQ(Hold(REALobject(nullptr)), nullptr);
}

TEST_F(HeldHandles, AreUnlockedByTheServiceOfTheirKind)
{
    Hold(object(1));
    Hold(string(2));
    ReleaseNewestHeld();
    EXPECT_THAT(unlockedStrings, ElementsAre(string(2)));
    EXPECT_THAT(unlockedObjects, IsEmpty());
    ReleaseNewestHeld();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1)));
}

TEST_F(HeldHandles, TwoAreUnlockedInTheOrderInWhichTheyWereHeld)
{
    Hold(object(0));
    Hold(object(1));
    Hold(object(2));
    ReleaseTwoNewestHeld();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1), object(2)));
}

TEST_F(HeldHandles, KeptOnesAreNotUnlocked)
{
    const HeldMark mark = NewestHeld();
    Hold(object(1));
    Hold(object(2));
    KeepNewestHeld();
    ReleaseHeldSince(mark);
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1)));
}

TEST_F(HeldHandles, SinceAMarkAreUnlockedNewestFirst)
{
    Hold(object(1));
    const HeldMark mark = NewestHeld();
    Hold(object(2));
    Hold(object(3));
    ReleaseHeldSince(mark);
    EXPECT_THAT(unlockedObjects, ElementsAre(object(3), object(2)));
    EXPECT_EQ(NewestHeld(), mark);
    ReleaseHeldSince(mark);
    EXPECT_EQ(unlockedObjects.size(), 2u) << "once only";
}

TEST_F(HeldHandles, NullIsHeldAndNothingIsUnlockedForIt)
{
    const HeldMark mark = NewestHeld();
    Hold(REALobject(nullptr));
    Hold(REALstring(nullptr));
    EXPECT_NE(NewestHeld(), mark);
    ReleaseHeldSince(mark);
    EXPECT_THAT(unlockedObjects, IsEmpty());
    EXPECT_THAT(unlockedStrings, IsEmpty());
}

TEST_F(HeldHandles, OfADeepConversionAllFit)
{
    const HeldMark mark = NewestHeld();
    std::vector<void *> newestFirst;
    for (int i = 0; i < 1000; i++)
        newestFirst.insert(newestFirst.begin(), Hold(object(i)));
    ReleaseHeldSince(mark);
    EXPECT_EQ(unlockedObjects, newestFirst);
}

TEST_F(HeldHandles, AreStruckOutBeforeUnlockingRunsHostCodeThatHoldsOthers)
{
    const HeldMark mark = NewestHeld();
    Hold(object(1));
    Hold(object(2));
    heldWhileUnlocking = object(9);
    ReleaseHeldSince(mark);
    EXPECT_THAT(unlockedObjects, ElementsAre(object(2), object(9), object(1)));
    EXPECT_EQ(NewestHeld(), mark);
}

} // namespace
