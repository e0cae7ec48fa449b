// The file itself: what it exports, what it needs, and what it must not have.
#include "ground.h"
#include "tests/plugin/elf_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

class Binary : public ::testing::Test {
protected:
    const ElfFile file{std::string(kBuildDir) + "/NSUserDefaults.so"};
};

TEST_F(Binary, ExportsTheEntryFunctionAndNothingElse)
{
    EXPECT_THAT(file.exports, ElementsAre("REALPluginMain"));
}

TEST_F(Binary, NeedsThePlatformLayerBeforeWhatItReplaces)
{
    ASSERT_FALSE(file.needed.empty());
    EXPECT_EQ(file.needed.front(), "libplatform-gnustep.so");
}

TEST_F(Binary, NeedsNeitherTheEmbeddedHostNorTheCompanionLibrary)
{
    EXPECT_THAT(file.needed, Each(Not(AnyOf(HasSubstr("host"), HasSubstr("Family")))));
}

TEST_F(Binary, HasNoTextRelocations)
{
    EXPECT_FALSE(file.hasTextRelocations);
}

TEST_F(Binary, HasNoExecutableStack)
{
    EXPECT_FALSE(file.hasExecutableStack);
}

TEST_F(Binary, HasNoConstructorsOfGlobalVariables)
{
    ASSERT_TRUE(file.hasFullSymbolTable) << "stripped: nothing to look at";
    EXPECT_THAT(file.localFunctions, Contains("REALPluginMain"));
    EXPECT_THAT(file.localFunctions,
                Each(Not(AnyOf(StartsWith("_GLOBAL__sub_I"), StartsWith("__cxx_global_var_init")))));
}

} // namespace
