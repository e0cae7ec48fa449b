// Data, files, dictionaries and values of any kind under a key: the message each accessor sends, and what it gives.
#include "tests/support/cocoa_method.h"
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"
#include "tests/support/plugin_under_test.h"
#include "tests/support/recording_defaults.h"
#include "tests/userdefaults/cocoa_objects.h"

using host::Value;
using testing::ElementsAre;

namespace {

struct GetterRow {
    const char *method;
    const char *message; // with KEY in the key's place
    const char *selector;
};

const GetterRow kGetters[] = {
    {"dataForKey", "dataForKey:KEY", "dataForKey:"},
    {"variantForKey", "objectForKey:KEY", "objectForKey:"},
    {"fileForKey", "URLForKey:KEY", "URLForKey:"},
    {"dictionaryForKey", "dictionaryForKey:KEY", "dictionaryForKey:"},
};

struct SetterRow {
    const char *method;
    const char *getter; // whose assignable form it is
    Value (*value)();
    const char *message; // with KEY in the key's place
    const char *nilMessage;
    const char *selector;
};

const SetterRow kSetters[] = {
    {"setDataValue", "dataForKey", [] { return Value::memoryBlock(std::string("a\0b", 3)); },
     "setObject:{610062} forKey:KEY", "setObject:nil forKey:KEY", "setObject:forKey:"},
    {"setVariantValue", "variantForKey", [] { return Value("text"); }, "setObject:\"text\" forKey:KEY",
     "setObject:nil forKey:KEY", "setObject:forKey:"},
    {"setFileValue", "fileForKey", [] { return Value::folderItem("/tmp/some file"); },
     "setURL:<file://localhost/tmp/some%20file> forKey:KEY", "setURL:nil forKey:KEY", "setURL:forKey:"},
    {"setDictionaryValue", "dictionaryForKey",
     [] {
         return Value::dictionary({{"a", "b"}});
     },
     "setObject:{\"a\": \"b\"} forKey:KEY", "setObject:nil forKey:KEY", "setObject:forKey:"},
};

std::string withKey(std::string message, const std::string &key)
{
    return message.replace(message.find("KEY"), 3, key);
}

// What the host language passes as a key, and how Cocoa sees it.
struct KeyRow {
    Value (*key)();
    const char *seen;
};
const KeyRow kKeys[] = {
    {[] { return Value("Key"); }, "\"Key\""},
    {[] { return Value("Schlüssel \U0001F511"); }, "\"Schlüssel \U0001F511\""},
    {[] { return Value::emptyString(); }, "\"\""},
    {[] { return Value::nullString(); }, "nil"},
};

// What the plug-in converts, in its order.
std::vector<std::string> converted;

class ObjectAccessors : public support::BlackBoxOnEveryHost {
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

    void useStandIn() { recorded.carryIn(instance); }
    std::string onlyMessage()
    {
        std::string message = recorded.messages().size() == 1 ? recorded.messages()[0] : "not one message";
        recorded.forgetMessages();
        return message;
    }

    Value instance;
    support::RecordingDefaults recorded;
};

INSTANTIATE_TEST_SUITE_P(Hosts, ObjectAccessors, support::everyProfile(), support::profileTestName);

} // namespace

TEST_P(ObjectAccessors, GettersSendOneMessageWithTheKey)
{
    useStandIn();
    for (const GetterRow &row : kGetters) {
        for (const KeyRow &key : kKeys) {
            EXPECT_TRUE(host.call(instance, row.method, {key.key()}).isNil());
            EXPECT_EQ(onlyMessage(), withKey(row.message, key.seen));
        }
    }
}

TEST_P(ObjectAccessors, SettersSendOneMessageWithTheKeyAndTheValue)
{
    useStandIn();
    for (const SetterRow &row : kSetters) {
        for (const KeyRow &key : kKeys) {
            host.call(instance, row.method, {key.key(), row.value()});
            EXPECT_EQ(onlyMessage(), withKey(row.message, key.seen));
        }
        host.call(instance, row.method, {"Key", Value()});
        EXPECT_EQ(onlyMessage(), withKey(row.nilMessage, "\"Key\"")) << "nil is sent, which removes the value";
    }
}

