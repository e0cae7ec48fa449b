// Every service of the host that is found by one name: its name, its signature, and what happens while it is missing.
#include "hostapi/services.h"
#include "hostapi/strings.h"
#include "tests/support/fake_host.h"
#include "tests/support/service_probe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using service_probe::Service;
using ::testing::ElementsAre;

namespace {

// clang-format off
const std::vector<Service> &services()
{
    static const std::vector<Service> rows = {
        SERVICE(REALRegisterClass, "PluginRegisterClass", void(REALclassDefinition *)),
        SERVICE(REALnewInstance, "PluginNewInstance", REALobject(const char *)),
        SERVICE(REALLockObject, "REALLockObject", void(REALobject)),
        SERVICE(REALUnlockObject, "REALUnlockObject", void(REALobject)),
        SERVICE(REALLockString, "REALLockString", void(REALstring)),
        SERVICE(REALUnlockString, "REALUnlockString", void(REALstring)),
        SERVICE(REALRaiseException, "RuntimeRaiseException", void(REALobject)),
        SERVICE(REALGetClassRef, "pluginObjectType", REALclassRef(const char *)),
        SERVICE(REALObjectIsA, "RuntimeObjectIsa", RBBoolean(REALobject, REALclassRef)),
        SERVICE(REALLoadObjectMethod, "REALLoadObjectMethod", void *(REALobject, const char *)),
        SERVICE(REALGetPropValueInt32, "REALGetPropValueInt", RBBoolean(REALobject, const char *, int32_t *)),
        SERVICE(REALGetPropValueInt64, "REALGetPropValueInt64", RBBoolean(REALobject, const char *, int64_t *)),
        SERVICE(REALGetPropValueSingle, "REALGetPropValueSingle", RBBoolean(REALobject, const char *, float *)),
        SERVICE(REALGetPropValueDouble, "REALGetPropValueDouble", RBBoolean(REALobject, const char *, double *)),
        SERVICE(REALGetPropValueString, "REALGetPropValueString", RBBoolean(REALobject, const char *, REALstring *)),
        SERVICE(REALGetPropValueObject, "REALGetPropValueObject", RBBoolean(REALobject, const char *, REALobject *)),
        SERVICE(REALSetPropValueInt32, "REALSetPropValueInt", RBBoolean(REALobject, const char *, int32_t)),
        SERVICE(REALSetPropValueString, "REALSetPropValueString", RBBoolean(REALobject, const char *, REALstring)),
        SERVICE(REALNewVariantString, "StringToVariant", REALobject(REALstring)),
        SERVICE(REALNewVariantInteger, "Int32ToVariant", REALobject(int32_t)),
        SERVICE(REALNewVariantUInt32, "UInt32ToVariant", REALobject(uint32_t)),
        SERVICE(REALNewVariantInt64, "Int64ToVariant", REALobject(int64_t)),
        SERVICE(REALNewVariantUInt64, "UInt64ToVariant", REALobject(uint64_t)),
        SERVICE(REALNewVariantSingle, "SingleToVariant", REALobject(float)),
        SERVICE(REALNewVariantDouble, "DoubleToVariant", REALobject(double)),
        SERVICE(REALNewVariantBoolean, "BooleanToVariant", REALobject(RBBoolean)),
        SERVICE(GetVariantString, "VariantToString", REALstring(REALobject)),
        SERVICE(GetVariantInt32, "VariantToInt32", int32_t(REALobject)),
        SERVICE(GetVariantInt64, "VariantToInt64", int64_t(REALobject)),
        SERVICE(GetVariantSingle, "VariantToSingle", float(REALobject)),
        SERVICE(GetVariantDouble, "VariantToDouble", double(REALobject)),
        SERVICE(REALCreateArray, "RuntimeArrayCreateSingleDimBoundedArray", REALarray(int32_t, int32_t)),
        SERVICE(REALGetArrayUBound, "RuntimeUBound", int32_t(REALarray)),
        SERVICE(REALGetArrayString, "RuntimeDirectReadStringArray", REALstring(REALarray, int32_t)),
        SERVICE(REALGetArrayObject, "RuntimeDirectReadObjectArray", REALobject(REALarray, int32_t)),
        SERVICE(REALNewMemoryBlockOriginal, "newMemoryBlock", REALmemoryBlock(int32_t)),
        SERVICE(REALMemoryBlockGetPtr, "memoryBlockGetPtr", void *(REALmemoryBlock)),
        SERVICE(REALMemoryBlockGetSize, "memoryBlockGetSize", int32_t(REALmemoryBlock)),
        SERVICE(REALGetStringEncoding, "REALGetStringEncoding", uint32_t(REALstring)),
        SERVICE(REALConvertString, "REALConvertString", REALstring(REALstring, uint32_t)),
        SERVICE(REALSetStringEncoding, "REALSetStringEncoding", void(REALstring, uint32_t)),
        SERVICE(originalREALBuildString, "REALBuildString", REALstring(const char *, int32_t)),
        SERVICE(REALGetStringCFString, "REALGetStringCFString", CFStringRef(REALstring, uint8_t)),
        SERVICE(REALFolderItemFromFSSpec, "FolderItemFromFSSpec", REALfolderItem(const FSSpec *)),
        SERVICE(REALFSSpecFromFolderItem, "REALFSSpecFromFolderItem", RBBoolean(FSSpec *, REALfolderItem)),
        SERVICE(REALFSRefFromFolderItem, "REALFSRefFromFolderItem", RBBoolean(REALfolderItem, FSRef *, HFSUniStr255 *)),
        SERVICE(REALFolderItemFromParentFSRef, "REALFolderItemFromParentFSRef",
                REALfolderItem(const FSRef *, const HFSUniStr255 *)),
    };
    return rows;
}
// clang-format on

class HostFunction : public ::testing::TestWithParam<Service> {
protected:
    void SetUp() override { fake_host::install(); }
};

TEST_P(HostFunction, GivesTheNeutralResultWhileTheHostHasNoneAndAsksEachTime)
{
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    EXPECT_THAT(fake_host::asked, ElementsAre(GetParam().entryPoint, GetParam().entryPoint));
}

TEST_P(HostFunction, IsAskedForOnceAndHandsArgumentsAndResultOnUnchanged)
{
    fake_host::offered[GetParam().entryPoint] = GetParam().hostFunction;
    for (int round = 0; round < 2; round++) {
        EXPECT_EQ(GetParam().call(), GetParam().answer);
        EXPECT_EQ(GetParam().seen(), GetParam().samples);
    }
    EXPECT_THAT(fake_host::asked, ElementsAre(GetParam().entryPoint));
}

TEST_P(HostFunction, IsUsedOnceTheHostProvidesItAndNeverAskedForAgain)
{
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    fake_host::offered[GetParam().entryPoint] = GetParam().hostFunction;
    EXPECT_EQ(GetParam().call(), GetParam().answer);
    fake_host::offered.clear();
    EXPECT_EQ(GetParam().call(), GetParam().answer);
    EXPECT_EQ(fake_host::asked.size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(All, HostFunction, ::testing::ValuesIn(services()),
                         [](const auto &info) { return info.param.wrapper; });

// --- Services with a rule of their own --------------------------------------------------------------------------

class HostMethodByDeclaration : public ::testing::Test {
protected:
    void SetUp() override
    {
        fake_host::install();
        module = this;
        declarations.clear();
    }

    // As the host's "REALLoadGlobalMethod": a module, which must be none, and a declaration.
    static void *load(void *givenModule, const char *declaration)
    {
        module = givenModule;
        declarations.push_back(declaration);
        return found;
    }

    static int32_t varType(REALobject variant) { return variant ? 4104 : -1; }

    static inline void *module = nullptr;
    static inline std::vector<std::string> declarations;
    static inline void *found = nullptr;
};

TEST_F(HostMethodByDeclaration, IsLoadedFromNoModuleByItsDeclaration)
{
    fake_host::offer("REALLoadGlobalMethod", load);
    found = &found;
    EXPECT_EQ(REALLoadFrameworkMethod("Anything as integer"), found);
    EXPECT_EQ(module, nullptr);
    EXPECT_THAT(declarations, ElementsAre("Anything as integer"));
}

TEST_F(HostMethodByDeclaration, IsNullOnAHostThatLoadsNone)
{
    EXPECT_EQ(REALLoadFrameworkMethod("Anything as integer"), nullptr);
    EXPECT_EQ(REALLoadFrameworkMethod("Anything as integer"), nullptr);
    EXPECT_THAT(fake_host::asked, ElementsAre("REALLoadGlobalMethod", "REALLoadGlobalMethod"));
}

TEST_F(HostMethodByDeclaration, VariantTypeIsAskedForUntilFoundAndThenKept)
{
    REALobject variant = service_probe::sample<REALobject>(0);
    EXPECT_EQ(GetVariantType(variant), 0);

    fake_host::offer("REALLoadGlobalMethod", load);
    EXPECT_EQ(GetVariantType(variant), 0);
    found = reinterpret_cast<void *>(varType);
    EXPECT_EQ(GetVariantType(variant), 4104);
    EXPECT_EQ(GetVariantType(variant), 4104);
    EXPECT_THAT(declarations, ElementsAre("VarType(value As Variant) As Int32", "VarType(value As Variant) As Int32"));
    EXPECT_EQ(module, nullptr);
}

TEST(CopyOfAStringsCFString, AlwaysPassesFlagZero)
{
    using Probe = service_probe::Probe<CFStringRef(REALstring, uint8_t)>;
    fake_host::install();
    REALstring string = service_probe::sample<REALstring>(0);
    EXPECT_EQ(REALCopyStringCFString(string), nullptr);

    fake_host::offer("REALGetStringCFString", Probe::function);
    EXPECT_EQ(service_probe::text(REALCopyStringCFString(string)), Probe::answer());
    EXPECT_EQ(Probe::seen, service_probe::text(string) + " 0 ");
    EXPECT_THAT(fake_host::asked, ElementsAre("REALGetStringCFString", "REALGetStringCFString"));
}

TEST(CopyOfAStringsCFString, HasACacheOfItsOwn)
{
    using Probe = service_probe::Probe<CFStringRef(REALstring, uint8_t)>;
    fake_host::install();
    fake_host::offer("REALGetStringCFString", Probe::function);
    REALCopyStringCFString(nullptr);
    fake_host::offered.clear();
    EXPECT_EQ(REALGetStringCFString(nullptr, 0), nullptr) << "filled by the other service";
    fake_host::offer("REALGetStringCFString", Probe::function);
    EXPECT_NE(REALGetStringCFString(nullptr, 0), nullptr);
    EXPECT_EQ(fake_host::asked.size(), 3u);
}

} // namespace
