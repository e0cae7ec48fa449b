// Arrays of strings and of Variants under a key.
#include "tests/support/cocoa_method.h"
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"
#include "tests/support/recording_defaults.h"
#include "tests/userdefaults/cocoa_objects.h"

using host::Value;
using testing::ElementsAre;

namespace {

struct ArrayHost {
    const char *name;
    double version;
    bool arrayStorage;
    bool readsStorage; // expected of the plug-in
};

const ArrayHost kArrayHosts[] = {
    {"OldHostWithStorage", 2011.4, true, true},  {"OldHostWithoutStorage", 2011.4, false, false},
    {"LastHostWithStorage", 2013.9, true, true}, {"LastHostWithoutStorage", 2013.9, false, false},
    {"FirstLaterHost", 2013.91, false, false},   {"LaterHostWithStorageAllTheSame", 2014.1, true, false},
};

struct Kind {
    const char *getter;
    const char *setter;
    const char *selector;
    const char *reader; // the host's entry point for an element
    host::ElementType elements;
};

const Kind kKinds[] = {
    {"stringArrayForKey", "setStringArrayValue", "stringArrayForKey:", "RuntimeDirectReadStringArray",
     host::ElementType::String},
    {"arrayForKey", "setArrayValue", "arrayForKey:", "RuntimeDirectReadObjectArray", host::ElementType::Object},
};

// Texts as elements of either kind of array; an empty text stands for the null handle.
Value arrayOf(const Kind &kind, const std::vector<std::string> &texts)
{
    Value array = Value::array(kind.elements);
    for (const std::string &text : texts) {
        if (!text.empty())
            array.append(text);
        else
            array.append(kind.elements == host::ElementType::String ? Value::nullString() : Value());
    }
    return array;
}

// What the plug-in converts, in its order.
std::vector<std::string> converted;

class ArrayAccessors : public support::BlackBox, public testing::WithParamInterface<ArrayHost> {
protected:
    void startHost()
    {
        host::Profile profile = *host::Profile::named("2013.03");
        profile.version = GetParam().version;
        profile.arrayStorage = GetParam().arrayStorage;
        start(profile);
        instance = newEmptyInstance();
    }

    void TearDown() override
    {
        instance = Value();
        support::BlackBox::TearDown();
    }

    std::string sentFor(const Kind &kind, const Value &array)
    {
        recorded.forgetMessages();
        host.call(instance, kind.setter, {"Key", array});
        EXPECT_EQ(recorded.messages().size(), 1u);
        return recorded.messages().empty() ? "" : recorded.messages()[0];
    }

