#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

#include <random>

// What Core Foundation of macOS says of these texts, from 10.7 to 10.10. "none" is no object.
struct URLFact {
    const char *text;
    const char *becomes; // the text of the URL
    const char *last;    // its last path component
    const char *withoutLast;
    const char *path;
};

// clang-format off
static const URLFact urlFacts[] = {
    // text                       becomes                       last      without it                  path
    {"http://a/b",                "http://a/b",                 "b",      "http://a/",                "/b"},
    {"http://a/b/",               "http://a/b/",                "b",      "http://a/",                "/b"},
    {"http://a/",                 "http://a/",                  "/",      "http://a/../",             "/"},
    {"http://a",                  "http://a",                   "",       "http://a../",              ""},
    {"http://a/b?q/c#f/d",        "http://a/b?q/c#f/d",         "b",      "http://a/?q/c#f/d",        "/b"},
    {"http://a/b;c/d",            "http://a/b;c/d",             "b",      "http://a/;c/d",            "/b"},
    {"http://a/b//c",             "http://a/b//c",              "c",      "http://a/b//",             "/b//c"},
    {"http://a/b//",              "http://a/b//",               "",       "http://a/b//../",          "/b/"},
    {"http://a//",                "http://a//",                 "",       "http://a//../",            "/"},
    // What stands right behind an authority, and authorities that are none.
    {"http://a?q=1",              "http://a?q=1",               "",       "http://a../?q=1",          ""},
    {"http://a#f",                "http://a#f",                 "",       "http://a../#f",            ""},
    {"http://u:p@h:80/x",         "http://u:p@h:80/x",          "x",      "http://u:p@h:80/",         "/x"},
    {"http://a:b/",               "http://a:b/",                "/",      "http://a:b/../",           "/"},
    {"http://a:/",                "http://a:/",                 "/",      "http://a:/../",            "/"},
    {"http://",                   "http://",                    "",       "none",                     "none"},
    {"//",                        "//",                         "",       "none",                     "none"},
    // Brackets and marks.
    {"http://[::1]:80/",          "http://[::1]:80/",           "/",      "http://[::1]:80/../",      "/"},
    {"http://[::1",               "http://[::1",                "",       "http://[::1../",           ""},
    {"http://a[b]c/",             "http://a%5Bb%5Dc/",          "/",      "http://a%5Bb%5Dc/../",     "/"},
    {"http://a/[x]?[y]#[z]",      "http://a/%5Bx%5D?%5By%5D#%5Bz%5D", "[x]", "http://a/?%5By%5D#%5Bz%5D", "/[x]"},
    {"a:#",                       "a:%23",                      "",       "none",                     "none"},
    {"mailto:a#b",                "mailto:a%23b",               "",       "none",                     "none"},
    // Schemes without a path.
    {"mailto:a@b.c",              "mailto:a@b.c",               "",       "none",                     "none"},
    {"file:tmp/x",                "file:tmp/x",                 "",       "none",                     "none"},
    {"http:",                     "http:",                      "",       "none",                     "none"},
    {"1+-.:x",                    "1+-.:x",                     "",       "none",                     "none"},
    // Relative texts.
    {"",                          "",                           "",       "none",                     "none"},
    {"#f",                        "#f",                         "",       "none",                     "none"},
    {"x",                         "x",                          "x",      "./",                       "x"},
    {"x/y",                       "x/y",                        "y",      "x/",                       "x/y"},
    {"x?q",                       "x?q",                        "x",      "./?q",                     "x"},
    {".",                         ".",                          ".",      "../",                      "."},
    {"./",                        "./",                         ".",      "../",                      "."},
    {"..",                        "..",                         "..",     "../../",                   ".."},
    {"/.",                        "/.",                         ".",      "/./../",                   "/."},
    {"/a/.",                      "/a/.",                       ".",      "/a/../",                   "/a/."},
    {"/a/..",                     "/a/..",                      "..",     "/a/../../",                "/a/.."},
    {"/~/!$&'()*+,=:@_-.",        "/~/!$&'()*+,=:@_-.",         "!$&'()*+,=:@_-.", "/~/",           "/~/!$&'()*+,=:@_-."},
    // Escapes.
    {"http://a/b%20c",            "http://a/b%20c",             "b c",    "http://a/",                "/b c"},
    {"http://a/b%2Fc",            "http://a/b%2Fc",             "b/c",    "http://a/",                "/b/c"},
    {"http://a/%2F",              "http://a/%2F",               "/",      "http://a/",                "/"},
    {"http://a/%E9",              "http://a/%E9",               "none",   "http://a/",                "none"},
    {"file:///%C3%A9",            "file:///%C3%A9",             "\u00E9", "file:///",                 "/\u00E9"},
};