TEST_P(ObjectAccessors, TheKeyIsConvertedBeforeTheValue)
{
    useStandIn();
    const struct {
        const char *setter;
        Value value;
        const char *firstEntry; // that the value's conversion calls
    } rows[] = {
        {"setDataValue", Value::memoryBlock("x"), "memoryBlockGetSize"},
        {"setVariantValue", Value::memoryBlock("x"), "pluginObjectType"},
        {"setFileValue", Value::folderItem("/tmp"), "REALFSRefFromFolderItem"},
        {"setDictionaryValue", Value::dictionary(), "REALGetPropValueInt"},
    };
    for (const char *entry : {"REALGetStringCFString", "REALGetStringEncoding"}) // from 2012 on, and before
        host.beforeCall(entry, [] { converted.push_back("key"); });
    for (const auto &row : rows) {
        host.beforeCall(row.firstEntry, [] { converted.push_back("value"); });
        converted.clear();
        host.call(instance, row.setter, {"Key", row.value});
        EXPECT_THAT(converted, ElementsAre("key", "value")) << row.setter;
        host.beforeCall(row.firstEntry, nullptr);
    }
}

TEST_P(ObjectAccessors, AnAssignmentToAGetterIsItsSetter)
{
    useStandIn();
    for (const SetterRow &row : kSetters) {
        host.assign(instance, row.getter, {"Key"}, row.value());
        EXPECT_EQ(onlyMessage(), withKey(row.message, "\"Key\""));
    }
}

TEST_P(ObjectAccessors, AnEmptyInstanceGivesNilAndStoresNothing)
{
    for (const GetterRow &row : kGetters)
        EXPECT_TRUE(host.call(instance, row.method, {"Key"}).isNil()) << row.method;
    for (const SetterRow &row : kSetters)
        EXPECT_TRUE(host.tryCall(instance, row.method, {"Key", row.value()}).raised.empty()) << row.method;
}

TEST_P(ObjectAccessors, WhatCocoaRaisesIsRaisedInHostCodeAndTheResultIsNil)
{
    useStandIn();
    for (const GetterRow &row : kGetters) {
        support::LogCapture log;
        recorded.raise(row.selector);
        host::Outcome outcome = host.tryCall(instance, row.method, {"Key"});
        EXPECT_TRUE(outcome.result.isNil());
        EXPECT_TRUE(support::raisedOnce(outcome.raised, "NSExceptionKTZ", "raised by the stand-in")) << row.method;
        EXPECT_THAT(log.messages(), ElementsAre(support::kStandInLogLine));
    }
    recorded.raise("setObject:forKey:");
    recorded.raise("setURL:forKey:");
    for (const SetterRow &row : kSetters) {
        support::LogCapture log;
        EXPECT_TRUE(support::raisedOnce(host.tryCall(instance, row.method, {"Key", row.value()}).raised,
                                        "NSExceptionKTZ", "raised by the stand-in"))
            << row.method;
        EXPECT_THAT(log.messages(), ElementsAre(support::kStandInLogLine));
    }
}

TEST_P(ObjectAccessors, ForeignExceptionsPassThrough)
{
    useStandIn();
    for (const GetterRow &row : kGetters)
        recorded.throwForeignObject(row.selector);
    for (const SetterRow &row : kSetters)
        recorded.throwForeignObject(row.selector);
    Value key = "Key";
    for (const GetterRow &row : kGetters) {
        auto *function = reinterpret_cast<void *(*)(void *, void *)>(method(row.method).function);
        EXPECT_EQ(cocoa::objectThrownBy([&] { function(instance.handle(), key.handle()); }), "foreign");
    }
    for (const SetterRow &row : kSetters) {
        auto *function = reinterpret_cast<void (*)(void *, void *, void *)>(method(row.method).function);
        Value value = row.value().boxed();
        EXPECT_EQ(cocoa::objectThrownBy([&] { function(instance.handle(), key.handle(), value.handle()); }), "foreign");
    }
}

