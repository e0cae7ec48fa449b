// What REALPluginMain asks of the host, what it tells the host and what it remembers.
#include "plugin/entry.h"
#include "tests/support/fake_host.h"
#include "userdefaults/class_tables.h"

#include <cmath>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<int32_t> reportedVersions;
// Never destroyed, as a host keeps its records, and with them the tables that the plug-in made for it.
std::vector<REALclassDefinition> &registeredRecords = *new std::vector<REALclassDefinition>;
double version;

void registerPluginVersion(int32_t recordVersion)
{
    reportedVersions.push_back(recordVersion);
}
double hostVersion()
{
    return version;
}
void registerClass(REALclassDefinition *definition)
{
    registeredRecords.push_back(*definition);
    definition->forSystemUse = 24; // as a host does
}

void offerHost(std::optional<double> number)
{
    fake_host::offer("RegisterPluginVersion", registerPluginVersion);
    fake_host::offer("PluginRegisterClass", registerClass);
    fake_host::offered.erase("REALGetRBVersion");
    if (number) {
        version = *number;
        fake_host::offer("REALGetRBVersion", hostVersion);
    }
}

// The declaration, functions and flags of a method of a registered record, in either layout.
struct Method {
    const void *function, *setter;
    std::string declaration;
    int32_t flags;

    bool operator==(const Method &other) const
    {
        return function == other.function && setter == other.setter && declaration == other.declaration &&
               flags == other.flags;
    }
};

std::vector<Method> methodsOf(const void *table, int32_t count, int32_t recordVersion)
{
    std::vector<Method> methods;
    const auto *word = static_cast<const uint32_t *>(table);
    for (int32_t i = 0; i < count; i++, word += recordVersion == 9 ? 4 : 6)
        methods.push_back({reinterpret_cast<void *>(word[0]), reinterpret_cast<void *>(word[1]),
                           reinterpret_cast<const char *>(word[2]), static_cast<int32_t>(word[3])});
    return methods;
}

std::vector<Method> allMethods(const REALclassDefinition &record)
{
    auto methods = methodsOf(record.methods, record.methodCount, record.version);
    auto shared = methodsOf(record.sharedMethods, record.sharedMethodCount, record.version);
    methods.insert(methods.end(), shared.begin(), shared.end());
    return methods;
}

struct Choice {
    const char *name;
    std::optional<double> hostVersion;
    int32_t recordVersion;
};

void PrintTo(const Choice &choice, std::ostream *out)
{
    *out << choice.name;
}

class RecordVersion : public ::testing::TestWithParam<Choice> {};

TEST_P(RecordVersion, IsChosenByTheHostsVersionReportedAndWrittenIntoTheRecord)
{
    offerHost(GetParam().hostVersion);
    REALPluginMain(fake_host::resolve);

    EXPECT_THAT(reportedVersions, ElementsAre(GetParam().recordVersion));
    ASSERT_EQ(registeredRecords.size(), 1u);
    EXPECT_EQ(registeredRecords[0].version, GetParam().recordVersion);
    EXPECT_EQ(CurrentREALControlVersion, GetParam().recordVersion);
    EXPECT_EQ(rbversion_rbversion, GetParam().hostVersion.value_or(0.0));
}

INSTANTIATE_TEST_SUITE_P(Hosts, RecordVersion,
                         ::testing::Values(Choice{"NoVersion", std::nullopt, 9}, Choice{"Zero", 0.0, 9},
                                           Choice{"V2009", 2009.0, 9}, Choice{"V2011_4", 2011.4, 9},
                                           Choice{"JustBelow2012", std::nextafter(2012.0, 0), 9},
                                           Choice{"V2012", 2012.0, 10}, Choice{"V2012_2", 2012.2, 10},
                                           Choice{"JustBelow2013", std::nextafter(2013.0, 0), 10},
                                           Choice{"V2013", 2013.0, 11}, Choice{"V2013_02", 2013.02, 11},
                                           Choice{"JustBelow2013_03", std::nextafter(2013.03, 0), 11},
                                           Choice{"V2013_03", 2013.03, 12}, Choice{"V2014_1", 2014.1, 12}),
                         [](const auto &info) { return info.param.name; });

TEST(Entry, StartsFromNothing)
{
    EXPECT_EQ(gResolver, nullptr);
    EXPECT_EQ(rbversion_rbversion, 0.0);
    EXPECT_EQ(CurrentREALControlVersion, 12);
    EXPECT_EQ(gpartname, nullptr);
    EXPECT_EQ(gpluginname, nullptr);
    EXPECT_EQ(gplugin, 0);
}

TEST(Entry, RemembersTheResolverAndItsNames)
{
    offerHost(2013.03);
    REALPluginMain(fake_host::resolve);
    EXPECT_EQ(gResolver, fake_host::resolve);
    EXPECT_STREQ(gpartname, "NSUserDefaults");
    EXPECT_STREQ(gpluginname, "Cocoa");
    EXPECT_EQ(gplugin, 1);
}

