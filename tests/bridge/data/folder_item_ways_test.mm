// The ways in which hosts tell a file, from the newest to the oldest, and which of them the plug-in goes.
#include "tests/bridge/crossing.h"

#include <CoreServices/CoreServices.h>

using host::Value;

namespace {

// What the host answers, and what the plug-in asked or told it.
std::vector<std::string> steps;
bool knowsItem, knowsParent, knowsSpec;
std::u16string leafName;
UInt16 toldLength; // of the name, where it is not its own
std::string parentPath;
std::u16string toldName;

bool referTo(const std::string &path, FSRef *ref)
{
    return FSPathMakeRef(reinterpret_cast<const UInt8 *>(path.c_str()), ref, nullptr) == noErr;
}

unsigned char refOfItem(void *, FSRef *ref, HFSUniStr255 *name)
{
    steps.push_back(name ? "parent and name" : "item");
    if (!(name ? knowsParent : knowsItem))
        return 0;
    if (name) {
        EXPECT_EQ(name->length, 0) << "the name comes in empty";
        name->length = toldLength ? toldLength : leafName.size();
        memcpy(name->unicode, leafName.data(), 2 * leafName.size());
    }
    return referTo(parentPath, ref);
}

unsigned char specOfItem(FSSpec *spec, void *)
{
    steps.push_back("FSSpec");
    FSRef ref;
    return knowsSpec && referTo("/tmp", &ref) &&
           FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, spec, nullptr) == noErr;
}

void *itemOfParent(const FSRef *, const HFSUniStr255 *name)
{
    steps.push_back("parent and name");
    toldName.assign(reinterpret_cast<const char16_t *>(name->unicode), name->length);
    return nullptr;
}

class FolderItemWays : public CrossingTest {
protected:
    void SetUp() override
    {
        knowsItem = knowsParent = knowsSpec = false;
        parentPath = "/tmp";
        leafName.clear();
        toldLength = 0;
    }

    void playItems()
    {
        host.replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(refOfItem));
        host.replace("REALFSSpecFromFolderItem", reinterpret_cast<void *>(specOfItem));
    }

    // The path of the URL that the plug-in makes of an item, and by which steps.
    std::string pathBy(std::initializer_list<const char *> expectedSteps)
    {
        Value item = Value::folderItem("/tmp/anything");
        steps.clear();
        NSURL *url = toCocoaWith("setFileValue", item);
        EXPECT_EQ(steps, std::vector<std::string>(expectedSteps.begin(), expectedSteps.end()));
        return url ? [[url path] UTF8String] : "no URL";
    }

    std::u16string nameToldFor(NSString *leaf)
    {
        host.replace("REALFolderItemFromParentFSRef", reinterpret_cast<void *>(itemOfParent));
        toldName.clear();
        toHostWith("fileForKey", [NSURL fileURLWithPath:[@"/tmp" stringByAppendingPathComponent:leaf]]);
        return toldName;
    }
};

NSString *repeated(NSString *text, int times)
{
    return [@"" stringByPaddingToLength:[text length] * times withString:text startingAtIndex:0];
}

} // namespace

TEST_F(FolderItemWays, AReferenceAtTheFirstCallEndsTheSearch)
{
    start();
    playItems();
    knowsItem = knowsParent = knowsSpec = true;
    EXPECT_EQ(pathBy({"item"}), "/tmp");
}

TEST_F(FolderItemWays, AnItemThatDoesNotExistIsItsNameInItsParent)
{
    start();
    playItems();
    knowsParent = knowsSpec = true;
    leafName = u"file";
    EXPECT_EQ(pathBy({"item", "parent and name"}), "/tmp/file");
    leafName = u"\u00E9";
    EXPECT_EQ(pathBy({"item", "parent and name"}), "/tmp/e\xCC\x81");
    leafName = std::u16string(255, u'n');
    EXPECT_EQ(pathBy({"item", "parent and name"}), "/tmp/" + std::string(255, 'n'));
}

TEST_F(FolderItemWays, ANameThatTheHostTellsLongerThanThereIsRoomForIsCutTo255Units)
{
    start();
    playItems();
    knowsParent = true;
    leafName = std::u16string(255, u'n');
    for (UInt16 told : {256, 300, 0xFFFF}) {
        toldLength = told;
        EXPECT_EQ(pathBy({"item", "parent and name"}), "/tmp/" + std::string(255, 'n')) << told;
    }
}

// The File Manager and URLs call the same character ":" and "/"; only for items that exist does the system translate.
TEST_F(FolderItemWays, ColonsAndSlashesOfANewFilesNameCrossAsTheyAre)
{
    start();
    playItems();
    knowsParent = true;
    leafName = u"new:file";
    EXPECT_EQ(pathBy({"item", "parent and name"}), "/tmp/new:file");
    leafName = u"new/file";
    EXPECT_EQ(pathBy({"item", "parent and name"}), "/tmp/new/file") << "a file in a folder";
    EXPECT_EQ(nameToldFor(@"new:file"), u"new:file");
}

