// The defaults object as a whole: writing, removing, domains, suites, registered and forced values.
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"
#include "tests/support/recording_defaults.h"
#include "tests/userdefaults/cocoa_objects.h"

#import <Foundation/Foundation.h>

using host::Value;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

Value someDictionary()
{
    return Value::dictionary({{"a", "b"}});
}

struct MessageRow {
    const char *declaration;
    host::Arguments (*arguments)();
    const char *message;
    const char *selector;
};

const MessageRow kMessages[] = {
    {"synchronize", [] { return host::Arguments{}; }, "synchronize", "synchronize"},
    {"removeObjectForKey", [] { return host::Arguments{"k"}; }, "removeObjectForKey:\"k\"", "removeObjectForKey:"},
    {"removeVolatileDomainForName", [] { return host::Arguments{"d"}; }, "removeVolatileDomainForName:\"d\"",
     "removeVolatileDomainForName:"},
    {"removePersistentDomainForName", [] { return host::Arguments{"d"}; }, "removePersistentDomainForName:\"d\"",
     "removePersistentDomainForName:"},
    {"addSuiteNamed", [] { return host::Arguments{"s"}; }, "addSuiteNamed:\"s\"", "addSuiteNamed:"},
    {"removeSuiteNamed", [] { return host::Arguments{"s"}; }, "removeSuiteNamed:\"s\"", "removeSuiteNamed:"},
    {"registerDefaults", [] { return host::Arguments{someDictionary()}; }, "registerDefaults:{\"a\": \"b\"}",
     "registerDefaults:"},
    {"dictionaryRepresentation", [] { return host::Arguments{}; }, "dictionaryRepresentation",
     "dictionaryRepresentation"},
    {"objectIsForcedForKey(key as string) as boolean", [] { return host::Arguments{"k"}; },
     "objectIsForcedForKey:\"k\"", "objectIsForcedForKey:"},
    {"objectIsForcedForKey(key as string, domain as string) as boolean",
     [] {
         return host::Arguments{"k", "d"};
     },
     "objectIsForcedForKey:\"k\" inDomain:\"d\"", "objectIsForcedForKey:inDomain:"},
    {"setPersistentDomain",
     [] {
         return host::Arguments{someDictionary(), "d"};
     },
     "setPersistentDomain:{\"a\": \"b\"} forName:\"d\"", "setPersistentDomain:forName:"},
    {"setVolatileDomain",
     [] {
         return host::Arguments{someDictionary(), "d"};
     },
     "setVolatileDomain:{\"a\": \"b\"} forName:\"d\"", "setVolatileDomain:forName:"},
    {"persistentDomainNames", [] { return host::Arguments{}; }, "persistentDomainNames", "persistentDomainNames"},
    {"persistentDomainForName", [] { return host::Arguments{"d"}; }, "persistentDomainForName:\"d\"",
     "persistentDomainForName:"},
    {"volatileDomainNames", [] { return host::Arguments{}; }, "volatileDomainNames", "volatileDomainNames"},
    {"volatileDomainForName", [] { return host::Arguments{"d"}; }, "volatileDomainForName:\"d\"",
     "volatileDomainForName:"},
};
static_assert(std::size(kMessages) == 16);

// The same call with every argument null, and with every text empty.
host::Arguments with(const MessageRow &row, const Value &text)
{
    host::Arguments arguments = row.arguments();
    for (Value &argument : arguments)
        argument = argument.isString() ? text : Value();
    return arguments;
}

std::string messageWith(const MessageRow &row, const std::string &text)
{
    std::string message = row.message;
    for (const char *argument : {"\"k\"", "\"d\"", "\"s\"", "{\"a\": \"b\"}"}) {
        const size_t place = message.find(argument);
        if (place != std::string::npos)
            message.replace(place, strlen(argument), *argument == '{' ? "nil" : text);
    }
    return message;
}

// What the plug-in converts, in its order.
std::vector<std::string> converted;

bool isNeutral(const Value &value)
{
    return value.isNil() || (value.kind() == Value::Kind::Boolean && !value.boolean()) ||
           (value.isArray() && value.count() == 0);
}

class DomainMessages : public support::BlackBoxOnEveryHost {
protected:
    void SetUp() override
    {
        support::BlackBoxOnEveryHost::SetUp();
        instance = newEmptyInstance();
    }

    void TearDown() override
    {
        instance = Value();
        support::BlackBoxOnEveryHost::TearDown();
    }

    host::Outcome invoke(const MessageRow &row, const host::Arguments &arguments)
    {
        return host.invoke(method(row.declaration), instance, arguments);
    }

    Value instance;
    support::RecordingDefaults recorded;
};

INSTANTIATE_TEST_SUITE_P(Hosts, DomainMessages, support::everyProfile(), support::profileTestName);

} // namespace

TEST_P(DomainMessages, EachMethodSendsOneMessageWithItsArguments)
{
    recorded.carryIn(instance);
    for (const MessageRow &row : kMessages) {
        invoke(row, row.arguments());
        EXPECT_THAT(recorded.messages(), ElementsAre(row.message));
        recorded.forgetMessages();
    }
}