TEST(Entry, AsksTheHostForThreeNamesAndNothingElse)
{
    offerHost(2013.03);
    REALPluginMain(fake_host::resolve);
    EXPECT_THAT(fake_host::asked, ElementsAre("RegisterPluginVersion", "REALGetRBVersion", "PluginRegisterClass"));
}

TEST(Entry, AsksAnOldHostForTheSameThreeNames)
{
    offerHost(std::nullopt);
    REALPluginMain(fake_host::resolve);
    EXPECT_THAT(fake_host::asked, ElementsAre("RegisterPluginVersion", "REALGetRBVersion", "PluginRegisterClass"));
}

class RecordLayout : public ::testing::TestWithParam<double> {};

TEST_P(RecordLayout, RoundsTheDataSizeUpTo16)
{
    offerHost(GetParam());
    REALPluginMain(fake_host::resolve);
    ASSERT_EQ(registeredRecords.size(), 1u);
    EXPECT_EQ(registeredRecords[0].dataSize, 16);
}

TEST_P(RecordLayout, WithoutPluginRegisterClassRegistersNothingSilently)
{
    offerHost(GetParam());
    fake_host::offered.erase("PluginRegisterClass");
    REALPluginMain(fake_host::resolve);
    EXPECT_EQ(reportedVersions.size(), 1u);
    EXPECT_THAT(registeredRecords, IsEmpty());
}

TEST_P(RecordLayout, RegistersOnceTheHostCan)
{
    offerHost(GetParam());
    fake_host::offered.erase("PluginRegisterClass");
    REALPluginMain(fake_host::resolve);
    static auto &unregistered = *new REALclassDefinition; // the tables that no host took
    unregistered = userDefaultsClass;
    fake_host::offer("PluginRegisterClass", registerClass);
    REALPluginMain(fake_host::resolve);
    ASSERT_EQ(registeredRecords.size(), 1u);
    EXPECT_FALSE(allMethods(registeredRecords[0]).empty());
}

TEST_P(RecordLayout, ASecondCallRegistersTheSameClassFromItsOriginalTables)
{
    offerHost(GetParam());
    REALPluginMain(fake_host::resolve);
    REALPluginMain(fake_host::resolve);

    ASSERT_EQ(registeredRecords.size(), 2u);
    const REALclassDefinition &first = registeredRecords[0], &second = registeredRecords[1];
    EXPECT_EQ(allMethods(first), allMethods(second));
    EXPECT_STREQ(second.name, "NSUserDefaultsKTZ");
    EXPECT_EQ(second.version, first.version);
    EXPECT_EQ(second.dataSize, 16);
    EXPECT_EQ(second.constructor, first.constructor);
    EXPECT_EQ(second.destructor, first.destructor);
    EXPECT_EQ(second.mFlags, 4);
}

TEST_P(RecordLayout, ASecondCallKeepsWhereTheInstanceDataLies)
{
    offerHost(GetParam());
    REALPluginMain(fake_host::resolve);
    REALPluginMain(fake_host::resolve);
    ASSERT_EQ(registeredRecords.size(), 2u);
    EXPECT_EQ(registeredRecords[0].forSystemUse, 0);
    EXPECT_EQ(registeredRecords[1].forSystemUse, 24) << "living instances are read by it";
}

INSTANTIATE_TEST_SUITE_P(Hosts, RecordLayout, ::testing::Values(2011.4, 2013.03),
                         [](const auto &info) { return info.param < 2012 ? "Version9" : "Version12"; });

TEST(SecondCall, WithoutAVersionUsesTheOneLearnedFirst)
{
    offerHost(2012.2);
    REALPluginMain(fake_host::resolve);
    offerHost(std::nullopt);
    REALPluginMain(fake_host::resolve);
    EXPECT_THAT(reportedVersions, ElementsAre(10, 10));
    EXPECT_EQ(rbversion_rbversion, 2012.2);
}

TEST(SecondCall, OnAnotherLayoutRegistersTheSameMethods)
{
    offerHost(2011.4);
    REALPluginMain(fake_host::resolve);
    offerHost(2013.03);
    REALPluginMain(fake_host::resolve);
    offerHost(2011.4);
    REALPluginMain(fake_host::resolve);

    ASSERT_EQ(registeredRecords.size(), 3u);
    EXPECT_EQ(registeredRecords[1].version, 12);
    EXPECT_EQ(allMethods(registeredRecords[0]), allMethods(registeredRecords[1]));
    EXPECT_EQ(allMethods(registeredRecords[0]), allMethods(registeredRecords[2]));
}

// Every host has this entry point; one without it is not a host.
TEST(EntryDeathTest, RequiresRegisterPluginVersion)
{
    offerHost(2013.03);
    fake_host::offered.erase("RegisterPluginVersion");
    EXPECT_EXIT(REALPluginMain(fake_host::resolve), ::testing::KilledBySignal(SIGSEGV), "");
}

} // namespace
