// Files of the disk between FolderItems and file URLs.
#include "tests/bridge/crossing.h"

#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using host::Value;

namespace {

class FolderItem : public CrossingTest {
protected:
    void SetUp() override
    {
        char folder[] = "/tmp/folder_item_test.XXXXXX";
        ASSERT_NE(mkdtemp(folder), nullptr);
        char resolved[PATH_MAX];
        _folder = realpath(folder, resolved);
        start();
        carrier();
        host.resetCounts();
    }

    void TearDown() override
    {
        CrossingTest::TearDown();
        host::CocoaPool pool; // the one of the test is gone
        [[NSFileManager defaultManager] removeItemAtPath:[NSString stringWithUTF8String:_folder.c_str()] error:nullptr];
    }

    std::string pathOf(const std::string &name) { return _folder + "/" + name; }
    std::string newFile(const std::string &name)
    {
        close(open(pathOf(name).c_str(), O_CREAT | O_WRONLY, 0600));
        return pathOf(name);
    }
    std::string newFolder(const std::string &name)
    {
        mkdir(pathOf(name).c_str(), 0700);
        return pathOf(name);
    }

    Value itemOf(const std::string &path)
    {
        return toHostWith("fileForKey", [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]]);
    }
    std::string itemPathOf(const std::string &path)
    {
        Value item = itemOf(path);
        EXPECT_TRUE(item.isA("FolderItem")) << path;
        return item.isNil() ? "" : item.path();
    }
    NSURL *urlOf(const std::string &path) { return toCocoaWith("setFileValue", Value::folderItem(path)); }
    std::string urlPathOf(const std::string &path)
    {
        NSURL *url = urlOf(path);
        EXPECT_TRUE([url isFileURL]) << path;
        return url ? [[url path] UTF8String] : "";
    }

private:
    std::string _folder;
};

const char kComposed[] = "\xC3\xA9t\xC3\xA9";     // e with acute as one character, twice
const char kDecomposed[] = "e\xCC\x81te\xCC\x81"; // as a letter and a combining mark

} // namespace

TEST_F(FolderItem, NilIsNilBothWays)
{
    EXPECT_EQ(toCocoaWith("setFileValue", Value()), nil);
    EXPECT_TRUE(toHostWith("fileForKey", nil).isNil());
}

TEST_F(FolderItem, AnExistingFileOrFolderCrossesBothWays)
{
    for (const std::string &path : {newFile("plain.txt"), newFile("with space and %.txt"), newFolder("folder"),
                                    newFile("folder/inner"), std::string("/tmp")}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(itemPathOf(path), path);
        EXPECT_EQ(urlPathOf(path), path);
    }
}

TEST_F(FolderItem, AnExistingFileIsMadeFromItsParentAndName)
{
    itemOf(newFile("file"));
    EXPECT_EQ(host.calls("REALFolderItemFromParentFSRef"), 1);
    EXPECT_EQ(host.calls("FolderItemFromFSSpec"), 0);
}

TEST_F(FolderItem, TheRootOfTheVolumeIsMadeFromItsSpecification)
{
    EXPECT_EQ(itemPathOf("/"), "/");
    EXPECT_EQ(host.calls("REALFolderItemFromParentFSRef"), 0);
    EXPECT_EQ(host.calls("FolderItemFromFSSpec"), 1);
    EXPECT_EQ(urlPathOf("/"), "/");
}

TEST_F(FolderItem, AFileThatDoesNotExistYetCrossesByItsFolderAndName)
{
    EXPECT_EQ(itemPathOf(pathOf("not yet")), pathOf("not yet"));
    EXPECT_EQ(host.calls("REALFolderItemFromParentFSRef"), 1);
    EXPECT_EQ(host.calls("FolderItemFromFSSpec"), 0);

    host.resetCounts();
    NSURL *url = urlOf(pathOf("not yet"));
    EXPECT_TRUE([[url path] isEqual:[NSString stringWithUTF8String:pathOf("not yet").c_str()]]) << textOf(url);
    EXPECT_FALSE([[url absoluteString] hasSuffix:@"/"]) << "it is not taken for a folder";
    EXPECT_EQ(host.calls("REALFSRefFromFolderItem"), 2);
    EXPECT_EQ(host.calls("REALFSSpecFromFolderItem"), 0);
}

TEST_F(FolderItem, AFileInAMissingFolderIsNilBothWays)
{
    EXPECT_TRUE(itemOf(pathOf("missing/file")).isNil());
    EXPECT_EQ(toCocoaWith("setFileValue", Value::folderItem(pathOf("missing/file"))), nil);
}

TEST_F(FolderItem, AComposedNameOfANewFileComesBackDecomposed)
{
    EXPECT_EQ(itemPathOf(pathOf(kComposed)), pathOf(kDecomposed));
    EXPECT_EQ(urlPathOf(pathOf(kComposed)), pathOf(kDecomposed));
    EXPECT_EQ(itemPathOf(pathOf(kDecomposed)), pathOf(kDecomposed));
    EXPECT_EQ(urlPathOf(pathOf(kDecomposed)), pathOf(kDecomposed));
}

TEST_F(FolderItem, AnExistingFileIsFoundInWhicheverFormItsNameIs)
{
    const std::string composed = newFile(kComposed);
    EXPECT_EQ(itemPathOf(composed), composed);
    EXPECT_EQ(urlPathOf(composed), composed);
}

TEST_F(FolderItem, APathThroughALinkLeadsToTheRealFolder)
{
    const std::string real = newFolder("real");
    newFolder("real/inner");
    newFile("real/file");
    ASSERT_EQ(symlink(real.c_str(), pathOf("link").c_str()), 0);
    for (const char *item : {"/file", "/inner", "/inner/not yet"}) {
        SCOPED_TRACE(item);
        EXPECT_EQ(itemPathOf(pathOf("link") + item), real + item);
        EXPECT_EQ(urlPathOf(pathOf("link") + item), real + item);
    }
}

TEST_F(FolderItem, ALinkAtTheEndIsAnItemOfItsOwn)
{
    ASSERT_EQ(symlink(newFolder("real").c_str(), pathOf("link").c_str()), 0);
    EXPECT_EQ(itemPathOf(pathOf("link")), pathOf("link"));
    EXPECT_EQ(urlPathOf(pathOf("link")), pathOf("link"));
    EXPECT_EQ(itemPathOf(pathOf("link/not yet")), pathOf("link/not yet")) << "its parent is the link";
}

TEST_F(FolderItem, ADanglingLinkIsAnItemOfItsOwn)
{
    ASSERT_EQ(symlink("/no such place", pathOf("dangling").c_str()), 0);
    EXPECT_EQ(itemPathOf(pathOf("dangling")), pathOf("dangling"));
    EXPECT_EQ(urlPathOf(pathOf("dangling")), pathOf("dangling"));
}

TEST_F(FolderItem, AWebAddressIsNoFile)
{
    EXPECT_TRUE(toHostWith("fileForKey", [NSURL URLWithString:@"http://example.org/file"]).isNil());
}