namespace {

class StoredObjects : public support::BlackBoxOn2013 {
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

    Value get(const char *getter) { return host.call(defaults, getter, {"Key"}); }
    void set(const char *setter, const Value &value) { host.call(defaults, setter, {"Key", value}); }

    Value defaults;
};

} // namespace

TEST_F(StoredObjects, DataIsReadBackAsDataOnly)
{
    set("setDataValue", Value::memoryBlock("bytes"));
    EXPECT_EQ(get("dataForKey").bytes(), "bytes");
    EXPECT_EQ(get("variantForKey").bytes(), "bytes");
    EXPECT_TRUE(get("dictionaryForKey").isNil());
    EXPECT_EQ(get("arrayForKey").count(), 0);
    EXPECT_EQ(get("stringForKey").text(), "");
}

TEST_F(StoredObjects, AFileIsReadBackAsAFile)
{
    set("setFileValue", Value::folderItem("/tmp/some file"));
    EXPECT_EQ(get("fileForKey").path(), "/tmp/some file");
    EXPECT_EQ(get("URLForKey").text(), "file://localhost/tmp/some%20file");
    EXPECT_EQ(get("stringForKey").text(), "/tmp/some file") << "Cocoa stores the path";
}

TEST_F(StoredObjects, ADictionaryIsReadBackAsADictionary)
{
    set("setDictionaryValue", Value::dictionary({{"frame", Value::variants({0, 0, 800, 600})}, {"open", true}}));
    Value dictionary = get("dictionaryForKey");
    EXPECT_EQ(dictionary.lookup("frame").at(3).int32(), 600);
    EXPECT_TRUE(dictionary.lookup("open").boolean());
    EXPECT_EQ(get("variantForKey").lookup("frame").count(), 4);
    EXPECT_TRUE(get("dataForKey").isNil());
}

TEST_F(StoredObjects, NilAndEmptyDataRemoveTheValueButAnEmptyDictionaryIsKept)
{
    for (const SetterRow &row : kSetters) {
        set("setStringValue", "there");
        set(row.method, Value());
        EXPECT_TRUE(get("variantForKey").isNil()) << row.method;
    }
    set("setStringValue", "there");
    set("setDataValue", Value::memoryBlock(""));
    EXPECT_TRUE(get("variantForKey").isNil());
    set("setDictionaryValue", Value::dictionary());
    EXPECT_EQ(get("dictionaryForKey").count(), 0);
    EXPECT_FALSE(get("variantForKey").isNil());
    set("setVariantValue", "");
    EXPECT_TRUE(get("variantForKey").isString());
}

TEST_F(StoredObjects, WhatNoPropertyListHoldsRaisesAndKeepsTheOldValue)
{
    support::LogCapture log;
    set("setStringValue", "old");
    host.defineClass({"Thing", "", 16, {}, {}, nullptr, nullptr});
    const Value values[] = {
        Value::folderItem("/tmp"),
        Value::dictionary({{"nothing", Value()}}),
        Value::dictionary({{1, "a number as key"}}),
        Value::variants({Value()}),
        Value::variants({Value::folderItem("/tmp")}),
        host.newInstance("Thing"), // travels in a wrapper, which no database can hold
    };
    for (const Value &value : values) {
        host::Outcome outcome = host.tryCall(defaults, "setVariantValue", {"Key", value});
        ASSERT_EQ(outcome.raised.size(), 1u) << value.describe();
        EXPECT_EQ(outcome.raised[0].className, "NSExceptionKTZ");
        EXPECT_EQ(get("stringForKey").text(), "old") << value.describe();
    }
    EXPECT_EQ(log.messages().size(), std::size(values));
}

TEST_F(StoredObjects, ANullOrEmptyKeyIsCocoasToRefuse)
{
    support::LogCapture log;
    for (const Value &key : {Value::nullString(), Value::emptyString()}) {
        EXPECT_EQ(host.tryCall(defaults, "setVariantValue", {key, 1}).raised.size(), 1u);
        EXPECT_TRUE(host.tryCall(defaults, "variantForKey", {key}).result.isNil());
    }
}
