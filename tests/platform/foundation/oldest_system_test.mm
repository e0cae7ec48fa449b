#include "tests/platform/foundation/support.h"
#include "tests/support/log_capture.h"

namespace {

// Each case runs as the system of today, and once more in a process that plays the oldest.
class OldestSystem : public DefaultsTest {
protected:
    static bool playsOldest() { return inNewProcess({{"PLATFORM_SYSTEM", "10.4"}}); }
};

TEST_F(OldestSystem, LacksTheLaterAccessors)
{
    const bool oldest = playsOldest();
    for (const char *accessor : {"doubleForKey:", "setDouble:forKey:", "URLForKey:", "setURL:forKey:"})
        EXPECT_EQ(!oldest, [standard respondsToSelector:sel_registerName(accessor)]) << accessor;
    EXPECT_TRUE([standard respondsToSelector:@selector(floatForKey:)]);
    [standard setFloat:0.5 forKey:@"key"];
    EXPECT_EQ(0.5f, [standard floatForKey:@"key"]);
    const std::string raised = oldest ? "NSInvalidArgumentException" : "nothing";
    EXPECT_EQ(raised, raisedBy([&] { [standard doubleForKey:@"key"]; }));
    EXPECT_EQ(raised, raisedBy([&] { [standard URLForKey:@"key"]; }));
}

TEST_F(OldestSystem, LogsWhatIsNoPropertyListAndStoresNothing)
{
    const bool oldest = playsOldest();
    const std::string raised = oldest ? "nothing" : "NSInvalidArgumentException";
    [standard setObject:@"before" forKey:@"key"];
    support::LogCapture log;
    EXPECT_EQ(raised, raisedBy([&] { [standard setObject:[NSNull null] forKey:@"key"]; }));
    EXPECT_EQ(raised, raisedBy([&] {
                  [standard setPersistentDomain:[NSDictionary dictionaryWithObject:[NSNull null] forKey:@"k"]
                                        forName:@"other"];
              }));
    EXPECT_EQ("before", textOf([standard objectForKey:@"key"]));
    EXPECT_EQ(nil, [standard persistentDomainForName:@"other"]);
    EXPECT_EQ(oldest ? 2u : 0u, log.messages().size());
}

} // namespace
