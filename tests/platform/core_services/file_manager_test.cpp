#include "tests/platform/support.h"

#include <CoreServices/CoreServices.h>

#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class FileManager : public PlatformTest {
protected:
    TemporaryFolder folder;

    static FSRef refTo(const std::string &path, UInt32 options = kFSPathMakeRefDoNotFollowLeafSymlink)
    {
        FSRef ref = {};
        EXPECT_EQ(noErr, FSPathMakeRefWithOptions(bytes(path), options, &ref, nullptr)) << path;
        return ref;
    }

    static std::string pathOf(const FSRef &ref)
    {
        UInt8 path[4096];
        OSStatus status = FSRefMakePath(&ref, path, sizeof path);
        return status == noErr ? reinterpret_cast<char *>(path) : "error " + std::to_string(status);
    }

    static const UInt8 *bytes(const std::string &text) { return reinterpret_cast<const UInt8 *>(text.c_str()); }

    static std::u16string nameOf(const FSRef &ref)
    {
        HFSUniStr255 name = {};
        EXPECT_EQ(noErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, &name, nullptr, nullptr));
        return {name.unicode, name.unicode + name.length};
    }

    static FSCatalogInfo infoOf(const FSRef &ref)
    {
        FSCatalogInfo info = {};
        FSCatalogInfoBitmap all = kFSCatInfoNodeFlags | kFSCatInfoVolume | kFSCatInfoParentDirID | kFSCatInfoNodeID;
        EXPECT_EQ(noErr, FSGetCatalogInfo(&ref, all, &info, nullptr, nullptr, nullptr));
        return info;
    }

    static OSErr makeRef(const FSRef &parent, const std::u16string &name, FSRef *ref)
    {
        return FSMakeFSRefUnicode(&parent, name.size(), reinterpret_cast<const UniChar *>(name.data()), 0, ref);
    }
};

const char composed[] = "caf\xC3\xA9";
const char decomposed[] = "cafe\xCC\x81";

TEST_F(FileManager, AReferenceLeadsBackToItsPath)
{
    writeFile(folder / "file");
    Boolean directory = true;
    FSRef ref;
    EXPECT_EQ(noErr, FSPathMakeRef(bytes(folder / "file"), &ref, &directory));
    EXPECT_FALSE(directory);
    EXPECT_EQ(folder / "file", pathOf(ref));
    EXPECT_EQ(noErr, FSPathMakeRef(bytes(folder.path + "/"), &ref, &directory));
    EXPECT_TRUE(directory);
    EXPECT_EQ(folder.path, pathOf(ref));
}

TEST_F(FileManager, OnlyItemsThatExistHaveReferences)
{
    FSRef ref;
    EXPECT_EQ(fnfErr, FSPathMakeRef(bytes(folder / "missing"), &ref, nullptr));
    EXPECT_EQ(fnfErr, FSPathMakeRef(bytes("relative"), &ref, nullptr));
    EXPECT_EQ(fnfErr, FSPathMakeRef(bytes(""), &ref, nullptr));
    EXPECT_EQ(paramErr, FSPathMakeRef(nullptr, &ref, nullptr));
    EXPECT_EQ(paramErr, FSPathMakeRef(bytes("/"), nullptr, nullptr));
}

