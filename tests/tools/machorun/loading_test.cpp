// Which libraries load, how often, and what is said of those that do not.
#include "tests/tools/machorun/loaded_image.h"
#include "tools/machorun/host_loader.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

using machorun::Fixups;
using machorun::Load;

namespace fs = std::filesystem;

namespace {

const std::string kProduct = PRODUCT_DYLIB;

// Loads the plug-in and answers what went wrong, "" for nothing.
std::string problemWith(const std::string &path, const machorun::Options &options = {})
{
    std::string error;
    void *library = Load(path, error, options);
    EXPECT_EQ(library == nullptr, !error.empty());
    return error;
}

machorun::Options withFixups(Fixups fixups)
{
    machorun::Options options;
    options.fixups = fixups;
    return options;
}

// A copy of a library in the test's own folder.
class Copy {
public:
    explicit Copy(const std::string &original)
    {
        char folder[] = "/tmp/machorun-test.XXXXXX";
        folder_ = mkdtemp(folder);
        path_ = folder_ / "copy.dylib";
        fs::copy_file(original, path_);
    }
    ~Copy() { fs::remove_all(folder_); }
    std::string path() const { return path_; }

private:
    fs::path folder_, path_;
};

} // namespace

TEST(Loading, SameFileAgainIsTheSameLibrary)
{
    std::string error;
    void *library = Load(imagePath("O2"), error);
    ASSERT_NE(library, nullptr) << error;
    EXPECT_EQ(Load(imagePath("O2"), error), library);
    EXPECT_EQ(Load(fs::path(imagePath("O2")).parent_path() / "." / "O2.dylib", error), library);
}

TEST(Loading, TwoCopiesOfThePluginAreTwoLibraries)
{
    Copy copy(kProduct);
    std::string error;
    void *entry = machorun::LoadPlugin(kProduct.c_str(), error);
    void *other = machorun::LoadPlugin(copy.path().c_str(), error);
    ASSERT_NE(entry, nullptr) << error;
    ASSERT_NE(other, nullptr) << error;
    EXPECT_NE(entry, other);
}

TEST(Loading, ClassThatExistsAlreadyIsRefused)
{
    Copy copy(imagePath("O2"));
    ASSERT_EQ(problemWith(imagePath("O2")), "");
    EXPECT_EQ(problemWith(copy.path()), copy.path() + " defines the class ImageSquare, which this process has already");
}

TEST(Loading, LibraryThatFailedToLoadFailsAgain)
{
    Copy copy(imagePath("O2"));
    ASSERT_EQ(problemWith(imagePath("O2")), "");
    std::string first = problemWith(copy.path());
    EXPECT_EQ(problemWith(copy.path()), first);
}

TEST(Loading, ImportWithoutARowIsNamed)
{
    EXPECT_EQ(problemWith(imagePath("missing_function")),
              imagePath("missing_function") + " imports _functionThatNobodyHas, which the import table does not have");
}

TEST(Loading, MissingClassIsNamed)
{
    EXPECT_EQ(problemWith(imagePath("missing_class")),
              imagePath("missing_class") + " uses the class ClassThatNobodyHas, which this process does not have");
}

TEST(Loading, StrongImportCannotBeAbsent)
{
    machorun::Options options;
    options.absent = {"_CFStringGetLength"};
    EXPECT_EQ(problemWith(imagePath("O2"), options), imagePath("O2") + " imports _CFStringGetLength, which is absent");
}

TEST(Loading, FileOfOneEncodingLoadsByThatOne)
{
    EXPECT_EQ(problemWith(imagePath("classic"), withFixups(Fixups::Compressed)),
              imagePath("classic") + " has no compressed fix-ups");
    EXPECT_EQ(problemWith(imagePath("compressed"), withFixups(Fixups::Classic)),
              imagePath("compressed") + " has no classic fix-ups");
    EXPECT_EQ(problemWith(imagePath("classic")), "");
}

TEST(Loading, FileOfCompressedFixupsLoads)
{
    EXPECT_EQ(problemWith(imagePath("compressed")), "");
}

TEST(Loading, MissingExportIsNamed)
{
    std::string error;
    void *library = Load(kProduct, error, withFixups(Fixups::Classic));
    ASSERT_NE(library, nullptr) << error;
    EXPECT_EQ(machorun::FindExport(library, "NoSuchFunction", error), nullptr);
    EXPECT_EQ(error, kProduct + " does not export NoSuchFunction");
}

