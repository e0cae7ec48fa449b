#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

namespace {

class URLs : public PlatformTest {
protected:
    static CFURLRef make(const char *text, CFURLRef base = nullptr)
    {
        CFURLRef url = CFURLCreateWithString(nullptr, (CFStringRef)[NSString stringWithUTF8String:text], base);
        return (CFURLRef)[(id)url autorelease];
    }

    static std::string textOf(CFURLRef url)
    {
        return url ? [[[(NSURL *)url autorelease] absoluteString] UTF8String] : "none";
    }

    static std::string last(const char *text)
    {
        NSString *name = [(NSString *)CFURLCopyLastPathComponent(make(text)) autorelease];
        return name ? [name UTF8String] : "none";
    }

    static std::string withoutLast(const char *text)
    {
        return textOf(CFURLCreateCopyDeletingLastPathComponent(nullptr, make(text)));
    }

    static std::string with(const char *text, NSString *component, bool directory = false)
    {
        return textOf(CFURLCreateCopyAppendingPathComponent(nullptr, make(text), (CFStringRef)component, directory));
    }
};

TEST_F(URLs, KeepTheirText)
{
    for (const char *text :
         {"http://x.org/a%20b?q=1#f", "mailto:a@b.c", "file:///tmp/a", "a/b", "http://[::1]:80/", "x:", "#fragment"}) {
        ASSERT_NE(nullptr, make(text)) << text;
        EXPECT_STREQ(text, [(NSString *)CFURLGetString(make(text)) UTF8String]);
    }
}

TEST_F(URLs, AreNotMadeOfTextThatNoURLMayHold)
{
    for (const char *text : {"", "a b", "a\"b", "a<b", "a\\b", "a^b", "a`b", "a{b", "a|b", "a\x7F", "a\nb", "a%", "a%2",
                             "a%zz", "a%2\xC3\xA9", "gr\xC3\xBC\xC3\x9F", "a#b#c"})
        EXPECT_EQ(nullptr, make(text)) << text;
    EXPECT_EQ(nullptr, CFURLCreateWithString(nullptr, nullptr, nullptr));
}

TEST_F(URLs, AreRelativeToABase)
{
    CFURLRef url = make("c/d", make("http://x.org/a/b"));
    EXPECT_STREQ("c/d", [(NSString *)CFURLGetString(url) UTF8String]);
    EXPECT_STREQ("http://x.org/a/c/d", [[(NSURL *)url absoluteString] UTF8String]);
}

TEST_F(URLs, LastPathComponent)
{
    EXPECT_EQ("b", last("file:///a/b"));
    EXPECT_EQ("b", last("file:///a/b/"));
    EXPECT_EQ("a b", last("file:///x/a%20b"));
    EXPECT_EQ("\xC3\xBC", last("file:///x/%C3%BC"));
    EXPECT_EQ("/", last("file:///"));
    EXPECT_EQ("", last("http://x.org"));
    EXPECT_EQ("b", last("http://x.org/a/b?q=/c#/d"));
    EXPECT_EQ("c", last("c"));
}

TEST_F(URLs, WithoutTheLastPathComponent)
{
    EXPECT_EQ("file:///a/", withoutLast("file:///a/b"));
    EXPECT_EQ("file:///a/", withoutLast("file:///a/b/"));
    EXPECT_EQ("file:///", withoutLast("file:///a"));
    EXPECT_EQ("file:///../", withoutLast("file:///"));
    EXPECT_EQ("http://x.org/a%20b/", withoutLast("http://x.org/a%20b/c?q#f"));
    EXPECT_EQ("./", withoutLast("a"));
    EXPECT_EQ("../../", withoutLast(".."));
}

TEST_F(URLs, WithAnotherPathComponent)
{
    EXPECT_EQ("file:///a/b", with("file:///a", @"b"));
    EXPECT_EQ("file:///a/b", with("file:///a/", @"b"));
    EXPECT_EQ("file:///a/b/", with("file:///a", @"b", true));
    EXPECT_EQ("file:///a/b%20c%25%3F%23%3B", with("file:///a", @"b c%?#;"));
    EXPECT_EQ("http://x.org/a/b?q#f", with("http://x.org/a?q#f", @"b"));
    EXPECT_EQ("file:///a/e%CC%81", with("file:///a", [NSString stringWithUTF8String:"e\xCC\x81"]));
}

TEST_F(URLs, HalfASurrogatePairCannotBeAppended)
{
    const UniChar half = 0xD800;
    CFStringRef name = CFStringCreateWithCharacters(nullptr, &half, 1);
    EXPECT_EQ("none", with("file:///a", (NSString *)name));
    CFRelease(name);
}

TEST_F(URLs, OfPaths)
{
    CFStringRef path = (CFStringRef) @"/tmp/a b";
    EXPECT_EQ("file:///tmp/a%20b", textOf(CFURLCreateWithFileSystemPath(nullptr, path, kCFURLPOSIXPathStyle, false)));
    EXPECT_EQ("file:///tmp/a%20b/", textOf(CFURLCreateWithFileSystemPath(nullptr, path, kCFURLPOSIXPathStyle, true)));
    EXPECT_EQ(nullptr, CFURLCreateWithFileSystemPath(nullptr, nullptr, kCFURLPOSIXPathStyle, false));
    EXPECT_EQ(nullptr, CFURLCreateWithFileSystemPath(nullptr, path, 1, false));
}

TEST_F(URLs, RelativePathsLieInTheCurrentFolder)
{
    TemporaryFolder folder;
    ASSERT_EQ(0, chdir(folder.path.c_str()));
    EXPECT_EQ("file://" + folder.path + "/a",
              textOf(CFURLCreateWithFileSystemPath(nullptr, (CFStringRef) @"a", kCFURLPOSIXPathStyle, false)));
}

TEST_F(URLs, PathsOfThem)
{
    NSString *path = [(id)CFURLCopyFileSystemPath(make("file:///tmp/a%20b"), kCFURLPOSIXPathStyle) autorelease];
    EXPECT_STREQ("/tmp/a b", [path UTF8String]);
    EXPECT_EQ(nullptr, CFURLCopyFileSystemPath(make("file:///tmp"), 1));
}

} // namespace