TEST_F(FileManager, AReferenceEndsWithItsItem)
{
    writeFile(folder / "file");
    FSRef ref = refTo(folder / "file");
    writeFile(folder / "other");
    ASSERT_EQ(0, rename((folder / "other").c_str(), (folder / "file").c_str()));
    EXPECT_EQ("error -43", pathOf(ref));
    EXPECT_EQ(fnfErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(FileManager, NoReferenceIsMadeOfZeros)
{
    FSRef zero = {};
    EXPECT_EQ(fnfErr, FSGetCatalogInfo(&zero, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(paramErr, FSGetCatalogInfo(nullptr, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr));
}

TEST_F(FileManager, APathMustFitItsBuffer)
{
    FSRef ref = refTo("/tmp");
    UInt8 path[5];
    EXPECT_EQ(pathTooLongErr, FSRefMakePath(&ref, path, 4));
    EXPECT_EQ(noErr, FSRefMakePath(&ref, path, 5));
    EXPECT_EQ(paramErr, FSRefMakePath(&ref, nullptr, 5));
}

TEST_F(FileManager, LinksAreFollowedExceptTheLastOnRequest)
{
    ASSERT_EQ(0, mkdir((folder / "real").c_str(), 0700));
    writeFile(folder / "real/file");
    ASSERT_EQ(0, symlink("real", (folder / "link").c_str()));
    EXPECT_EQ(folder / "real/file", pathOf(refTo(folder / "link/file")));
    EXPECT_EQ(folder / "link", pathOf(refTo(folder / "link")));
    EXPECT_EQ(folder / "real", pathOf(refTo(folder / "link", kFSPathMakeRefDefaultOptions)));
    EXPECT_EQ(folder / "real", pathOf(refTo(folder / "link/.")));
    EXPECT_EQ(folder.path, pathOf(refTo(folder / "real/..")));
}

TEST_F(FileManager, HardLinksAreTwoItems)
{
    writeFile(folder / "a");
    ASSERT_EQ(0, link((folder / "a").c_str(), (folder / "b").c_str()));
    FSRef a = refTo(folder / "a");
    FSRef b = refTo(folder / "b");
    EXPECT_EQ(folder / "a", pathOf(a));
    EXPECT_EQ(folder / "b", pathOf(b));
}

TEST_F(FileManager, ANameIsFoundInEitherForm)
{
    writeFile(folder / composed);
    FSRef parent = refTo(folder.path);
    FSRef ref;
    EXPECT_EQ(folder / composed, pathOf(refTo(folder / decomposed)));
    EXPECT_EQ(noErr, makeRef(parent, u"cafe\u0301", &ref));
    EXPECT_EQ(folder / composed, pathOf(ref));
    EXPECT_EQ(noErr, makeRef(parent, u"caf\u00E9", &ref));
    EXPECT_EQ(folder / composed, pathOf(ref));
}

TEST_F(FileManager, AFolderOnTheWayIsFoundInEitherForm)
{
    ASSERT_EQ(0, mkdir((folder / composed).c_str(), 0700));
    writeFile(folder / composed + "/file");
    EXPECT_EQ(folder / composed + "/file", pathOf(refTo(folder / decomposed + "/file")));
}

TEST_F(FileManager, OfTwoNamesThatDifferInFormOnlyTheExactOneIsFound)
{
    writeFile(folder / composed);
    writeFile(folder / decomposed);
    EXPECT_EQ(folder / decomposed, pathOf(refTo(folder / decomposed)));
    EXPECT_EQ(folder / composed, pathOf(refTo(folder / composed)));
}

TEST_F(FileManager, NamesComeBackInFormD)
{
    writeFile(folder / composed);
    EXPECT_EQ(u"cafe\u0301", nameOf(refTo(folder / composed)));
}

TEST_F(FileManager, AColonOnDiskIsASlashForTheFileManager)
{
    writeFile(folder / "a:b");
    EXPECT_EQ(u"a/b", nameOf(refTo(folder / "a:b")));
    FSRef ref;
    EXPECT_EQ(noErr, makeRef(refTo(folder.path), u"a/b", &ref));
    EXPECT_EQ(folder / "a:b", pathOf(ref));
}

TEST_F(FileManager, ANameThatIsNoTextHasNoUnicodeForm)
{
    writeFile(folder / "\xFF");
    FSRef ref = refTo(folder / "\xFF");
    HFSUniStr255 name;
    EXPECT_EQ(bdNamErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, &name, nullptr, nullptr));
}

TEST_F(FileManager, ReferencesByNameRefuseWhatIsNoName)
{
    FSRef parent = refTo(folder.path);
    FSRef zero = {};
    FSRef ref;
    EXPECT_EQ(fnfErr, makeRef(parent, u"missing", &ref));
    EXPECT_EQ(bdNamErr, makeRef(parent, u"", &ref));
    EXPECT_EQ(bdNamErr, makeRef(parent, std::u16string(1, 0xD800), &ref));
    EXPECT_EQ(errFSNameTooLong, makeRef(parent, std::u16string(256, 'a'), &ref));
    EXPECT_EQ(dirNFErr, makeRef(zero, u"a", &ref));
    EXPECT_EQ(paramErr, FSMakeFSRefUnicode(nullptr, 0, nullptr, 0, nullptr));
}

TEST_F(FileManager, CatalogInformation)
{
    writeFile(folder / "file");
    FSCatalogInfo file = infoOf(refTo(folder / "file"));
    FSCatalogInfo directory = infoOf(refTo(folder.path));
    EXPECT_EQ(0, file.nodeFlags & kFSNodeIsDirectoryMask);
    EXPECT_NE(0, directory.nodeFlags & kFSNodeIsDirectoryMask);
    EXPECT_EQ(directory.nodeID, file.parentDirID);
    EXPECT_EQ(directory.volume, file.volume);
    EXPECT_LT(file.volume, 0);
    EXPECT_GT(file.nodeID, 15u);
    EXPECT_NE(file.nodeID, directory.nodeID);
}

TEST_F(FileManager, InformationNotAskedForIsLeftAlone)
{
    FSRef ref = refTo(folder.path);
    FSCatalogInfo info;
    memset(&info, 0x55, sizeof info);
    FSGetCatalogInfo(&ref, kFSCatInfoNodeID, &info, nullptr, nullptr, nullptr);
    EXPECT_EQ(0x5555, info.nodeFlags);
    EXPECT_EQ(0x55555555u, info.parentDirID);
    EXPECT_NE(0x55555555u, info.nodeID);
}

TEST_F(FileManager, TheParentIsAReference)
{
    writeFile(folder / "file");
    FSRef ref = refTo(folder / "file");
    FSRef parent;
    EXPECT_EQ(noErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, nullptr, &parent));
    EXPECT_EQ(folder.path, pathOf(parent));
}

TEST_F(FileManager, AVolumesRootIsNodeTwoWithoutAParent)
{
    FSRef root = refTo("/");
    FSRef parent;
    FSRef zero = {};
    EXPECT_EQ(2u, infoOf(root).nodeID);
    EXPECT_EQ(1u, infoOf(root).parentDirID);
    EXPECT_EQ(noErr, FSGetCatalogInfo(&root, kFSCatInfoNone, nullptr, nullptr, nullptr, &parent));
    EXPECT_EQ(0, memcmp(&zero, &parent, sizeof zero));
    EXPECT_EQ(u"Linux", nameOf(root));
}

TEST_F(FileManager, AMountPointIsAVolumesRootToo)
{
    FSRef root = refTo("/proc");
    EXPECT_EQ(2u, infoOf(root).nodeID);
    EXPECT_EQ(u"proc", nameOf(root));
    EXPECT_NE(infoOf(refTo("/")).volume, infoOf(root).volume);
    FSSpec spec;
    FSRef again;
    EXPECT_EQ(noErr, FSGetCatalogInfo(&root, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr));
    EXPECT_EQ(noErr, FSpMakeFSRef(&spec, &again));
    EXPECT_EQ("/proc", pathOf(again));
}

TEST_F(FileManager, ASpecificationLeadsBackToItsItem)
{
    for (std::string path : {folder / "file", folder / composed, folder / "a:b", folder.path, std::string("/")}) {
        if (path != "/" && path != folder.path)
            writeFile(path);
        FSRef ref = refTo(path);
        FSSpec spec;
        FSRef again;
        EXPECT_EQ(noErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr));
        EXPECT_EQ(noErr, FSpMakeFSRef(&spec, &again));
        EXPECT_EQ(path, pathOf(again));
    }
}

TEST_F(FileManager, TheSpecificationOfARootHasParentOne)
{
    FSRef root = refTo("/");
    FSSpec spec;
    EXPECT_EQ(noErr, FSGetCatalogInfo(&root, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr));
    EXPECT_EQ(1, spec.parID);
    EXPECT_EQ(0, memcmp("\5Linux", spec.name, 6));
}

TEST_F(FileManager, ASpecificationsNameIsMacRomanOf63Bytes)
{
    writeFile(folder / decomposed);
    FSRef ref = refTo(folder / decomposed);
    FSSpec spec;
    EXPECT_EQ(noErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr));
    EXPECT_EQ(0, memcmp("\4caf\x8E", spec.name, 5));
    for (const std::string &name : {std::string("\xE3\x81\x82"), std::string(64, 'a')}) {
        writeFile(folder / name);
        ref = refTo(folder / name);
        EXPECT_EQ(bdNamErr, FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr));
    }
}

