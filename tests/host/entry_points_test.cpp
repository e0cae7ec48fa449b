#include "tests/host/fixture.h"

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>
#include <cstring>
#include <fstream>
#include <new>

namespace {

using namespace host;
using host_tests::entryCall;
using host_tests::PluginFixture;

class EntryPoints : public PluginFixture {
protected:
    void SetUp() override { host.use(*Profile::named("2013.03")); }
};

TEST_F(EntryPoints, UnknownNamesHaveNone)
{
    EXPECT_EQ(Host::resolver()("NoSuchEntry"), nullptr);
    EXPECT_EQ(host.lookupLog().back(), "NoSuchEntry");
    EXPECT_THROW(host.hide("NoSuchEntry"), CallError);
}

TEST_F(EntryPoints, CanBeHiddenAndShownAndAreCounted)
{
    host.hide("RuntimeUBound");
    EXPECT_EQ(Host::resolver()("RuntimeUBound"), nullptr);
    host.show("RuntimeUBound");
    Value array = Value::strings({"a", "b"});
    EXPECT_EQ(entryCall<int32_t>("RuntimeUBound", array.handle()), 1);
    EXPECT_EQ(host.lookups("RuntimeUBound"), 2);
    EXPECT_EQ(host.calls("RuntimeUBound"), 1);
    host.resetCounts();
    EXPECT_EQ(host.lookups("RuntimeUBound"), 0);
    EXPECT_EQ(host.calls("RuntimeUBound"), 0);
}

int32_t alwaysSeven(void *)
{
    return 7;
}

TEST_F(EntryPoints, AReplacementServesThoseWhoFoundTheEntryBefore)
{
    auto upperBound = reinterpret_cast<int32_t (*)(void *)>(Host::resolver()("RuntimeUBound"));
    Value array = Value::strings(Arguments{});
    EXPECT_EQ(upperBound(array.handle()), -1);
    host.replace("RuntimeUBound", reinterpret_cast<void *>(alwaysSeven));
    EXPECT_EQ(upperBound(array.handle()), 7);
    host.replace("RuntimeUBound", nullptr);
    EXPECT_EQ(upperBound(array.handle()), -1);
}

TEST_F(EntryPoints, AnObserverRunsBeforeTheCall)
{
    Value string("abc");
    int32_t locksBefore = 0;
    host.beforeCall("REALLockString", [&] { locksBefore = string.lockCount(); });
    entryCall<void>("REALLockString", string.handle());
    EXPECT_EQ(locksBefore, 1);
    host.beforeCall("REALLockString", nullptr);
    entryCall<void>("REALUnlockString", string.handle());
}

TEST_F(EntryPoints, EveryEntryPointHasAFunction)
{
    std::vector<EntryPointInfo> infos = host.entryPoints();
    EXPECT_GT(infos.size(), 50u);
    for (const EntryPointInfo &info : infos) {
        EXPECT_TRUE(info.offered) << info.name;
        if (!info.isGlobalMethod)
            EXPECT_NE(Host::resolver()(info.name.c_str()), nullptr) << info.name;
    }
}

TEST_F(EntryPoints, StringsAreBuiltWithoutEncodingAndConverted)
{
    void *string = entryCall<void *>("REALBuildString", "\xC3\xA4", int32_t(2));
    EXPECT_EQ(entryCall<uint32_t>("REALGetStringEncoding", string), 0xFFFFu);
    EXPECT_EQ(entryCall<const void *>("REALGetStringCFString", string, uint8_t(0)), nullptr);
    entryCall<void>("REALSetStringEncoding", string, uint32_t(kUTF8));
    void *wide = entryCall<void *>("REALConvertString", string, uint32_t(kUTF16));
    EXPECT_EQ(Value::borrow(wide).bytes(), std::string("\xE4\0", 2));
    auto *text = static_cast<CFStringRef>(entryCall<const void *>("REALGetStringCFString", wide, uint8_t(0)));
    EXPECT_EQ(CFStringGetLength(text), 1);
    CFRelease(text);
    void *none = nullptr;
    EXPECT_EQ(entryCall<void *>("REALConvertString", none, uint32_t(kUTF8)), nullptr);
    entryCall<void>("REALUnlockString", wide);
    entryCall<void>("REALUnlockString", string);
}

TEST_F(EntryPoints, LoadedMethodsAreCalledAsFunctions)
{
    Value dictionary = Value::dictionary();
    auto load = [&](const char *declaration) {
        return entryCall<void *>("REALLoadObjectMethod", dictionary.handle(), declaration);
    };
    auto set =
        reinterpret_cast<void (*)(void *, void *, void *)>(load("Value(key As Variant, Assigns _value As Variant)"));
    auto get = reinterpret_cast<void *(*)(void *, void *)>(load("Value(key As Variant) As Variant"));
    auto key = reinterpret_cast<void *(*)(void *, int32_t)>(load("Key(index As Integer) As Variant"));
    Value name = Value("n").boxed(), five = Value(5).boxed();
    set(dictionary.handle(), name.handle(), five.handle());
    EXPECT_EQ(dictionary.lookup("n").int32(), 5);
    EXPECT_EQ(Value::adopt(get(dictionary.handle(), name.handle())).int32(), 5);
    EXPECT_EQ(Value::adopt(key(dictionary.handle(), 0)).text(), "n");
    EXPECT_EQ(key(dictionary.handle(), 1), nullptr);
    EXPECT_EQ(host.takePendingExceptions().at(0).className, "OutOfBoundsException");
    host.hideMethod("Dictionary", "Key(i As Integer) As Variant");
    EXPECT_EQ(load("Key(index As Integer) As Variant"), nullptr);
    EXPECT_EQ(load("Nothing"), nullptr);
}

TEST_F(EntryPoints, AnyObjectWithTheMethodLooksLikeAFolderItem)
{
    const char *declaration = "TrueItem(Index as integer) as Folderitem";
    EXPECT_NE(entryCall<void *>("REALLoadObjectMethod", Value::folderItem("/tmp").handle(), declaration), nullptr);
    EXPECT_EQ(entryCall<void *>("REALLoadObjectMethod", Value::dictionary().handle(), declaration), nullptr);
}

TEST_F(EntryPoints, PropertiesAreReadByTheirType)
{
    Value date = Value::date(2012, 2, 29);
    int32_t year = 0;
    int64_t wide = 0;
    EXPECT_EQ(entryCall<uint8_t>("REALGetPropValueInt", date.handle(), "Year", &year), 1);
    EXPECT_EQ(year, 2012);
    EXPECT_EQ(entryCall<uint8_t>("REALGetPropValueInt64", date.handle(), "Year", &wide), 0);
    EXPECT_EQ(entryCall<uint8_t>("REALSetPropValueInt", date.handle(), "Year", int32_t(2013)), 1);
    EXPECT_EQ(date.property("Year").int32(), 2013);
    Value variant = Value("text").boxed();
    void *string = nullptr;
    EXPECT_EQ(entryCall<uint8_t>("REALGetPropValueString", variant.handle(), "StringValue", &string), 1);
    EXPECT_EQ(Value::adopt(string).text(), "text");
    host.hideProperty("Variant", "Type");
    EXPECT_EQ(entryCall<uint8_t>("REALGetPropValueInt", variant.handle(), "Type", &year), 0);
}

TEST_F(EntryPoints, ArrayProceduresAreForTheElementType)
{
    Value doubles = Value::array(ElementType::Double, {1.5});
    auto read = reinterpret_cast<double (*)(void *, int32_t)>(
        entryCall<void *>("RuntimeArrayDirectGetGetProc", doubles.handle()));
    auto insert = reinterpret_cast<void (*)(void *, int32_t, double)>(
        entryCall<void *>("RuntimeArrayDirectGetInsertProc", doubles.handle()));
    insert(doubles.handle(), 1, 2.5);
    EXPECT_EQ(read(doubles.handle(), 1), 2.5);
    EXPECT_EQ(read(doubles.handle(), 5), 0.0);
    EXPECT_EQ(host.takePendingExceptions().size(), 1u);

    void *strings = entryCall<void *>("RuntimeArrayCreateSingleDimBoundedArray", int32_t(3), int32_t(-1));
    auto insertString = reinterpret_cast<void (*)(void *, int32_t, void *)>(
        entryCall<void *>("RuntimeArrayDirectGetInsertProc", strings));
    Value text("abc");
    insertString(strings, 0, text.handle());
    insertString(strings, 1, nullptr);
    EXPECT_EQ(text.lockCount(), 2);
    void *element = entryCall<void *>("RuntimeDirectReadStringArray", strings, int32_t(0));
    EXPECT_EQ(element, text.handle());
    EXPECT_EQ(text.lockCount(), 3);
    entryCall<void>("REALUnlockString", element);
    EXPECT_EQ(entryCall<void *>("RuntimeDirectReadObjectArray", strings, int32_t(0)), nullptr);
    EXPECT_EQ(Value::adopt(strings).count(), 2);
}

TEST_F(EntryPoints, ClassReferencesKnowSubclasses)
{
    auto *runtimeException = entryCall<const void *>("pluginObjectType", "RuntimeException");
    EXPECT_EQ(entryCall<const void *>("pluginObjectType", "Nothing"), nullptr);
    Value object = host.newInstance("OutOfMemoryException");
    EXPECT_EQ(entryCall<uint8_t>("RuntimeObjectIsa", object.handle(), runtimeException), 1);
    EXPECT_EQ(entryCall<uint8_t>("RuntimeObjectIsa", Value::dictionary().handle(), runtimeException), 0);
    EXPECT_EQ(entryCall<uint8_t>("RuntimeObjectIsa", Value::strings({"a"}).handle(), runtimeException), 0);
}

TEST_F(EntryPoints, CreationsFailOnRequest)
{
    host.failCreation(Creation::MemoryBlock, 2);
    void *first = entryCall<void *>("newMemoryBlock", int32_t(4));
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(entryCall<void *>("newMemoryBlock", int32_t(4)), nullptr);
    void *third = entryCall<void *>("newMemoryBlock", int32_t(4));
    EXPECT_NE(third, nullptr);
    EXPECT_EQ(host.creations(Creation::MemoryBlock), 3);
    entryCall<void>("REALUnlockObject", first);
    entryCall<void>("REALUnlockObject", third);
    EXPECT_EQ(entryCall<void *>("newMemoryBlock", int32_t(-1)), nullptr);

    host.failCreation(Creation::String, 1, 2);
    EXPECT_EQ(entryCall<void *>("REALBuildString", "a", int32_t(1)), nullptr);
    EXPECT_EQ(entryCall<void *>("REALBuildString", "a", int32_t(1)), nullptr);
    EXPECT_EQ(Value::adopt(entryCall<void *>("REALBuildString", "a", int32_t(1))).bytes(), "a");
    for (auto [sort, entry] : {std::pair(Creation::Dictionary, "Dictionary"), {Creation::Instance, "Date"}}) {
        host.failCreation(sort, 1);
        EXPECT_EQ(entryCall<void *>("PluginNewInstance", entry), nullptr);
    }
    host.failCreation(Creation::Array, 1);
    EXPECT_EQ(entryCall<void *>("RuntimeArrayCreateSingleDimBoundedArray", int32_t(4), int32_t(-1)), nullptr);
    EXPECT_NE(Value("host code's own values are not counted").handle(), nullptr);
}

TEST_F(EntryPoints, BuildingAStringThrowsOnRequest)
{
    host.throwWhileBuildingString(2);
    Value first = Value::adopt(entryCall<void *>("REALBuildString", "a", int32_t(1)));
    EXPECT_THROW(entryCall<void *>("REALBuildString", "a", int32_t(1)), std::bad_alloc);
    Value third = Value::adopt(entryCall<void *>("REALBuildString", "a", int32_t(1)));
}

class Files : public EntryPoints {
protected:
    void SetUp() override
    {
        EntryPoints::SetUp();
        std::string pattern = ::testing::TempDir() + "host_tests.XXXXXX";
        folder = mkdtemp(pattern.data());
        file = folder + "/file";
        std::ofstream(file) << "content";
    }