TEST(Loading, MissingExportIsNamedFromTheExportTree)
{
    std::string error;
    void *library = Load(kProduct, error, withFixups(Fixups::Compressed));
    ASSERT_NE(library, nullptr) << error;
    for (const char *name : {"NoSuchFunction", "REALPlugin", "REALPluginMainly", ""}) {
        EXPECT_EQ(machorun::FindExport(library, name, error), nullptr);
        EXPECT_EQ(error, kProduct + " does not export " + name);
    }
}

TEST(Loading, EnvironmentChoosesTheFixups)
{
    setenv("MACHORUN_FIXUPS", "classic", 1);
    std::string error;
    EXPECT_EQ(machorun::LoadPlugin(imagePath("compressed").c_str(), error), nullptr);
    EXPECT_EQ(error, imagePath("compressed") + " has no classic fix-ups");
    setenv("MACHORUN_FIXUPS", "other", 1);
    EXPECT_EQ(machorun::LoadPlugin(kProduct.c_str(), error), nullptr);
    EXPECT_EQ(error, "MACHORUN_FIXUPS is neither classic nor compressed: other");
}

TEST(Loading, EnvironmentMakesImportsAbsent)
{
    setenv("MACHORUN_ABSENT", ":_CTFontGetTypeID:_CFRetain", 1);
    std::string error;
    EXPECT_EQ(machorun::LoadPlugin(kProduct.c_str(), error), nullptr);
    EXPECT_EQ(error, kProduct + " imports _CFRetain, which is absent");
}

// What the plug-in tells a host at its start.
struct Registration {
    int recordVersion = 0;
    std::string className;
} registered;

void *lookUp(const char *name)
{
    if (std::string(name) == "RegisterPluginVersion")
        return reinterpret_cast<void *>(+[](int32_t version) { registered.recordVersion = version; });
    if (std::string(name) == "PluginRegisterClass")
        return reinterpret_cast<void *>(
            +[](const uint32_t *words) { registered.className = reinterpret_cast<const char *>(words[1]); });
    return nullptr;
}

TEST(Loading, PluginStartsWithoutTheFunctionsOfLaterSystems)
{
    machorun::Options options;
    std::ifstream table(SYMBOL_TABLE);
    for (std::string line; std::getline(table, line);) {
        if (size_t end = line.find(" weak"); end != std::string::npos && line[0] == '_')
            options.absent.push_back(line.substr(0, end));
    }
    ASSERT_THAT(options.absent,
                testing::IsSupersetOf({"_CFErrorGetTypeID", "_CTFontGetTypeID", "_CTRunDelegateGetTypeID"}));
    std::string error;
    void *library = Load(kProduct, error, options);
    ASSERT_NE(library, nullptr) << error;
    void *entry = machorun::FindExport(library, "REALPluginMain", error);
    ASSERT_NE(entry, nullptr) << error;
    reinterpret_cast<void (*)(void *(*)(const char *))>(entry)(lookUp);
    EXPECT_EQ(registered.recordVersion, 9);
    EXPECT_EQ(registered.className, "NSUserDefaultsKTZ");
}

TEST(Loading, HostLoaderKnowsMachOFilesByTheirMagic)
{
    host::PluginLoader loader = machorun::HostLoader();
    EXPECT_TRUE(loader.recognises({0xce, 0xfa, 0xed, 0xfe}));
    EXPECT_TRUE(loader.recognises({0xca, 0xfe, 0xba, 0xbe}));
    EXPECT_FALSE(loader.recognises({0x7f, 'E', 'L', 'F'}));
    EXPECT_FALSE(loader.recognises({0xce, 0xfa}));
    EXPECT_FALSE(loader.recognises({}));
}

TEST(Loading, HostLoaderGivesEntryAndSymbols)
{
    host::LoadedFile file = machorun::HostLoader().load(kProduct);
    EXPECT_NE(file.entry, nullptr);
    EXPECT_EQ(file.symbol("REALPluginMain"), reinterpret_cast<void *>(file.entry));
    EXPECT_EQ(file.symbol("NoSuchFunction"), nullptr);
}

TEST(Loading, HostLoaderThrowsItsOneLine)
{
    try {
        machorun::HostLoader().load(imagePath("missing_function"));
        FAIL() << "loaded";
    } catch (const std::runtime_error &error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("imports _functionThatNobodyHas"));
    }
}