TEST_F(FolderItemWays, AParentWithoutANameLeadsToTheSpecification)
{
    start();
    playItems();
    knowsParent = knowsSpec = true;
    EXPECT_EQ(pathBy({"item", "parent and name", "FSSpec"}), "/tmp");
    knowsSpec = false;
    EXPECT_EQ(pathBy({"item", "parent and name", "FSSpec"}), "no URL");
}

TEST_F(FolderItemWays, AReferenceToNothingLeadsOn)
{
    start();
    host.replace("REALFSRefFromFolderItem", bodyOf([](void *, FSRef *ref, HFSUniStr255 *name) -> unsigned char {
                     steps.push_back(name ? "parent and name" : "item");
                     memset(ref, 0, sizeof *ref);
                     return 1;
                 }));
    host.replace("REALFSSpecFromFolderItem", reinterpret_cast<void *>(specOfItem));
    knowsSpec = true;
    EXPECT_EQ(pathBy({"item", "parent and name", "FSSpec"}), "/tmp");
}

TEST_F(FolderItemWays, ASpecificationOfNothingIsNoFile)
{
    start();
    playItems();
    host.replace("REALFSSpecFromFolderItem", bodyOf([](FSSpec *spec, void *) -> unsigned char {
                     memset(spec, 0, sizeof *spec);
                     return 1;
                 }));
    EXPECT_EQ(pathBy({"item", "parent and name"}), "no URL");
}

TEST_F(FolderItemWays, AnOldHostKnowsSpecificationsOnly)
{
    host.hide("REALFSRefFromFolderItem");
    start();
    knowsSpec = true;
    host.replace("REALFSSpecFromFolderItem", reinterpret_cast<void *>(specOfItem));
    EXPECT_EQ(pathBy({"FSSpec"}), "/tmp");
}

TEST_F(FolderItemWays, AHostThatKnowsNoWayHasNoFile)
{
    host.hide("REALFSRefFromFolderItem");
    host.hide("REALFSSpecFromFolderItem");
    start();
    EXPECT_EQ(pathBy({}), "no URL");
    host.show("REALFSSpecFromFolderItem");
    EXPECT_EQ(toCocoaWith("setFileValue", Value::folderItem("/tmp")) != nil, true) << "looked for again";
}

TEST_F(FolderItemWays, ANewFilesNameIsDecomposedAndCutTo255Units)
{
    start();
    EXPECT_EQ(nameToldFor(@"\u00E9"), u"e\u0301");
    EXPECT_EQ(nameToldFor(repeated(@"n", 255)), std::u16string(255, u'n'));
    EXPECT_EQ(nameToldFor(repeated(@"n", 256)), std::u16string(255, u'n'));
    EXPECT_EQ(nameToldFor(repeated(@"n", 300)), std::u16string(255, u'n'));
    std::u16string decomposed = nameToldFor(repeated(@"\u00E9", 200));
    ASSERT_EQ(decomposed.size(), 255u) << "cut after it was decomposed";
    EXPECT_EQ(decomposed.substr(0, 4), u"e\u0301e\u0301");
    EXPECT_EQ(decomposed.back(), u'e');
}

TEST_F(FolderItemWays, TheHostsAnswerAboutAParentAndNameIsFinal)
{
    start();
    host.replace("REALFolderItemFromParentFSRef", reinterpret_cast<void *>(itemOfParent));
    host.resetCounts();
    EXPECT_TRUE(toHostWith("fileForKey", [NSURL fileURLWithPath:@"/tmp"]).isNil());
    EXPECT_TRUE(toHostWith("fileForKey", [NSURL fileURLWithPath:@"/tmp/not yet"]).isNil());
    EXPECT_EQ(host.calls("FolderItemFromFSSpec"), 0);
}

TEST_F(FolderItemWays, HostsWithoutTheMakersGiveNil)
{
    host.hide("REALFolderItemFromParentFSRef");
    host.hide("FolderItemFromFSSpec");
    start();
    for (NSString *path : {@"/tmp", @"/tmp/not yet", @"/"})
        EXPECT_TRUE(toHostWith("fileForKey", [NSURL fileURLWithPath:path]).isNil()) << textOf(path);
}

TEST_F(FolderItemWays, AnItemThatTheHostCannotMakeIsNil)
{
    start();
    host.failCreation(host::Creation::FolderItem, 1);
    EXPECT_TRUE(toHostWith("fileForKey", [NSURL fileURLWithPath:@"/tmp"]).isNil());
    EXPECT_FALSE(toHostWith("fileForKey", [NSURL fileURLWithPath:@"/tmp"]).isNil());
}
