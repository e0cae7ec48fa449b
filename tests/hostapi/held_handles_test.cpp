// The handles that one call holds, and the way they are given back.
#include "hostapi/dictionary_methods.h"
#include "hostapi/held_handles.h"
#include "tests/support/fake_host.h"
#include "tests/support/service_probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

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
HeldHandles *usedWhileUnlocking = nullptr;
bool throwsWhileUnlocking = false;

void unlockObject(REALobject handle)
{
    unlockedObjects.push_back(handle);
    if (HeldHandles *held =
            std::exchange(usedWhileUnlocking, nullptr)) { // as host code that runs because an object dies
        held->hold(object(9));
        held->release(object(9));
    }
    if (throwsWhileUnlocking)
        throw std::logic_error("of the host");
}

void unlockString(REALstring handle)
{
    unlockedStrings.push_back(handle);
}

class Held : public ::testing::Test {
protected:
    void SetUp() override
    {
        fake_host::install();
        fake_host::offer("REALUnlockObject", unlockObject);
        fake_host::offer("REALUnlockString", unlockString);
    }
    HeldHandles held;
};

TEST_F(Held, HandlesAreHandedBackAsTheyAre)
{
    EXPECT_EQ(held.hold(object(1)), object(1));
    EXPECT_EQ(held.hold(string(2)), string(2));
    EXPECT_EQ(held.count(), 2);
}

TEST_F(Held, HandlesAreUnlockedByTheServiceOfTheirKind)
{
    held.hold(object(1));
    held.hold(string(2));
    held.release(string(2));
    EXPECT_THAT(unlockedStrings, ElementsAre(string(2)));
    EXPECT_THAT(unlockedObjects, IsEmpty());
    held.release(object(1));
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1)));
    EXPECT_EQ(held.count(), 0);
}

TEST_F(Held, HandlesAreGivenBackByNameInAnyOrder)
{
    for (int i : {1, 2, 3, 4})
        held.hold(object(i));
    held.release(object(1));
    held.release(object(3));
    held.keep(object(2));
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1), object(3)));
    held.releaseAll();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1), object(3), object(4)));
}

TEST_F(Held, AHandleThatIsNotHeldIsLeftAsItIs)
{
    for (int others : {0, 1, 40}) {
        for (int i = 0; i < others; i++)
            held.hold(object(i));
        held.release(object(50));
        held.release(string(51));
        held.keep(object(52));
        EXPECT_THAT(unlockedObjects, IsEmpty()) << others;
        EXPECT_THAT(unlockedStrings, IsEmpty()) << others;
        EXPECT_EQ(held.count(), others);
        held.releaseAll();
        EXPECT_EQ(unlockedObjects.size(), size_t(others)) << "each of them once";
        unlockedObjects.clear();
    }
}

TEST_F(Held, AHandleWithTwoLocksIsHeldTwice)
{
    held.hold(object(1));
    held.hold(object(1));
    held.release(object(1));
    EXPECT_EQ(held.count(), 1);
    held.releaseAll();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1), object(1)));
}

TEST_F(Held, AllAreGivenBackNewestFirstAndOnce)
{
    for (int i : {1, 2, 3})
        held.hold(object(i));
    held.releaseTo(1);
    EXPECT_THAT(unlockedObjects, ElementsAre(object(3), object(2)));
    held.releaseAll();
    held.releaseAll();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(3), object(2), object(1)));
}

TEST_F(Held, NullIsNothing)
{
    held.hold(REALobject(nullptr));
    EXPECT_EQ(held.count(), 0);
    held.release(REALobject(nullptr));
    held.keep(REALstring(nullptr));
    EXPECT_THAT(unlockedObjects, IsEmpty());
}

TEST_F(Held, HandlesOfADeepConversionAllFit)
{
    std::vector<void *> newestFirst;
    for (int i = 0; i < 1000; i++)
        newestFirst.insert(newestFirst.begin(), held.hold(object(i)));
    held.releaseAll();
    EXPECT_EQ(unlockedObjects, newestFirst);
    held.hold(object(1));
    EXPECT_EQ(held.count(), 1);
}

TEST_F(Held, WhatIsLeftIsGivenBackAtTheEndOfTheFrame)
{
    {
        HeldHandles inner;
        inner.hold(object(1));
        inner.hold(string(2));
        held.hold(object(3));
    }
    EXPECT_THAT(unlockedObjects, ElementsAre(object(1)));
    EXPECT_THAT(unlockedStrings, ElementsAre(string(2)));
}

TEST_F(Held, AHandleIsStruckOutBeforeItIsUnlocked)
{
    held.hold(object(1));
    held.hold(object(2));
    usedWhileUnlocking = &held;
    held.releaseAll();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(2), object(9), object(1))) << "the one in between is not disturbed";
}

TEST_F(Held, AHostThatThrowsWhileUnlockingIsAskedOnceForEachHandle)
{
    held.hold(object(1));
    held.hold(object(2));
    throwsWhileUnlocking = true;
    EXPECT_THROW(held.release(object(2)), std::logic_error);
    EXPECT_THROW(held.releaseAll(), std::logic_error);
    throwsWhileUnlocking = false;
    held.releaseAll();
    EXPECT_THAT(unlockedObjects, ElementsAre(object(2), object(1)));
}

void setValue(REALobject, REALobject, REALobject) {}
void *loadMethod(REALobject, const char *)
{
    return reinterpret_cast<void *>(setValue);
}

TEST_F(Held, TheMethodsOfADictionaryThatIsGivenBackAfterAnExceptionAreForgotten)
{
    fake_host::offer("REALLoadObjectMethod", loadMethod);
    ASSERT_TRUE(SetValueMethodOf(object(1)));
    held.hold(object(2));
    held.releaseAll();
    EXPECT_EQ(lastDictionary, object(1)) << "another one's stay";
    held.hold(object(1));
    held.releaseAll();
    EXPECT_EQ(lastDictionary, nullptr);
}

} // namespace
