// What the domains, suites, registered and forced values of the real database are for a host program.
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"

#import <Foundation/Foundation.h>

using host::Value;
using testing::Contains;
using testing::Not;

@interface NSUserDefaults (PlaceOfTheDefaults)
- (NSString *)_directory;
@end

namespace {

class StoredDomains : public support::BlackBoxOn2013 {
protected:
    void SetUp() override
    {
        support::BlackBoxOn2013::SetUp();
        defaults = standardUserDefaults();
    }

    void TearDown() override
    {
        defaults = Value();
        support::BlackBoxOn2013::TearDown();
    }

    template <typename... Each>
    Value call(const char *method, const Each &...arguments)
    {
        return host.call(defaults, method, {Value(arguments)...});
    }

    std::vector<std::string> names(const char *getter)
    {
        Value array = call(getter);
        std::vector<std::string> texts;
        for (int32_t i = 0; i < array.count(); i++)
            texts.push_back(array.at(i).text());
        return texts;
    }

    std::string text(const char *key) { return call("stringForKey", key).text(); }

    Value defaults;
};

Value dictionary(const char *key, const Value &value)
{
    return Value::dictionary({{key, value}});
}

} // namespace

TEST_F(StoredDomains, SynchronizeIsTrueWhenTheDatabaseIsWritten)
{
    call("setStringValue", "Key", "value");
    EXPECT_TRUE(call("synchronize").boolean());
}

TEST_F(StoredDomains, ARemovedKeyIsGone)
{
    call("setStringValue", "Key", "value");
    call("removeObjectForKey", "Key");
    EXPECT_TRUE(call("variantForKey", "Key").isNil());
    call("removeObjectForKey", "never there");
}

TEST_F(StoredDomains, RegisteredValuesAreFoundLast)
{
    call("registerDefaults", Value::dictionary({{"Key", "registered"}, {"Number", 7}, {"Other", "registered"}}));
    EXPECT_EQ(text("Key"), "registered");
    EXPECT_EQ(call("integerForKey", "Number").int32(), 7);
    call("setStringValue", "Key", "set");
    EXPECT_EQ(text("Key"), "set");
    call("removeObjectForKey", "Key");
    EXPECT_EQ(text("Key"), "registered");
    call("registerDefaults", dictionary("Key", "registered later"));
    EXPECT_EQ(text("Key"), "registered later");
    EXPECT_EQ(text("Other"), "registered") << "registrations add up";
    const std::string registration = host.callShared("NSUserDefaultsKTZ", "NSRegistrationDomain").text();
    EXPECT_EQ(call("volatileDomainForName", registration.c_str()).lookup("Number").int32(), 7);
}

TEST_F(StoredDomains, AVolatileDomainCanBeMadeReadAndRemoved)
{
    call("setVolatileDomain", dictionary("Key", "volatile"), "Test");
    EXPECT_THAT(names("volatileDomainNames"), Contains("Test"));
    EXPECT_EQ(call("volatileDomainForName", "Test").lookup("Key").text(), "volatile");
    EXPECT_EQ(text("Key"), "") << "it is not searched";
    call("removeVolatileDomainForName", "Test");
    EXPECT_THAT(names("volatileDomainNames"), Not(Contains("Test")));
    EXPECT_TRUE(call("volatileDomainForName", "Test").isNil());
}

TEST_F(StoredDomains, AVolatileDomainOfAnExistingNameRaises)
{
    support::LogCapture log;
    call("setVolatileDomain", dictionary("Key", "first"), "Test");
    host::Outcome outcome = host.tryCall(defaults, "setVolatileDomain", {dictionary("Key", "second"), "Test"});
    ASSERT_EQ(outcome.raised.size(), 1u);
    EXPECT_EQ(outcome.raised[0].className, "NSExceptionKTZ");
    EXPECT_EQ(call("volatileDomainForName", "Test").lookup("Key").text(), "first");
}

TEST_F(StoredDomains, TheArgumentAndRegistrationDomainsAreVolatile)
{
    for (const char *name : {"NSArgumentDomain", "NSRegistrationDomain"})
        EXPECT_THAT(names("volatileDomainNames"), Contains(host.callShared("NSUserDefaultsKTZ", name).text()));
}

TEST_F(StoredDomains, APersistentDomainCanBeSetReadAndRemoved)
{
    Value domain = Value::dictionary({{"Key", "persistent"}, {"List", Value::strings({"a", "b"})}});
    call("setPersistentDomain", domain, "org.example.test");
    EXPECT_THAT(names("persistentDomainNames"), Contains("org.example.test"));
    Value back = call("persistentDomainForName", "org.example.test");
    EXPECT_EQ(back.lookup("Key").text(), "persistent");
    EXPECT_EQ(back.lookup("List").at(1).text(), "b");
    EXPECT_EQ(text("Key"), "");
    call("setPersistentDomain", dictionary("Other", 1), "org.example.test");
    EXPECT_FALSE(call("persistentDomainForName", "org.example.test").hasKey("Key")) << "it is set as a whole";
    call("removePersistentDomainForName", "org.example.test");
    EXPECT_THAT(names("persistentDomainNames"), Not(Contains("org.example.test")));
    EXPECT_TRUE(call("persistentDomainForName", "org.example.test").isNil());
}