TEST_F(FileManager, ASpecificationMayNameAFileThatIsNotThereYet)
{
    FSCatalogInfo info = infoOf(refTo(folder.path));
    FSSpec spec = {info.volume, static_cast<SInt32>(info.nodeID), "\4caf\x8E"};
    FSRef ref;
    EXPECT_EQ(fnfErr, FSpMakeFSRef(&spec, &ref));
    writeFile(folder / composed);
    EXPECT_EQ(noErr, FSpMakeFSRef(&spec, &ref));
    EXPECT_EQ(folder / composed, pathOf(ref));
}

TEST_F(FileManager, ASpecificationWithoutANameIsTheFolder)
{
    FSCatalogInfo info = infoOf(refTo(folder.path));
    FSSpec spec = {info.volume, static_cast<SInt32>(info.nodeID), {}};
    FSRef ref;
    EXPECT_EQ(noErr, FSpMakeFSRef(&spec, &ref));
    EXPECT_EQ(folder.path, pathOf(ref));
}

TEST_F(FileManager, SpecificationsRefuseUnknownVolumesAndFolders)
{
    FSCatalogInfo info = infoOf(refTo(folder.path));
    FSSpec spec = {5, 2, {}};
    FSRef ref;
    EXPECT_EQ(nsvErr, FSpMakeFSRef(&spec, &ref));
    spec = {info.volume, 3, {}};
    EXPECT_EQ(dirNFErr, FSpMakeFSRef(&spec, &ref));
    EXPECT_EQ(paramErr, FSpMakeFSRef(nullptr, &ref));
}

} // namespace
