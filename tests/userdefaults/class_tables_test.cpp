// The class as each host sees it: every declaration word for word, in order, with what it can be assigned through.
#include "host/interface/records.h"
#include "tests/support/host_test.h"
#include "tests/support/plugin_under_test.h"

#include <algorithm>
#include <iterator>
#include <set>

using support::kClass;

namespace {

// The list stands here a second time on purpose: host programs are compiled against these texts.
struct Row {
    const char *declaration;
    const char *setter; // the method that assigns through this one
};

constexpr Row kMethods[] = {
    {"_exception as NSExceptionKTZ", nullptr},
    {"Constructor", nullptr},
    {"Constructor(username as string)", nullptr},
    {"synchronize as boolean", nullptr},
    {"removeObjectForKey(defaultName as string)", nullptr},
    {"removeVolatileDomainForName(domainName as string)", nullptr},
    {"removePersistentDomainForName(domainName as string)", nullptr},
    {"addSuiteNamed(suiteName as string)", nullptr},
    {"removeSuiteNamed(suiteName as string)", nullptr},
    {"integerForKey(key as string) as integer", "setIntegerValue(key as string, value as integer)"},
    {"floatForKey(key as string) as single", "setFloatValue(key as string, value as single)"},
    {"doubleForKey(key as string) as double", "setDoubleValue(key as string, value as double)"},
    {"boolForKey(key as string) as boolean", "setBoolValue(key as string, value as boolean)"},
    {"stringForKey(key as string) as string", "setStringValue(key as string, value as string)"},
    {"dataForKey(key as string) as memoryblock", "setDataValue(key as string, value as memoryblock)"},
    {"variantForKey(key as string) as variant", "setVariantValue(key as string, value as variant)"},
    {"fileForKey(key as string) as folderitem", "setFileValue(key as string, value as folderitem)"},
    {"URLForKey(key as string) as string", "setURLValue(key as string, value as string)"},
    {"stringArrayForKey(key as string) as string()", nullptr},
    {"dictionaryForKey(key as string) as dictionary", "setDictionaryValue(key as string, value as dictionary)"},
    {"arrayForKey(key as string) as variant()", nullptr},
    {"setIntegerValue(key as string, value as integer)", nullptr},
    {"setFloatValue(key as string, value as single)", nullptr},
    {"setDoubleValue(key as string, value as double)", nullptr},
    {"setBoolValue(key as string, value as boolean)", nullptr},
    {"setStringValue(key as string, value as string)", nullptr},
    {"setDataValue(key as string, value as memoryblock)", nullptr},
    {"setVariantValue(key as string, value as variant)", nullptr},
    {"setFileValue(key as string, value as folderitem)", nullptr},
    {"setURLValue(key as string, value as string)", nullptr},
    {"setStringArrayValue(key as string, values() as string)", nullptr},
    {"setDictionaryValue(key as string, value as dictionary)", nullptr},
    {"setArrayValue(key as string, values() as variant)", nullptr},
    {"registerDefaults(dic as dictionary)", nullptr},
    {"dictionaryRepresentation as dictionary", nullptr},
    {"objectIsForcedForKey(key as string) as boolean", nullptr},
    {"objectIsForcedForKey(key as string, domain as string) as boolean", nullptr},
    {"setPersistentDomain(domain as dictionary, domainName as string)", nullptr},
    {"setVolatileDomain(domain as dictionary, domainName as string)", nullptr},
    {"persistentDomainNames as string()", nullptr},
    {"persistentDomainForName(domainName as string) as dictionary", nullptr},
    {"volatileDomainNames as string()", nullptr},
    {"volatileDomainForName(domainName as string) as dictionary", nullptr},
};

constexpr Row kSharedMethods[] = {
    {"NSGlobalDomain as string", nullptr},       {"NSArgumentDomain as string", nullptr},
    {"NSRegistrationDomain as string", nullptr}, {"NSUserDefaultsDidChangeNotification as string", nullptr},
    {"resetStandardUserDefaults", nullptr},      {"standardUserDefaults as NSUserDefaultsKTZ", nullptr},
};

class ClassTables : public support::BlackBoxOnEveryHost {
protected:
    const host::ClassDescription &classOfPlugin() { return *host.findClass(kClass); }
    const host::interface::ClassRecord &record()
    {
        return *static_cast<const host::interface::ClassRecord *>(classOfPlugin().record);
    }

