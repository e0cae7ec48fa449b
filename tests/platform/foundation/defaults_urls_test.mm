#include "tests/platform/foundation/support.h"

namespace {

class DefaultsURLs : public DefaultsTest {
protected:
    std::string thereAndBack(NSString *url)
    {
        [standard setURL:[NSURL URLWithString:url] forKey:@"url"];
        [standard synchronize];
        return textOf([[fresh() URLForKey:@"url"] absoluteString]);
    }
};

TEST_F(DefaultsURLs, AWebAddressIsStoredAsAnArchive)
{
    EXPECT_EQ("http://x.org/a%20b?q#f", thereAndBack(@"http://x.org/a%20b?q#f"));
    EXPECT_TRUE([[standard objectForKey:@"url"] isKindOfClass:[NSData class]]);
}

TEST_F(DefaultsURLs, AQueryMayFollowTheHost)
{
    for (const char *address : {"http://example.com?q=1", "http://host#f", "http://a:b/"})
        EXPECT_EQ(address, thereAndBack(text(address)));
}

TEST_F(DefaultsURLs, AFileURLIsStoredAsItsPath)
{
    EXPECT_EQ("file://localhost/nowhere/a%20b", thereAndBack(@"file:///nowhere/a%20b"));
    EXPECT_EQ("/nowhere/a b", textOf([standard objectForKey:@"url"]));
}

TEST_F(DefaultsURLs, TheHomeFolderIsATilde)
{
    NSString *path = [NSHomeDirectory() stringByAppendingPathComponent:@"file"];
    [standard setURL:[NSURL fileURLWithPath:path] forKey:@"url"];
    EXPECT_EQ("~/file", textOf([standard objectForKey:@"url"]));
    EXPECT_EQ(textOf(path), textOf([[standard URLForKey:@"url"] path]));
}

TEST_F(DefaultsURLs, NilRemoves)
{
    thereAndBack(@"http://x.org/");
    [standard setURL:nil forKey:@"url"];
    EXPECT_EQ(nil, [standard objectForKey:@"url"]);
    EXPECT_EQ(nil, [standard URLForKey:@"url"]);
}

TEST_F(DefaultsURLs, AnythingElseIsNoURL)
{
    [standard setObject:[NSData dataWithBytes:"junk" length:4] forKey:@"junk"];
    [standard setObject:[NSKeyedArchiver archivedDataWithRootObject:@"text"] forKey:@"text"];
    [standard setInteger:1 forKey:@"number"];
    for (id key in [NSArray arrayWithObjects:@"junk", @"text", @"number", @"missing", nil])
        EXPECT_EQ(nil, [standard URLForKey:key]) << [key UTF8String];
}

TEST_F(DefaultsURLs, ANilKeyIsTreatedAsByTheOtherAccessors)
{
    EXPECT_EQ("NSInvalidArgumentException",
              raisedBy([&] { [standard setURL:[NSURL URLWithString:@"http://x.org/"] forKey:nil]; }));
    EXPECT_EQ(nil, [standard URLForKey:nil]);
}

} // namespace