// To 10.8 the last character was not looked at.
static const char *const notURLs[] = {
    "a b", "http://a/\u00E9/", "http://a/ ", "%", "%4", "%zz", "a%2\u00E9", "a#b#c", "a\\b", "a\"b", "a<b", "a>b", "a^b",
    "a`b", "a{b", "a|b", "a}b", "a\x7F", "a\nb",
};

struct PathFact {
    const char *path;
    const char *ofFile;   // the text of the URL
    const char *ofFolder;
};

// file://localhost is for applications built before 10.9, on any system; form D is 10.9's and later.
static const PathFact pathFacts[] = {
    {"/",            "file://localhost/",             "file://localhost/"},
    {"/tmp",         "file://localhost/tmp",          "file://localhost/tmp/"},
    {"/tmp/",        "file://localhost/tmp",          "file://localhost/tmp/"},
    {"//a//b",       "file://localhost//a//b",        "file://localhost//a//b/"},
    {"/a/../b/.",    "file://localhost/a/../b/.",     "file://localhost/a/../b/./"},
    {"/a b%41;?#",   "file://localhost/a%20b%2541%3B%3F%23", "file://localhost/a%20b%2541%3B%3F%23/"},
    {"/[x]\"<>\\^`{|}", "file://localhost/%5Bx%5D%22%3C%3E%5C%5E%60%7B%7C%7D", "file://localhost/%5Bx%5D%22%3C%3E%5C%5E%60%7B%7C%7D/"},
    {"/!$&'()*+,=@:~_-.", "file://localhost/!$&'()*+,=@:~_-.", "file://localhost/!$&'()*+,=@:~_-./"},
    {"/\u00E9",      "file://localhost/e%CC%81",      "file://localhost/e%CC%81/"},
    {"/\U0001F600",  "file://localhost/%F0%9F%98%80", "file://localhost/%F0%9F%98%80/"},
    {"a/b",          "a/b",                           "a/b/"},
    {"~/x",          "~/x",                           "~/x/"},
    {"a:b",          "./a:b",                         "./a:b/"}, // "a:" would be a scheme
    {"a/b:c",        "a/b:c",                         "a/b:c/"},
};

struct AppendFact {
    const char *text;
    const char *component;
    const char *file; // the text with the component
    const char *folder;
};

static const AppendFact appendFacts[] = {
    {"file:///a",    "b",      "file:///a/b",          "file:///a/b/"},
    {"file:///a/",   "b",      "file:///a/b",          "file:///a/b/"},
    {"file:///a",    "/b",     "file:///a//b",         "file:///a//b/"},
    {"file:///a",    "b/",     "file:///a/b/",         "file:///a/b//"},
    {"file:///a",    "",       "file:///a/",           "file:///a//"},
    {"file:///a",    "b c%?#;[", "file:///a/b%20c%25%3F%23%3B%5B", "file:///a/b%20c%25%3F%23%3B%5B/"},
    {"file:///a",    "\u00E9", "file:///a/%C3%A9",     "file:///a/%C3%A9/"}, // here names are taken as they are
    {"http://a",     "b",      "http://a/b",           "http://a/b/"},
    {"http://a?q",   "b",      "http://a/b?q",         "http://a/b/?q"},
    {"http://a/b?q#f", "c",    "http://a/b/c?q#f",     "http://a/b/c/?q#f"},
    {"x",            "b",      "x/b",                  "x/b/"},
    {"",             "b",      "none",                 "none"},
    {"mailto:x",     "b",      "none",                 "none"},
};

// The examples of RFC 1808, section 5.1, that leave no "..", with the base http://a/b/c/d;p?q#f.
static const char *const resolved[][2] = {
    {"g:h", "g:h"},          {"g", "http://a/b/c/g"},       {"./g", "http://a/b/c/g"}, {"g/", "http://a/b/c/g/"},
    {"/g", "http://a/g"},    {"//g", "http://g"},           {"?y", "http://a/b/c/d;p?y"},
    {"g?y", "http://a/b/c/g?y"}, {"#s", "http://a/b/c/d;p?q#s"}, {"g#s", "http://a/b/c/g#s"}, {";x", "http://a/b/c/d;x"},
    {"g;x?y#s", "http://a/b/c/g;x?y#s"}, {".", "http://a/b/c/"}, {"..", "http://a/b/"}, {"../g", "http://a/b/g"},
    {"../../g", "http://a/g"},
};
// clang-format on