TEST_F(StoredDomains, ADomainWithANumberAsKeyRaises)
{
    support::LogCapture log;
    Value domain = Value::dictionary({{1, "one"}});
    EXPECT_EQ(host.tryCall(defaults, "setPersistentDomain", {domain, "org.example.test"}).raised.size(), 1u);
    EXPECT_THAT(names("persistentDomainNames"), Not(Contains("org.example.test")));
}

TEST_F(StoredDomains, SuitesAreSearchedWhileTheyAreThere)
{
    call("setPersistentDomain", Value::dictionary({{"Key", "suite one"}, {"One", "1"}}), "org.example.one");
    call("setPersistentDomain", Value::dictionary({{"Key", "suite two"}}), "org.example.two");
    call("registerDefaults", dictionary("Key", "registered"));
    EXPECT_EQ(text("Key"), "registered");
    call("addSuiteNamed", "org.example.one");
    EXPECT_EQ(text("Key"), "suite one");
    call("addSuiteNamed", "org.example.two");
    EXPECT_EQ(text("Key"), "suite two") << "the one added last is searched first";
    EXPECT_EQ(text("One"), "1");
    call("setStringValue", "Key", "own");
    EXPECT_EQ(text("Key"), "own") << "the program's own values come first";
    call("removeObjectForKey", "Key");
    call("removeSuiteNamed", "org.example.two");
    EXPECT_EQ(text("Key"), "suite one");
    call("removeSuiteNamed", "org.example.one");
    EXPECT_EQ(text("Key"), "registered");
}

TEST_F(StoredDomains, ASuiteWithoutANameRaises)
{
    support::LogCapture log;
    EXPECT_EQ(host.tryCall(defaults, "addSuiteNamed", {Value::nullString()}).raised.size(), 1u);
}

TEST_F(StoredDomains, TheDictionaryRepresentationHasEveryDomainsValues)
{
    call("registerDefaults", Value::dictionary({{"Registered", 1}, {"Key", "registered"}}));
    call("setPersistentDomain", dictionary("In suite", Value::variants({1, "x"})), "org.example.one");
    call("addSuiteNamed", "org.example.one");
    call("setStringValue", "Key", "own");
    call("setDataValue", "Data", Value::memoryBlock("bytes"));
    Value all = call("dictionaryRepresentation");
    ASSERT_TRUE(all.isA("Dictionary"));
    EXPECT_EQ(all.lookup("Registered").int32(), 1);
    EXPECT_EQ(all.lookup("Key").text(), "own");
    EXPECT_EQ(all.lookup("In suite").at(1).text(), "x");
    EXPECT_EQ(all.lookup("Data").bytes(), "bytes");
}

TEST_F(StoredDomains, AValueIsForcedWhereAnAdministratorFixedIt)
{
    EXPECT_FALSE(call("objectIsForcedForKey", "Fixed").boolean());
    NSString *folder =
        [[[NSUserDefaults standardUserDefaults] _directory] stringByAppendingPathComponent:@"Managed Preferences"];
    [[NSFileManager defaultManager] createDirectoryAtPath:folder
                              withIntermediateDirectories:YES
                                               attributes:nil
                                                    error:nullptr];
    const std::string global = host.callShared("NSUserDefaultsKTZ", "NSGlobalDomain").text();
    NSString *file = [NSString stringWithFormat:@"%@/%s.plist", folder, global.c_str()];
    NSData *plist = [NSPropertyListSerialization
        dataFromPropertyList:[NSDictionary dictionaryWithObject:@"by the administrator" forKey:@"Fixed"]
                      format:NSPropertyListXMLFormat_v1_0
            errorDescription:nullptr];
    ASSERT_TRUE([plist writeToFile:file atomically:YES]);
    call("synchronize");

    EXPECT_TRUE(call("objectIsForcedForKey", "Fixed").boolean());
    EXPECT_TRUE(call("objectIsForcedForKey", "Fixed", global.c_str()).boolean());
    EXPECT_FALSE(call("objectIsForcedForKey", "Fixed", "org.example.other").boolean());
    EXPECT_FALSE(call("objectIsForcedForKey", "Free").boolean());
    EXPECT_FALSE(host.call(defaults, "objectIsForcedForKey", {Value::nullString()}).boolean());
    EXPECT_FALSE(host.call(defaults, "objectIsForcedForKey", {"Fixed", Value::emptyString()}).boolean());
    call("setStringValue", "Fixed", "by the program");
    EXPECT_EQ(text("Fixed"), "by the administrator");
}
