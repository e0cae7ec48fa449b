#include "tests/host/fixture.h"

namespace {

using namespace host;
using host_tests::entryCall;
using host_tests::PluginFixture;

class LedgerOfHandles : public PluginFixture {
protected:
    void SetUp() override
    {
        start();
        object = host.newObject("TestClass");
    }

    void TearDown() override
    {
        object = nullptr;
        PluginFixture::TearDown();
    }

    Value object;
};

TEST_F(LedgerOfHandles, ListsEveryLiveHandleWithItsLocks)
{
    LedgerMark mark = host.mark();
    Value string("abc");
    Value second = string;
    Value array = Value::strings({string});
    std::vector<HandleInfo> live = host.liveSince(mark);
    ASSERT_EQ(live.size(), 2u);
    EXPECT_EQ(live[0].what, "string \"abc\" (UTF-8, 3 bytes)");
    EXPECT_EQ(live[0].locks, 3);
    EXPECT_EQ(live[0].heldByHost, 3);
    EXPECT_EQ(live[1].what, "array of string, 1 element");
    EXPECT_TRUE(host.leaks(mark).empty());
}

TEST_F(LedgerOfHandles, LocksOfPluginsAreLeaksUntilGivenBack)
{
    LedgerMark mark = host.mark();
    host.call(object, "leakString", {2});
    std::vector<HandleInfo> leaks = host.leaks(mark);
    ASSERT_EQ(leaks.size(), 2u);
    EXPECT_EQ(leaks[0].heldElsewhere(), 1);
    EXPECT_NE(leaks[0].text().find("1 lock, 0 of the host"), std::string::npos);
    EXPECT_EQ(host.imbalances().size(), 2u);
    EXPECT_TRUE(host.leaks(host.mark()).empty()) << "what was known at the mark is none";
    for (const HandleInfo &leak : leaks)
        entryCall<void>("REALUnlockString", leak.handle);
    EXPECT_TRUE(host.imbalances().empty());
}

TEST_F(LedgerOfHandles, UnlockingADeadHandleIsAFaultAndNoCrash)
{
    host.call(object, "unlockTwice");
    std::vector<std::string> faults = host.takeFaults();
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0].find("REALUnlockString: was given a dead handle (string #"), 0u) << faults[0];
}

TEST_F(LedgerOfHandles, UnlockingALockOfTheHostIsAFaultAndDoesNothing)
{
    Value dictionary = Value::dictionary({{"a", 1}});
    host.call(object, "unlockArgument", {dictionary});
    std::vector<std::string> faults = host.takeFaults();
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0], "unlocked once too often: Dictionary with 1 entry");
    EXPECT_EQ(dictionary.count(), 1);
}

TEST_F(LedgerOfHandles, HandlesOfAnotherKindAreFaults)
{
    Value string("abc");
    entryCall<void>("REALLockObject", string.handle());
    int notAHandle = 0;
    entryCall<void>("REALUnlockString", static_cast<void *>(&notAHandle));
    std::vector<std::string> faults = host.takeFaults();
    ASSERT_EQ(faults.size(), 2u);
    EXPECT_EQ(faults[0],
              "REALLockObject: was given string \"abc\" (UTF-8, 3 bytes) in place of a handle of kind object");
    EXPECT_EQ(faults[1], "REALUnlockString: was given no handle at all");
}

TEST_F(LedgerOfHandles, FinaliserRunsWhenTheLastLockGoes)
{
    int before = seen->finalised;
    Value second = object;
    object = nullptr;
    EXPECT_EQ(seen->finalised, before);
    second = nullptr;
    EXPECT_EQ(seen->finalised, before + 1);
}

TEST_F(LedgerOfHandles, AHeaderWrittenOverIsAFault)
{
    auto *words = static_cast<uint32_t *>(object.handle());
    words[5] = 1;
    object = nullptr;
    std::vector<std::string> faults = host.takeFaults();
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0], "the header was written over: TestClass");
}

TEST_F(LedgerOfHandles, ContainersHoldAndReleaseTheirElements)
{
    Value string("abc");
    {
        Value dictionary = Value::dictionary({{"k", Value::strings({string, string})}});
        EXPECT_EQ(string.lockCount(), 3);
        dictionary.put("k", nullptr);
        EXPECT_EQ(string.lockCount(), 1);
        dictionary.put("k", Value::variants({string}));
        EXPECT_EQ(string.lockCount(), 2) << "in a Variant of the array";
    }
    EXPECT_EQ(string.lockCount(), 1);
}

TEST_F(LedgerOfHandles, StringDataIsBooked)
{
    Value string("abc");
    LedgerMark mark = host.mark();
    interface::StringData data {
    };
    ASSERT_TRUE(entryCall<uint8_t>("PluginGetStringData", string.handle(), uint32_t(kUTF16), &data));
    EXPECT_EQ(data.length, 6);
    ASSERT_EQ(host.leaks(mark).size(), 1u);
    EXPECT_EQ(host.leaks(mark)[0].what, "string data of 6 bytes");
    entryCall<void>("PluginDisposeStringData", &data);
    EXPECT_TRUE(host.leaks(mark).empty());
    entryCall<void>("PluginDisposeStringData", &data);
    EXPECT_EQ(host.takeFaults().size(), 1u);
}

} // namespace