    void TearDown() override
    {
        remove(file.c_str());
        remove(folder.c_str());
        EntryPoints::TearDown();
    }

    static HFSUniStr255 nameOf(std::u16string_view units)
    {
        HFSUniStr255 name{};
        name.length = UInt16(units.size());
        memcpy(name.unicode, units.data(), units.size() * 2);
        return name;
    }

    CocoaPool pool;
    std::string folder, file;
    FSRef ref{};
    HFSUniStr255 name{};
    FSSpec spec{};
};

TEST_F(Files, AnItemThatExistsHasAReference)
{
    Value item = Value::folderItem(file);
    HFSUniStr255 *noName = nullptr;
    ASSERT_EQ(entryCall<uint8_t>("REALFSRefFromFolderItem", item.handle(), &ref, noName), 1);
    UInt8 path[1024];
    ASSERT_EQ(FSRefMakePath(&ref, path, sizeof path), noErr);
    EXPECT_EQ(reinterpret_cast<char *>(path), file);
    ASSERT_EQ(entryCall<uint8_t>("REALFSSpecFromFolderItem", &spec, item.handle()), 1);
    EXPECT_EQ(Value::adopt(entryCall<void *>("FolderItemFromFSSpec", &spec)).path(), file);
}

TEST_F(Files, AnItemThatDoesNotExistHasAParentAndAName)
{
    Value item = Value::folderItem(folder + "/later ä");
    HFSUniStr255 *noName = nullptr;
    EXPECT_EQ(entryCall<uint8_t>("REALFSRefFromFolderItem", item.handle(), &ref, noName), 0);
    ASSERT_EQ(entryCall<uint8_t>("REALFSRefFromFolderItem", item.handle(), &ref, &name), 1);
    EXPECT_EQ(name.length, 7);
    EXPECT_EQ(Value::adopt(entryCall<void *>("REALFolderItemFromParentFSRef", &ref, &name)).path(), item.path());
    EXPECT_EQ(entryCall<uint8_t>("REALFSSpecFromFolderItem", &spec, item.handle()), 0);
    Value orphan = Value::folderItem(folder + "/missing/leaf");
    EXPECT_EQ(entryCall<uint8_t>("REALFSRefFromFolderItem", orphan.handle(), &ref, &name), 0);
}

TEST_F(Files, ParentAndNameOfAnExistingItemGiveIt)
{
    Value parent = Value::folderItem(folder);
    HFSUniStr255 *noName = nullptr;
    ASSERT_EQ(entryCall<uint8_t>("REALFSRefFromFolderItem", parent.handle(), &ref, noName), 1);
    name = nameOf(u"file");
    Value item = Value::adopt(entryCall<void *>("REALFolderItemFromParentFSRef", &ref, &name));
    EXPECT_EQ(item.path(), file);
    EXPECT_TRUE(item.property("Exists").boolean());
}

} // namespace
