#include "host/profile.h"

#include "tests/host/fixture.h"

namespace {

using namespace host;
using host_tests::entryCall;
using host_tests::PluginFixture;

bool offers(const char *name)
{
    return Host::resolver()(name) != nullptr;
}

class Profiles : public PluginFixture {};

TEST_F(Profiles, PredefinedOnesHaveTheirVersions)
{
    const std::pair<const char *, double> versions[] = {
        {"2009", 0.0},      {"2011.4", 2011.4},   {"2012.0", 2012.0},   {"2012.2", 2012.2},
        {"2013.0", 2013.0}, {"2013.02", 2013.02}, {"2013.03", 2013.03}, {"2014.1", 2014.1},
    };
    ASSERT_EQ(Profile::predefined().size(), std::size(versions));
    for (const auto &[name, version] : versions)
        EXPECT_EQ(Profile::named(name)->versionNumber(), version) << name;
    EXPECT_EQ(Profile::named("2010.5")->versionNumber(), 2010.5);
    EXPECT_EQ(Profile::named("2014.99")->versionNumber(), 2014.99);
    for (const char *none : {"new", "", ".", "-1", "1", "2008.9", "2015", "2099.1", "2.0114e3", "0x7DB", " 2011.4",
                             "2011.4.1", "inf", "nan"})
        EXPECT_FALSE(Profile::named(none)) << none;
}

TEST_F(Profiles, AHostWithoutANumberHasNoVersionEntry)
{
    host.use(*Profile::named("2009"));
    EXPECT_FALSE(offers("REALGetRBVersion"));
    host.use(*Profile::named("2011.4"));
    EXPECT_EQ(entryCall<double>("REALGetRBVersion"), 2011.4);
}

TEST_F(Profiles, StringServicesArriveIn2012)
{
    for (const char *name : {"PluginGetStringData", "PluginDisposeStringData", "REALGetStringCFString"}) {
        host.use(*Profile::named("2011.4"));
        EXPECT_FALSE(offers(name)) << name;
        host.use(*Profile::named("2012.0"));
        EXPECT_TRUE(offers(name)) << name;
    }
}

TEST_F(Profiles, WithAndWithoutChangeWhatIsOffered)
{
    Profile profile = *Profile::named("2011.4");
    profile.with = {"PluginGetStringData"};
    profile.without = {"REALLockObject", "VarType"};
    host.use(profile);
    EXPECT_TRUE(offers("PluginGetStringData"));
    EXPECT_FALSE(offers("REALLockObject"));
    void *none = nullptr;
    EXPECT_EQ(entryCall<void *>("REALLoadGlobalMethod", none, "VarType(value As Variant) As Int32"), nullptr);
    EXPECT_NE(entryCall<void *>("REALLoadGlobalMethod", none, "LenB( s as string ) as integer"), nullptr);
}

TEST_F(Profiles, OldStringRecordsHaveTheTextOneByteIntoTheBuffer)
{
    host.use(*Profile::named("2011.4"));
    Value string = Value::string("abc", kMacRoman);
    auto **words = static_cast<char **>(string.handle());
    EXPECT_EQ(std::string(words[1] + 1), "abc");
    EXPECT_EQ(static_cast<int32_t *>(string.handle())[3], 3);
}

TEST_F(Profiles, NewStringRecordsTellAReaderOfTheOldLayout)
{
    host.use(*Profile::named("2012.0"));
    Value string("abc");
    auto **words = static_cast<char **>(string.handle());
    int32_t length = static_cast<int32_t *>(string.handle())[3];
    EXPECT_EQ(std::string(words[1] + 1, size_t(length)), "this string was read in the layout of hosts before 2012");
    EXPECT_EQ(string.text(), "abc");
}

TEST_F(Profiles, ArraysHaveStorageUpTo2013_9)
{
    for (const auto &[version, stored] : {std::pair("2009", true), {"2013.9", true}, {"2013.91", false}}) {
        host.use(*Profile::named(version));
        Value array = Value::array(ElementType::Int32, {10, 20, 30});
        auto *elements = static_cast<int32_t *>(static_cast<interface::ArrayRecord *>(array.handle())->elements);
        EXPECT_EQ(elements != nullptr, stored) << version;
        if (elements)
            EXPECT_EQ(elements[2], 30);
    }
    Profile without = *Profile::named("2011.4");
    without.arrayStorage = false;
    host.use(without);
    EXPECT_EQ(static_cast<interface::ArrayRecord *>(Value::strings({"a"}).handle())->elements, nullptr);
}

TEST_F(Profiles, FamilyFeaturesAreLeftOutByNameOrAltogether)
{
    Profile profile;
    profile.familyLeavesOut = {"NSFontKTZ"};
    EXPECT_TRUE(profile.familyLeaves("NSFontKTZ"));
    EXPECT_FALSE(profile.familyLeaves("NSErrorKTZ"));
    profile.familyLeavesOut = {"*"};
    profile.familyKeeps = {"NSErrorKTZ"};
    EXPECT_TRUE(profile.familyLeaves("KTZREALobjectWrapper"));
    EXPECT_FALSE(profile.familyLeaves("NSErrorKTZ"));
}

} // namespace