TEST_P(DomainMessages, NullArgumentsAreNilAndEmptyTextsAreEmpty)
{
    recorded.carryIn(instance);
    for (const MessageRow &row : kMessages) {
        invoke(row, with(row, Value::nullString()));
        invoke(row, with(row, Value::emptyString()));
        EXPECT_THAT(recorded.messages(), ElementsAre(messageWith(row, "nil"), messageWith(row, "\"\"")));
        recorded.forgetMessages();
    }
}

TEST_P(DomainMessages, AnEmptyInstanceGivesTheNeutralResult)
{
    for (const MessageRow &row : kMessages) {
        host::Outcome outcome = invoke(row, row.arguments());
        EXPECT_TRUE(isNeutral(outcome.result)) << row.declaration;
        EXPECT_THAT(outcome.raised, IsEmpty()) << row.declaration;
    }
    EXPECT_TRUE(host.call(instance, "persistentDomainNames").isArray());
    EXPECT_TRUE(host.call(instance, "volatileDomainNames").isArray());
}

TEST_P(DomainMessages, WhatCocoaRaisesIsRaisedInHostCode)
{
    recorded.carryIn(instance);
    for (const MessageRow &row : kMessages) {
        support::LogCapture log;
        recorded.raise(row.selector);
        host::Outcome outcome = invoke(row, row.arguments());
        EXPECT_TRUE(support::raisedOnce(outcome.raised, "NSExceptionKTZ", "raised by the stand-in")) << row.declaration;
        EXPECT_TRUE(isNeutral(outcome.result)) << row.declaration;
        EXPECT_THAT(log.messages(), ElementsAre(support::kStandInLogLine));
    }
}

TEST_P(DomainMessages, ForeignExceptionsPassThrough)
{
    recorded.carryIn(instance);
    for (const MessageRow &row : kMessages)
        recorded.throwForeignObject(row.selector);
    Value text = "text";
    Value dictionary = someDictionary();
    for (const MessageRow &row : kMessages) {
        const host::Arguments arguments = row.arguments();
        void *handles[2] = {};
        for (size_t i = 0; i < arguments.size(); i++)
            handles[i] = arguments[i].isString() ? text.handle() : dictionary.handle();
        auto *function = reinterpret_cast<void *(*)(void *, void *, void *)>(method(row.declaration).function);
        EXPECT_EQ(cocoa::objectThrownBy([&] {
                      void *result = function(instance.handle(), handles[0], handles[1]);
                      Value::adopt(result); // never reached
                  }),
                  "foreign")
            << row.declaration;
    }
}

TEST_P(DomainMessages, TheNameOfADomainIsConvertedBeforeItsContents)
{
    recorded.carryIn(instance);
    for (const char *entry : {"REALGetStringCFString", "REALGetStringEncoding"}) // from 2012 on, and before
        host.beforeCall(entry, [] { converted.push_back("name"); });
    host.beforeCall("REALGetPropValueInt", [] { converted.push_back("contents"); });
    for (const char *setter : {"setPersistentDomain", "setVolatileDomain"}) {
        Value contents = Value::dictionary();
        converted.clear();
        host.call(instance, setter, {contents, "d"});
        EXPECT_THAT(converted, ElementsAre("name", "contents")) << setter;
    }
}

TEST_P(DomainMessages, BooleansAreWhatCocoaAnswers)
{
    recorded.carryIn(instance);
    for (BOOL answer : {NO, YES}) {
        for (const char *selector : {"synchronize", "objectIsForcedForKey:", "objectIsForcedForKey:inDomain:"})
            recorded.answer(selector, answer);
        EXPECT_EQ(host.call(instance, "synchronize").boolean(), answer == YES);
        EXPECT_EQ(host.call(instance, "objectIsForcedForKey", {"k"}).boolean(), answer == YES);
        EXPECT_EQ(host.call(instance, "objectIsForcedForKey", {"k", "d"}).boolean(), answer == YES);
    }
}

TEST_P(DomainMessages, NamesKeepCocoasOrder)
{
    recorded.carryIn(instance);
    NSArray *names = [NSArray arrayWithObjects:@"z", @"Größe", @"", @"a", nil];
    recorded.answerObject("persistentDomainNames", names);
    recorded.answerObject("volatileDomainNames", names);
    for (const char *getter : {"persistentDomainNames", "volatileDomainNames"}) {
        Value result = host.call(instance, getter);
        ASSERT_EQ(result.count(), 4);
        EXPECT_EQ(result.elementType(), host::ElementType::String);
        EXPECT_EQ(result.at(0).text(), "z");
        EXPECT_EQ(result.at(1).text(), "Größe");
        EXPECT_TRUE(result.at(2).isNullHandle());
        EXPECT_EQ(result.at(3).text(), "a");
    }
}

TEST_P(DomainMessages, NamesAreKeptUpToWhereCocoaRaised)
{
    recorded.carryIn(instance);
    support::LogCapture log;
    recorded.answerObject("persistentDomainNames", [NSArray arrayWithObjects:@"x", [NSNull null], @"y", nil]);
    host::Outcome outcome = host.tryCall(instance, "persistentDomainNames");
    EXPECT_EQ(outcome.raised.size(), 1u) << "what is no string is asked for its text all the same";
    ASSERT_EQ(outcome.result.count(), 1);
    EXPECT_EQ(outcome.result.at(0).text(), "x");
}