namespace {

class URLs : public PlatformTest {
protected:
    static NSString *string(const char *utf8) { return [NSString stringWithUTF8String:utf8]; }

    static CFURLRef make(const char *text, CFURLRef base = nullptr)
    {
        return (CFURLRef)[(id)CFURLCreateWithString(nullptr, (CFStringRef)string(text), base) autorelease];
    }

    // For what the caller owns.
    static std::string taken(CFStringRef text) { return text ? [[(id)text autorelease] UTF8String] : "none"; }
    static std::string taken(CFURLRef url)
    {
        return url ? [[[(NSURL *)url autorelease] relativeString] UTF8String] : "none";
    }

    static std::string ofPath(const char *path, bool isFolder)
    {
        return taken((CFURLRef)[[NSURL alloc] initFileURLWithPath:string(path) isDirectory:isFolder]);
    }

    static std::string with(CFURLRef url, const char *component, bool isFolder)
    {
        return taken(CFURLCreateCopyAppendingPathComponent(nullptr, url, (CFStringRef)string(component), isFolder));
    }
};

TEST_F(URLs, AreWhatTheirTextsSay)
{
    for (const URLFact &fact : urlFacts) {
        SCOPED_TRACE(fact.text);
        CFURLRef url = make(fact.text);
        ASSERT_NE(nullptr, url);
        EXPECT_STREQ(fact.becomes, [[(NSURL *)url absoluteString] UTF8String]);
        EXPECT_EQ(fact.last, taken(CFURLCopyLastPathComponent(url)));
        EXPECT_EQ(fact.withoutLast, taken(CFURLCreateCopyDeletingLastPathComponent(nullptr, url)));
        NSString *path = [(NSURL *)url path];
        EXPECT_EQ(fact.path, path ? [path UTF8String] : std::string("none"));
    }
}

TEST_F(URLs, AreNotMadeOfTextThatNoURLMayHold)
{
    for (const char *text : notURLs)
        EXPECT_EQ(nullptr, make(text)) << text;
    EXPECT_EQ(nullptr, CFURLCreateWithString(nullptr, nullptr, nullptr));
}

TEST_F(URLs, OfPaths)
{
    for (const PathFact &fact : pathFacts) {
        EXPECT_EQ(fact.ofFile, ofPath(fact.path, false)) << fact.path;
        EXPECT_EQ(fact.ofFolder, ofPath(fact.path, true)) << fact.path;
    }
    const UniChar withZero[] = {'/', 'a', 0, 'b'};
    CFStringRef path = CFStringCreateWithCharacters(nullptr, withZero, 4);
    EXPECT_EQ(nil, [[NSURL alloc] initFileURLWithPath:(NSString *)path isDirectory:NO]);
    CFRelease(path);
}

TEST_F(URLs, WithAnotherPathComponent)
{
    for (const AppendFact &fact : appendFacts) {
        EXPECT_EQ(fact.file, with(make(fact.text), fact.component, false)) << fact.text << " + " << fact.component;
        EXPECT_EQ(fact.folder, with(make(fact.text), fact.component, true)) << fact.text << " + " << fact.component;
    }
}

TEST_F(URLs, HalfASurrogatePairCannotBeAppended)
{
    const UniChar half = 0xD800;
    CFStringRef name = CFStringCreateWithCharacters(nullptr, &half, 1);
    EXPECT_EQ("none", taken(CFURLCreateCopyAppendingPathComponent(nullptr, make("file:///a"), name, false)));
    CFRelease(name);
}

TEST_F(URLs, RelativePathsLieInTheCurrentFolder)
{
    TemporaryFolder folder;
    ASSERT_EQ(0, chdir(folder.path.c_str()));
    NSURL *url = [NSURL fileURLWithPath:@"a"];
    EXPECT_EQ("file://localhost" + folder.path + "/a", [[url absoluteString] UTF8String]);
    EXPECT_EQ(folder.path + "/a", [[url path] UTF8String]);
    EXPECT_STREQ("a", [[url relativePath] UTF8String]);
}

TEST_F(URLs, AreRelativeToABase)
{
    CFURLRef base = make("http://a/b/c/d;p?q#f");
    for (const auto &[text, whole] : resolved) {
        NSURL *url = (NSURL *)make(text, base);
        EXPECT_STREQ(text, [[url relativeString] UTF8String]);
        EXPECT_STREQ(whole, [[url absoluteString] UTF8String]) << text;
        EXPECT_EQ((NSURL *)base, [url baseURL]);
    }
}

TEST_F(URLs, FoundationSaysTheSame)
{
    NSURL *url = [NSURL URLWithString:@"HTTP://me:pw@[::1]:80/a%20b/c;p?q#f"];
    NSArray *parts = [NSArray arrayWithObjects:[url scheme], [url user], [url password], [url host], [url port],
                                               [url path], [url parameterString], [url query], [url fragment], nil];
    EXPECT_STREQ("HTTP|me|pw|::1|80|/a b/c|p|q|f", [[parts componentsJoinedByString:@"|"] UTF8String]);
    EXPECT_STREQ("//me:pw@[::1]:80/a%20b/c;p?q#f", [[url resourceSpecifier] UTF8String]);
    EXPECT_FALSE([url isFileURL]);
    EXPECT_TRUE([[NSURL URLWithString:@"FILE:///x"] isFileURL]);
    EXPECT_EQ(nil, [NSURL URLWithString:@"a b"]);
    EXPECT_STREQ("file://localhost/tmp/", [[[NSURL fileURLWithPath:@"/tmp"] absoluteString] UTF8String]);
    EXPECT_STREQ("file://localhost/none", [[[NSURL fileURLWithPath:@"/none"] absoluteString] UTF8String]);
}

TEST_F(URLs, AreEqualByTheirTextsAndComeBackFromAnArchive)
{
    for (const char *text : {"http://a?q=1", "http://a:b/", "file:///tmp", ""}) {
        NSURL *url = (NSURL *)make(text);
        EXPECT_TRUE([url isEqual:(NSURL *)make(text)]);
        EXPECT_EQ([url hash], [(NSURL *)make(text) hash]);
        EXPECT_FALSE([url isEqual:(NSURL *)make("other")]);
        NSData *archive = [NSKeyedArchiver archivedDataWithRootObject:url];
        EXPECT_TRUE([url isEqual:[NSKeyedUnarchiver unarchiveObjectWithData:archive]]) << text;
    }
}

// URLs put together from parts come apart into them.
TEST_F(URLs, RandomPartsAreFoundAgain)
{
    unsigned seed = std::random_device()();
    RecordProperty("seed", static_cast<int>(seed));
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto word = [&] {
        std::string text;
        for (unsigned length = 1 + random() % 4; length; --length)
            text.push_back("abcXYZ019-_.!~*'()&=+$,"[random() % 23]);
        return text;
    };
    auto maybe = [&](const char *before, const std::string &text) { return random() % 2 ? before + text : ""; };
    auto behind = [](const std::string &mark, NSString *part) { return part ? mark + [part UTF8String] : ""; };
    for (int i = 0; i < 500; ++i) {
        std::string user = maybe("", word());
        std::string authority = (user.empty() ? "" : user + maybe(":", word()) + "@") + word() + maybe(":", "8080");
        std::string path;
        std::string last = "";
        for (unsigned depth = random() % 4; depth; --depth)
            path += "/" + (last = word());
        // Without a path ";" would belong to the host.
        std::string rest = (path.empty() ? "" : maybe(";", word())) + maybe("?", word()) + maybe("#", word());
        std::string text = "s://" + authority + path + rest;
        NSURL *url = (NSURL *)make(text.c_str());
        ASSERT_NE(nil, url) << text;
        EXPECT_EQ(authority, (user.empty() ? "" : user + behind(":", [url password]) + "@") + [[url host] UTF8String] +
                                 (([url port]) ? ":8080" : ""))
            << text;
        EXPECT_EQ(path, [[url path] UTF8String]) << text;
        EXPECT_EQ(rest, behind(";", [url parameterString]) + behind("?", [url query]) + behind("#", [url fragment]))
            << text;
        EXPECT_EQ(last, taken(CFURLCopyLastPathComponent((CFURLRef)url))) << text;
    }
}

} // namespace