    template <size_t count>
    void expectRows(const std::vector<host::MethodDescription> &methods, const Row (&rows)[count])
    {
        for (size_t i = 0; i < std::max(methods.size(), count); i++) {
            const std::string registered = i < methods.size() ? methods[i].text : "no further one";
            const std::string listed = i < count ? rows[i].declaration : "no further one";
            ASSERT_EQ(registered, listed) << "userdefaults/class_tables.cpp and the list in this file differ";
            EXPECT_NE(methods[i].function, nullptr) << methods[i].text;
            EXPECT_EQ(methods[i].flags, 4) << methods[i].text;
        }
    }
};

TEST_P(ClassTables, OneClassIsRegistered)
{
    std::vector<std::string> names;
    for (const host::ClassDescription *known : host.classes(true))
        if (known->name.find("NSUserDefaults") != std::string::npos)
            names.push_back(known->name);
    EXPECT_THAT(names, ::testing::ElementsAre("NSUserDefaultsKTZ"));
    EXPECT_EQ(classOfPlugin().superName, "");
    EXPECT_EQ(classOfPlugin().flags, 4);
}

TEST_P(ClassTables, MethodsAreWordForWordAndInOrder)
{
    expectRows(classOfPlugin().methods, kMethods);
}

TEST_P(ClassTables, SharedMethodsAreWordForWordAndInOrder)
{
    expectRows(classOfPlugin().sharedMethods, kSharedMethods);
}

TEST_P(ClassTables, AnAssignableGetterCarriesTheVeryFunctionOfItsSetter)
{
    for (const Row &row : kMethods) {
        const host::MethodDescription *getter = host.findMethod(kClass, row.declaration);
        ASSERT_NE(getter, nullptr) << row.declaration;
        const host::MethodDescription *setter = row.setter ? host.findMethod(kClass, row.setter) : nullptr;
        EXPECT_EQ(setter != nullptr, row.setter != nullptr) << row.declaration;
        EXPECT_EQ(getter->setter, setter ? setter->function : nullptr) << row.declaration;
    }
}

TEST_P(ClassTables, EveryMethodHasAFunctionOfItsOwn)
{
    std::set<void *> functions;
    for (const host::MethodDescription &method : classOfPlugin().methods)
        functions.insert(method.function);
    for (const host::MethodDescription &method : classOfPlugin().sharedMethods)
        functions.insert(method.function);
    EXPECT_EQ(functions.size(), classOfPlugin().methods.size() + classOfPlugin().sharedMethods.size());
}

TEST_P(ClassTables, RecordIsOfTheHostsVersion)
{
    EXPECT_EQ(classOfPlugin().recordVersion, GetParam().recordVersion);
    EXPECT_EQ(record().version, GetParam().recordVersion);
}

TEST_P(ClassTables, InstanceDataIs16BytesBehindTheHostsHeader)
{
    EXPECT_EQ(record().dataSize, 16);
    EXPECT_EQ(record().forSystemUse, 24);
    EXPECT_NE(record().constructor, nullptr);
    EXPECT_NE(record().destructor, nullptr);
}

TEST_P(ClassTables, HasNoMembersOfOtherKinds)
{
    const host::interface::ClassRecord &r = record();
    EXPECT_STREQ(r.name, "NSUserDefaultsKTZ");
    EXPECT_EQ(r.superName, nullptr);
    for (const void *table : {r.properties, r.events, r.eventInstances, r.bindDescriptions, r.constants,
                              r.sharedProperties, r.delegates, r.enums})
        EXPECT_EQ(table, nullptr);
    for (int32_t count : {r.propertyCount, r.eventCount, r.eventInstanceCount, r.bindDescriptionCount, r.constantCount,
                          r.sharedPropertyCount, r.delegateCount, r.enumCount})
        EXPECT_EQ(count, 0);
    EXPECT_EQ(r.interfaces, nullptr);
    EXPECT_EQ(r.mFlags, 4);
}

TEST_P(ClassTables, NoMethodHasAttributes)
{
    const int32_t count = record().methodCount;
    if (GetParam().recordVersion == 9) { // four words a record: the next one begins where attributes would be
        auto methods = static_cast<const host::interface::MethodRecord9 *>(record().methods);
        EXPECT_STREQ(methods[count - 1].declaration, std::end(kMethods)[-1].declaration);
        return;
    }
    auto methods = static_cast<const host::interface::MethodRecord *>(record().methods);
    auto shared = static_cast<const host::interface::MethodRecord *>(record().sharedMethods);
    auto expectNone = [](const host::interface::MethodRecord *table, int32_t rows) {
        for (auto *method = table; method != table + rows; method++) {
            EXPECT_EQ(method->attributeCount, 0) << method->declaration;
            EXPECT_EQ(method->attributes, nullptr) << method->declaration;
        }
    };
    expectNone(methods, count);
    expectNone(shared, record().sharedMethodCount);
}

INSTANTIATE_TEST_SUITE_P(Hosts, ClassTables, support::everyProfile(), support::profileTestName);

} // namespace
