// Which object gets the message when host code, called by a conversion of the arguments, makes the instance carry
// another one: that other one, since the arguments come first.
#include "tests/support/host_test.h"
#include "tests/support/recording_defaults.h"

using host::Arguments;
using host::Value;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

struct Call {
    const char *method;
    Arguments (*arguments)();
};

void PrintTo(const Call &call, std::ostream *out)
{
    *out << call.method;
}

Arguments name()
{
    return {"Name"};
}

const Call kCalls[] = {
    {"removeObjectForKey", name},
    {"removeVolatileDomainForName", name},
    {"removePersistentDomainForName", name},
    {"addSuiteNamed", name},
    {"removeSuiteNamed", name},
    {"integerForKey", name},
    {"floatForKey", name},
    {"doubleForKey", name},
    {"boolForKey", name},
    {"stringForKey", name},
    {"dataForKey", name},
    {"variantForKey", name},
    {"fileForKey", name},
    {"URLForKey", name},
    {"stringArrayForKey", name},
    {"dictionaryForKey", name},
    {"arrayForKey", name},
    {"objectIsForcedForKey(key as string) as boolean", name},
    {"persistentDomainForName", name},
    {"volatileDomainForName", name},
    {"setIntegerValue",
     [] {
         return Arguments{"Key", 7};
     }},
    {"setFloatValue",
     [] {
         return Arguments{"Key", 0.5f};
     }},
    {"setDoubleValue",
     [] {
         return Arguments{"Key", 0.5};
     }},
    {"setBoolValue",
     [] {
         return Arguments{"Key", true};
     }},
    {"setStringValue",
     [] {
         return Arguments{"Key", "text"};
     }},
    {"setURLValue",
     [] {
         return Arguments{"Key", "http://localhost/"};
     }},
    {"setDataValue",
     [] {
         return Arguments{"Key", Value::memoryBlock("x")};
     }},
    {"setVariantValue",
     [] {
         return Arguments{"Key", Value::memoryBlock("x")};
     }},
    {"setFileValue",
     [] {
         return Arguments{"Key", Value::folderItem("/tmp")};
     }},
    {"setStringArrayValue",
     [] {
         return Arguments{"Key", Value::strings({"a"})};
     }},
    {"setDictionaryValue",
     [] {
         return Arguments{"Key", Value::dictionary({{"a", "b"}})};
     }},
    {"setArrayValue",
     [] {
         return Arguments{"Key", Value::variants({"a"})};
     }},
    {"registerDefaults",
     [] {
         return Arguments{Value::dictionary({{"a", "b"}})};
     }},
    {"objectIsForcedForKey(key as string, domain as string) as boolean",
     [] {
         return Arguments{"Key", "Domain"};
     }},
    {"setPersistentDomain",
     [] {
         return Arguments{Value::dictionary({{"a", "b"}}), "Name"};
     }},
    {"setVolatileDomain",
     [] {
         return Arguments{Value::dictionary({{"a", "b"}}), "Name"};
     }},
};

// Called by the conversions of arguments, and by nothing that is made of an empty answer.
const char *const kConversions[] = {"REALGetStringCFString",   "memoryBlockGetSize",  "pluginObjectType",
                                    "REALFSRefFromFolderItem", "REALGetPropValueInt", "RuntimeUBound"};

class CarriedObject : public support::BlackBoxOn2013, public ::testing::WithParamInterface<Call> {
protected:
    // Calls the member and lets the instance carry `other` from the n-th call of a conversion on, then what it carried
    // before. How many such calls there were.
    int callAndSwap(int n)
    {
        int calls = 0;
        for (const char *entry : kConversions)
            host.beforeCall(entry, [&] {
                if (++calls == n)
                    word() = other.object();
            });
        host.invoke(method(GetParam().method), instance, GetParam().arguments());
        word() = standIn.object();
        for (const char *entry : kConversions)
            host.beforeCall(entry, nullptr);
        return calls;
    }

    void *&word() { return *static_cast<void **>(instance.instanceData()); }

    support::RecordingDefaults standIn, other;
    Value instance;
};

TEST_P(CarriedObject, IsReadWhenTheArgumentsAreConverted)
{
    instance = newEmptyInstance();
    standIn.carryIn(instance);
    const int calls = callAndSwap(0);
    ASSERT_GE(calls, 1);
    EXPECT_THAT(standIn.messages(), SizeIs(1));
    EXPECT_THAT(other.messages(), IsEmpty());

    standIn.forgetMessages();
    EXPECT_EQ(callAndSwap(calls), calls);
    EXPECT_THAT(standIn.messages(), IsEmpty());
    EXPECT_THAT(other.messages(), SizeIs(1));
    instance = {};
}

INSTANTIATE_TEST_SUITE_P(Members, CarriedObject, ::testing::ValuesIn(kCalls), [](const auto &call) {
    const std::string declaration = call.param.method;
    return declaration.substr(0, declaration.find('(')) +
           (declaration.find(',') == std::string::npos ? "" : "InDomain");
});

} // namespace