    Value instance;
    support::RecordingDefaults recorded;
};

INSTANTIATE_TEST_SUITE_P(Hosts, ArrayAccessors, testing::ValuesIn(kArrayHosts),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace

TEST_P(ArrayAccessors, SettersSendTheElementsInOrder)
{
    startHost();
    recorded.carryIn(instance);
    for (const Kind &kind : kKinds) {
        Value array = arrayOf(kind, {"one", "zwei", "drei"});
        host.resetCounts();
        EXPECT_EQ(sentFor(kind, array), "setObject:[\"one\", \"zwei\", \"drei\"] forKey:\"Key\"");
        EXPECT_EQ(host.calls(kind.reader), GetParam().readsStorage ? 0 : 3);
    }
}

TEST_P(ArrayAccessors, SettersPassOverNullsWhereverTheyAre)
{
    startHost();
    recorded.carryIn(instance);
    for (const Kind &kind : kKinds) {
        EXPECT_EQ(sentFor(kind, arrayOf(kind, {"", "a", "", "", "b", ""})), "setObject:[\"a\", \"b\"] forKey:\"Key\"");
        EXPECT_EQ(sentFor(kind, arrayOf(kind, {"", ""})), "setObject:[] forKey:\"Key\"");
    }
}

TEST_P(ArrayAccessors, NoArrayIsNilAndAnEmptyOneEmpty)
{
    startHost();
    recorded.carryIn(instance);
    for (const Kind &kind : kKinds) {
        EXPECT_EQ(sentFor(kind, Value()), "setObject:nil forKey:\"Key\"");
        EXPECT_EQ(sentFor(kind, Value::array(kind.elements)), "setObject:[] forKey:\"Key\"");
    }
}

TEST_P(ArrayAccessors, ElementsWithoutACocoaFormArePassedOver)
{
    startHost();
    recorded.carryIn(instance);
    Value colors = Value::array(host::ElementType::Color, {Value::color(1)});
    Value array = Value::variants({1, Value::memoryBlock(""), "text", colors, Value::variants({2, "inner"})});
    EXPECT_EQ(sentFor(kKinds[1], array), "setObject:[1, \"text\", [2, \"inner\"]] forKey:\"Key\"");
}

TEST_P(ArrayAccessors, AnElementIsLockedOnceWhileItIsConvertedAndUnlockedAfter)
{
    startHost();
    recorded.carryIn(instance);
    const char *textService = GetParam().version < 2012 ? "REALGetStringEncoding" : "REALGetStringCFString";
    const struct {
        const Kind &kind;
        Value element;
        const char *conversion; // the host's service that is asked first
    } rows[] = {{kKinds[0], "text", textService}, {kKinds[1], Value::dictionary(), "VarType"}};
    for (const auto &row : rows) {
        Value array = Value::array(row.kind.elements, {row.element});
        auto ownLocks = [&] { return host.handleInfo(row.element.handle())->heldElsewhere(); };
        std::vector<int> locks;
        host.beforeCall(row.conversion, [&] { locks.push_back(ownLocks()); });
        sentFor(row.kind, array);
        host.beforeCall(row.conversion, nullptr);
        EXPECT_EQ(std::count(locks.begin(), locks.end(), 1), 1) << row.kind.setter;
        EXPECT_EQ(ownLocks(), 0);
    }
}

// Host code that runs while an element is converted: it makes the array move its storage, and changes what comes next.
TEST_P(ArrayAccessors, WhereTheElementsLieIsAskedAnewForEach)
{
    startHost();
    recorded.carryIn(instance);
    const char *textService = GetParam().version < 2012 ? "REALGetStringEncoding" : "REALGetStringCFString";
    for (const Kind &kind : kKinds) {
        const bool ofTexts = kind.elements == host::ElementType::String;
        Value array = arrayOf(kind, std::vector<std::string>(40, "early"));
        int calls = 0;
        const char *service = ofTexts ? textService : "VarType";
        host.beforeCall(service, [&] {
            if (calls++ != (ofTexts ? 1 : 0)) // the key is converted by the first of them
                return;
            for (int i = 0; i < 1000; i++)
                array.append("late");
            for (int i = 1; i < 40; i++)
                array.setAt(i, "late");
        });
        std::string expected = "\"early\"";
        for (int i = 1; i < 40; i++)
            expected += ", \"late\"";
        EXPECT_EQ(sentFor(kind, array), "setObject:[" + expected + "] forKey:\"Key\"");
        host.beforeCall(service, nullptr);
    }
}

TEST_P(ArrayAccessors, GettersGiveEmptyArraysForNothing)
{
    startHost();
    for (const Kind &kind : kKinds) {
        Value array = host.call(instance, kind.getter, {"Key"}); // the instance is empty
        ASSERT_TRUE(array.isArray()) << kind.getter;
        EXPECT_EQ(array.elementType(), kind.elements);
        EXPECT_EQ(array.count(), 0);
    }
    recorded.carryIn(instance);
    for (const Kind &kind : kKinds) {
        EXPECT_EQ(host.call(instance, kind.getter, {"Key"}).count(), 0);
        EXPECT_EQ(host.call(instance, kind.getter, {Value::nullString()}).count(), 0);
    }
    EXPECT_THAT(recorded.messages(), ElementsAre("stringArrayForKey:\"Key\"", "stringArrayForKey:nil",
                                                 "arrayForKey:\"Key\"", "arrayForKey:nil"));
}

TEST_P(ArrayAccessors, StoredArraysAreReadBackInTheirOrder)
{
    startHost();
    Value defaults = standardUserDefaults();
    host.call(defaults, "setStringArrayValue", {"Texts", Value::strings({"b", "", "a", "b"})});
    Value texts = host.call(defaults, "stringArrayForKey", {"Texts"});
    ASSERT_EQ(texts.count(), 4);
    EXPECT_EQ(texts.at(0).text(), "b");
    EXPECT_TRUE(texts.at(1).isNullHandle());
    EXPECT_EQ(texts.at(2).text(), "a");

    Value mixed = Value::variants({"text", 5, true, Value::dictionary({{"k", 1.5}}), Value::strings({"inner"})});
    host.call(defaults, "setArrayValue", {"Mixed", mixed});
    Value array = host.call(defaults, "arrayForKey", {"Mixed"});
    ASSERT_EQ(array.count(), 5);
    EXPECT_EQ(array.at(0).text(), "text");
    EXPECT_EQ(array.at(1).int32(), 5);
    EXPECT_TRUE(array.at(2).boolean());
    EXPECT_EQ(array.at(3).lookup("k").number(), 1.5);
    EXPECT_EQ(array.at(4).at(0).text(), "inner");
    EXPECT_EQ(host.call(defaults, "stringArrayForKey", {"Mixed"}).count(), 0) << "not all of them are strings";
    EXPECT_EQ(host.call(defaults, "arrayForKey", {"Texts"}).count(), 4);

    host.call(defaults, "setArrayValue", {"Mixed", Value()});
    EXPECT_TRUE(host.call(defaults, "variantForKey", {"Mixed"}).isNil());
    host.call(defaults, "setArrayValue", {"Mixed", Value::variants({})});
    EXPECT_TRUE(host.call(defaults, "variantForKey", {"Mixed"}).isArray());
}

TEST_P(ArrayAccessors, WhatCocoaRaisesIsRaisedInHostCodeAndGettersGiveWhatTheyHave)
{
    startHost();
    recorded.carryIn(instance);
    recorded.raise("setObject:forKey:");
    for (const Kind &kind : kKinds) {
        support::LogCapture log;
        recorded.raise(kind.selector);
        host::Outcome outcome = host.tryCall(instance, kind.getter, {"Key"});
        EXPECT_TRUE(support::raisedOnce(outcome.raised, "NSExceptionKTZ", "raised by the stand-in"));
        ASSERT_TRUE(outcome.result.isArray());
        EXPECT_EQ(outcome.result.count(), 0);
        EXPECT_TRUE(support::raisedOnce(host.tryCall(instance, kind.setter, {"Key", arrayOf(kind, {"a"})}).raised,
                                        "NSExceptionKTZ", "raised by the stand-in"));
        EXPECT_THAT(log.messages(), ElementsAre(support::kStandInLogLine, support::kStandInLogLine));
    }
}

TEST_P(ArrayAccessors, ForeignExceptionsPassThroughAndLocksAreLetGo)
{
    startHost();
    recorded.carryIn(instance);
    recorded.throwForeignObject("setObject:forKey:");
    Value key = "Key";
    for (const Kind &kind : kKinds) {
        recorded.throwForeignObject(kind.selector);
        Value array = arrayOf(kind, {"a", "b"});
        auto *set = reinterpret_cast<void (*)(void *, void *, void *)>(method(kind.setter).function);
        EXPECT_EQ(cocoa::objectThrownBy([&] { set(instance.handle(), key.handle(), array.handle()); }), "foreign");
        auto *get = reinterpret_cast<void *(*)(void *, void *)>(method(kind.getter).function);
        EXPECT_EQ(cocoa::objectThrownBy([&] { get(instance.handle(), key.handle()); }), "foreign");
    }
}

TEST_P(ArrayAccessors, TheKeyIsConvertedBeforeTheElements)
{
    startHost();
    recorded.carryIn(instance);
    for (const char *entry : {"REALGetStringCFString", "REALGetStringEncoding"}) // from 2012 on, and before
        host.beforeCall(entry, [] { converted.push_back("key"); });
    host.beforeCall("RuntimeUBound", [] { converted.push_back("elements"); });
    for (const Kind &kind : kKinds) {
        Value array = Value::array(kind.elements);
        converted.clear();
        host.call(instance, kind.setter, {"Key", array});
        EXPECT_THAT(converted, ElementsAre("key", "elements"));
    }
}

TEST_P(ArrayAccessors, AnArrayThatCocoaCannotMakeIsNil)
{
    startHost();
    recorded.carryIn(instance);
    for (const Kind &kind : kKinds) {
        Value array = arrayOf(kind, {"a"});
        void *(*noArray)(void *, void *, unsigned) = [](void *, void *, unsigned) -> void * { return nullptr; };
        recorded.forgetMessages();
        {
            support::CocoaMethod maker("NSMutableArray", "arrayWithCapacity:", support::MethodOf::Class,
                                       reinterpret_cast<void *>(noArray));
            auto *function = reinterpret_cast<void (*)(void *, void *, void *)>(method(kind.setter).function);
            Value key = "Key";
            function(instance.handle(), key.handle(), array.handle());
        }
        EXPECT_THAT(recorded.messages(), ElementsAre("setObject:nil forKey:\"Key\""));
    }
}

namespace {

class ArrayAccessorsWithout : public support::BlackBox {
protected:
    std::string sentFor(const Kind &kind, const Value &array)
    {
        Value instance = newEmptyInstance();
        support::RecordingDefaults recorded;
        recorded.carryIn(instance);
        host.call(instance, kind.setter, {"Key", array});
        return recorded.messages().empty() ? "" : recorded.messages()[0];
    }
};

} // namespace

// Hosts without the bound count as having one element, as in a Variant's place.
TEST_F(ArrayAccessorsWithout, TheUpperBoundOneElementIsSent)
{
    host.hide("RuntimeUBound");
    start("2013.03");
    for (const Kind &kind : kKinds)
        EXPECT_EQ(sentFor(kind, arrayOf(kind, {"a", "b"})), "setObject:[\"a\"] forKey:\"Key\"");
}

TEST_F(ArrayAccessorsWithout, TheReadersAllElementsArePassedOver)
{
    for (const Kind &kind : kKinds)
        host.hide(kind.reader);
    start("2014.1");
    for (const Kind &kind : kKinds)
        EXPECT_EQ(sentFor(kind, arrayOf(kind, {"a", "b"})), "setObject:[] forKey:\"Key\"");
    host.showAll();
    for (const Kind &kind : kKinds)
        EXPECT_EQ(sentFor(kind, arrayOf(kind, {"a", "b"})), "setObject:[\"a\", \"b\"] forKey:\"Key\"");
}

TEST_F(ArrayAccessorsWithout, ArraysOfTheHostGettersGiveNil)
{
    host.hide("RuntimeArrayCreateSingleDimBoundedArray");
    start("2013.03");
    Value defaults = standardUserDefaults();
    host.call(defaults, "setStringArrayValue", {"Key", Value::strings({"a"})});
    for (const Kind &kind : kKinds) {
        host.resetCounts();
        EXPECT_TRUE(host.call(defaults, kind.getter, {"Key"}).isNil()) << kind.getter;
        EXPECT_EQ(host.calls("REALBuildString"), 0) << "nothing is converted that nobody gets";
    }
}

TEST_F(ArrayAccessorsWithout, ArraysOfTheHostGettersAskCocoaAllTheSame)
{
    host.hide("RuntimeArrayCreateSingleDimBoundedArray");
    start("2013.03");
    Value instance = newEmptyInstance();
    support::RecordingDefaults recorded;
    recorded.carryIn(instance);
    for (const Kind &kind : kKinds)
        host.call(instance, kind.getter, {"Key"});
    EXPECT_THAT(recorded.messages(), ElementsAre("stringArrayForKey:\"Key\"", "arrayForKey:\"Key\""));
}

TEST_F(ArrayAccessorsWithout, AnAssignableForm)
{
    start("2013.03");
    for (const Kind &kind : kKinds)
        EXPECT_EQ(method(kind.getter).setter, nullptr) << kind.getter;
}
