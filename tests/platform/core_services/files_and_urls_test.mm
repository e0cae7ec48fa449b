#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

#include <CoreServices/CoreServices.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

class FilesAndURLs : public PlatformTest {
protected:
    TemporaryFolder folder;

    static NSURL *urlOf(const std::string &path)
    {
        return [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]];
    }

    // The path that a URL has after the way to a reference and back, "none" when there is no such item.
    static std::string thereAndBack(NSURL *url)
    {
        FSRef ref;
        if (!CFURLGetFSRef((CFURLRef)url, &ref))
            return "none";
        NSURL *back = [(id)CFURLCreateFromFSRef(nullptr, &ref) autorelease];
        return [[back path] UTF8String];
    }
};

TEST_F(FilesAndURLs, AnExistingItemComesBack)
{
    writeFile(folder / "a b;c%");
    EXPECT_EQ(folder / "a b;c%", thereAndBack(urlOf(folder / "a b;c%")));
    EXPECT_EQ(folder.path, thereAndBack(urlOf(folder.path)));
    EXPECT_EQ("/", thereAndBack(urlOf("/")));
}

TEST_F(FilesAndURLs, AMissingItemHasNoReference)
{
    EXPECT_EQ("none", thereAndBack(urlOf(folder / "missing")));
}

TEST_F(FilesAndURLs, OnlyFileURLsHaveReferences)
{
    FSRef ref;
    EXPECT_EQ("none", thereAndBack([NSURL URLWithString:@"http://x.org/tmp"]));
    EXPECT_FALSE(CFURLGetFSRef(nullptr, &ref));
}

TEST_F(FilesAndURLs, FoldersEndInASlash)
{
    FSRef ref;
    ASSERT_TRUE(CFURLGetFSRef((CFURLRef)urlOf(folder.path), &ref));
    NSURL *url = [(id)CFURLCreateFromFSRef(nullptr, &ref) autorelease];
    EXPECT_EQ("file://localhost" + folder.path + "/", [[url absoluteString] UTF8String]);
}

TEST_F(FilesAndURLs, AComposedNameIsFoundByItsDecomposedURL)
{
    writeFile(folder / "caf\xC3\xA9");
    EXPECT_EQ(folder / "caf\xC3\xA9", thereAndBack(urlOf(folder / "cafe\xCC\x81")));
}

TEST_F(FilesAndURLs, ALinkIsTheItemItselfAndFoldersOnTheWayAreFollowed)
{
    ASSERT_EQ(0, mkdir((folder / "real").c_str(), 0700));
    writeFile(folder / "real/file");
    ASSERT_EQ(0, symlink("real", (folder / "link").c_str()));
    EXPECT_EQ(folder / "link", thereAndBack(urlOf(folder / "link")));
    EXPECT_EQ(folder / "real/file", thereAndBack(urlOf(folder / "link/file")));
}

TEST_F(FilesAndURLs, RelativeURLsAreResolved)
{
    writeFile(folder / "file");
    NSURL *url = [NSURL URLWithString:@"file" relativeToURL:urlOf(folder.path)];
    EXPECT_EQ(folder / "file", thereAndBack(url));
}

TEST_F(FilesAndURLs, NoURLIsMadeOfAReferenceThatEnded)
{
    writeFile(folder / "file");
    FSRef ref;
    ASSERT_TRUE(CFURLGetFSRef((CFURLRef)urlOf(folder / "file"), &ref));
    unlink((folder / "file").c_str());
    EXPECT_EQ(nullptr, CFURLCreateFromFSRef(nullptr, &ref));
    EXPECT_EQ(nullptr, CFURLCreateFromFSRef(nullptr, nullptr));
}

} // namespace
