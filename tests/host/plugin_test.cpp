#include "tests/host/fixture.h"

#include "ground.h"

#include <cstdio>

namespace {

using namespace host;
using host_tests::PluginFixture;

class Plugins : public PluginFixture {};

TEST_F(Plugins, OldRecordsHaveFourWordsForAMethod)
{
    start("2011.4");
    const ClassDescription *described = host.findClass("testclass");
    ASSERT_NE(described, nullptr);
    EXPECT_EQ(described->recordVersion, 9);
    EXPECT_EQ(described->methods.size(), 20u);
    EXPECT_EQ(described->methods[3].text, "data as integer");
    EXPECT_EQ(host.callShared("TestClass", "sum", {1, 2}).int32(), 3);
}

TEST_F(Plugins, NewRecordsHaveSixWordsForAMethod)
{
    start("2014.1");
    const ClassDescription *described = host.findClass("TestClass");
    EXPECT_EQ(described->recordVersion, 12);
    EXPECT_EQ(described->methods[12].text, "itemFor(key as string) as integer");
    EXPECT_NE(described->methods[12].setter, nullptr);
    EXPECT_EQ(described->methods[12].flags, 4);
    EXPECT_EQ(described->sharedMethods.size(), 1u);
    EXPECT_TRUE(described->fromPlugin);
}

TEST_F(Plugins, TheOffsetOfTheDataIsWrittenIntoTheRecord)
{
    start();
    const ClassDescription *described = host.findClass("TestClass");
    EXPECT_EQ(static_cast<const interface::ClassRecord9 *>(described->record)->forSystemUse, 24);
    EXPECT_EQ(described->dataOffset, 24);
    EXPECT_EQ(described->dataSize, 16);
}

TEST_F(Plugins, ADeclarationThatCannotBeReadIsAFault)
{
    host.use(*Profile::named("2013.03"));
    host.load(TEST_PLUGIN);
    std::vector<std::string> faults = host.takeFaults();
    ASSERT_EQ(faults.size(), 1u);
    EXPECT_EQ(faults[0].find("TestClass: method 20: \"cannot be read (\""), 0u) << faults[0];
}

TEST_F(Plugins, StartsAgainWithAnotherVersion)
{
    host.use(*Profile::named("2013.03"));
    Plugin &plugin = host.load(TEST_PLUGIN);
    EXPECT_EQ(plugin.recordVersion(), 12);
    Value before = host.newObject("TestClass");
    host.use(*Profile::named("2009"));
    plugin.start();
    EXPECT_EQ(plugin.recordVersion(), 9);
    EXPECT_EQ(host.findClass("TestClass")->recordVersion, 9);
    EXPECT_TRUE(before.isA("TestClass")) << "an instance of the class as it was is one of the class";
    EXPECT_EQ(host.classes(true).size(), 1u);
    host.takeFaults();
}

TEST_F(Plugins, UnloadingForgetsTheClasses)
{
    host.use(*Profile::named("2013.03"));
    Plugin &plugin = host.load(TEST_PLUGIN);
    host.unload(plugin);
    EXPECT_EQ(host.findClass("TestClass"), nullptr);
    host.load(TEST_PLUGIN);
    EXPECT_NE(host.findClass("TestClass"), nullptr);
    host.takeFaults();
}

TEST_F(Plugins, InstanceDataOfAPluginStaysInPlaceInSubclasses)
{
    start();
    HostClass subclass;
    subclass.name = "Sub";
    subclass.superName = "TestClass";
    subclass.dataSize = 8;
    host.defineClass(subclass);
    EXPECT_EQ(host.findClass("Sub")->dataOffset, 40);
    int before = seen->initialised;
    Value object = host.newObject("Sub", {9});
    EXPECT_EQ(seen->initialised, before + 1);
    EXPECT_EQ(*static_cast<int32_t *>(object.instanceData()), 9);
}

TEST_F(Plugins, ClassNamesMayBeOfAnyLength)
{
    for (size_t length : {199u, 200u, 1000u}) {
        HostClass definition;
        definition.name = std::string(length, 'N');
        host.defineClass(definition);
        EXPECT_EQ(host.newInstance(definition.name).className().size(), length);
        host.removeClass(definition.name);
        EXPECT_EQ(host.findClass(definition.name), nullptr);
    }
}

TEST_F(Plugins, FilesThatAreNoneAreRefusedInOneLine)
{
    EXPECT_THROW(host.load("/nonexistent/Plugin.so"), CallError);
    EXPECT_THROW(host.load("/etc/hostname"), CallError);
    try {
        host.load(std::string(kBuildDir) + "/libplatform-gnustep.so");
        FAIL() << "loaded";
    } catch (const CallError &error) {
        EXPECT_NE(std::string(error.what()).find("no plug-in"), std::string::npos) << error.what();
    }
}

bool mainRan = false;

TEST_F(Plugins, OtherLoadersAreChosenByTheFirstBytes)
{
    PluginLoader loader;
    loader.name = "invented";
    loader.recognises = [](const std::vector<uint8_t> &first) { return first.size() > 3 && first[0] == 'I'; };
    loader.load = [](const std::string &) {
        LoadedFile file;
        file.entry = [](interface::Resolver resolver) { mainRan = resolver("REALLockObject") != nullptr; };
        return file;
    };
    host.addLoader(loader);
    std::string path = ::testing::TempDir() + "/host_tests_invented.plugin";
    FILE *file = fopen(path.c_str(), "w");
    fputs("INVENTED", file);
    fclose(file);
    host.load(path);
    remove(path.c_str());
    EXPECT_TRUE(mainRan);
}

} // namespace
