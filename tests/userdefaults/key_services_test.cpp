// What a key asks of a host that makes no CFString of it and hands out no bytes: which services it looks for, in which
// order, and how often it calls them.
#include "tests/support/host_test.h"
#include "tests/support/recording_defaults.h"

using ::testing::ElementsAre;

namespace {

class KeyServices : public support::BlackBox {
protected:
    void SetUp() override
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.without = {"REALGetStringCFString", "PluginGetStringData", "PluginDisposeStringData"};
        start(profile);
        instance = newEmptyInstance();
        standIn.carryIn(instance);
    }
    void TearDown() override
    {
        instance = {};
        BlackBox::TearDown();
    }

    // What Cocoa is sent; the host counts this call alone.
    std::string messageFor(const host::Value &key)
    {
        standIn.forgetMessages();
        host.resetCounts();
        host.call(instance, "integerForKey", {key});
        return standIn.messages().at(0);
    }

    support::RecordingDefaults standIn;
    host::Value instance;
};

TEST_F(KeyServices, AreLookedForInTheirOrderAndCalledOnce)
{
    EXPECT_EQ(messageFor("Key"), "integerForKey:\"Key\"");
    EXPECT_THAT(host.lookupLog(), ElementsAre("REALGetStringCFString", "REALGetStringCFString", "REALGetStringEncoding",
                                              "PluginGetStringData", "StringGetCString", "REALLoadGlobalMethod",
                                              "PluginDisposeStringData"));
    for (const char *once : {"REALGetStringEncoding", "StringGetCString", "REALLoadGlobalMethod", "LenB"})
        EXPECT_EQ(host.calls(once), 1) << once;
    EXPECT_EQ(host.lookups("LenB"), 1);
}

TEST_F(KeyServices, AreCalledOnceForEachFurtherKeyAndOnlyMissingOnesLookedForAgain)
{
    messageFor("First");
    EXPECT_EQ(messageFor("Second"), "integerForKey:\"Second\"");
    EXPECT_THAT(host.lookupLog(), ElementsAre("REALGetStringCFString", "REALGetStringCFString", "PluginGetStringData",
                                              "PluginDisposeStringData"));
    for (const char *once : {"REALGetStringEncoding", "StringGetCString", "LenB"})
        EXPECT_EQ(host.calls(once), 1) << once;
    EXPECT_EQ(host.lookups("LenB"), 0);
}

TEST_F(KeyServices, AreAllLookedForBeforeOneIsMissed)
{
    for (const char *missing : {"StringGetCString", "LenB"})
        host.hide(missing);
    for (int turn = 0; turn < 2; turn++) { // a missing one is looked for again
        EXPECT_EQ(messageFor("Key"), "integerForKey:nil");
        EXPECT_EQ(host.lookups("StringGetCString"), 1) << turn;
        EXPECT_EQ(host.lookups("LenB"), 1) << turn;
    }
    host.show("LenB");
    EXPECT_EQ(messageFor("Key"), "integerForKey:nil");
    EXPECT_EQ(host.lookups("LenB"), 1) << "while the text cannot be had";
    EXPECT_EQ(host.calls("LenB"), 0);
    host.show("StringGetCString");
    EXPECT_EQ(messageFor("Key"), "integerForKey:\"Key\"");
    EXPECT_EQ(host.lookups("LenB"), 0) << "it is known by now";
}

} // namespace
