#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

#include <math.h>

namespace {

class XMLPropertyList : public PlatformTest {
protected:
    static id read(const std::string &data, NSPropertyListFormat *format = nullptr)
    {
        return [NSPropertyListSerialization propertyListWithData:[NSData dataWithBytes:data.data() length:data.size()]
                                                         options:NSPropertyListImmutable
                                                          format:format
                                                           error:nullptr];
    }

    static std::string write(id root)
    {
        NSData *data = [NSPropertyListSerialization dataFromPropertyList:root
                                                                  format:NSPropertyListXMLFormat_v1_0
                                                        errorDescription:nullptr];
        return data ? std::string(static_cast<const char *>([data bytes]), [data length]) : "none";
    }

    // A word for the kind of an object, and what it holds.
    static std::string told(id object)
    {
        if (!object)
            return "none";
        std::string value = [[object description] UTF8String];
        if ([object isKindOfClass:[NSNumber class]])
            return std::string([object objCType]) + " " + [[object stringValue] UTF8String];
        if ([object isKindOfClass:[NSString class]])
            return "'" + value + "'";
        if ([object isKindOfClass:[NSDate class]])
            return std::to_string(static_cast<long long>([object timeIntervalSinceReferenceDate])) + " s";
        if ([object isKindOfClass:[NSData class]])
            return std::to_string([object length]) + " bytes";
        return std::to_string([object count]) + ([object isKindOfClass:[NSArray class]] ? " elements" : " entries");
    }
};

// What Core Foundation makes of such an element, measured with 10.7, 10.9 and 10.10. "none": the whole list is refused.
const struct {
    const char *element;
    const char *is;
} facts[] = {
    {"<integer>5</integer>", "i 5"},
    {"<integer>-5</integer>", "q -5"},
    {"<integer>+5</integer>", "i 5"},
    {"<integer> - 5</integer>", "q -5"},
    {"<integer>007</integer>", "i 7"},
    {"<integer>0x1F</integer>", "q 31"},
    {"<integer>-0Xff</integer>", "q -255"},
    {"<integer>9223372036854775807</integer>", "q 9223372036854775807"},
    {"<integer>9223372036854775808</integer>", "Q 9223372036854775808"},
    {"<integer>18446744073709551615</integer>", "Q 18446744073709551615"},
    {"<integer>18446744073709551616</integer>", "none"},
    {"<integer>-9223372036854775808</integer>", "q -9223372036854775808"},
    {"<integer>-9223372036854775809</integer>", "none"},
    {"<integer>12abc</integer>", "none"},
    {"<integer>5.5</integer>", "none"},
    {"<integer></integer>", "none"},
    {"<integer/>", "none"},
    {"<real>5</real>", "d 5"},
    {"<real>INF</real>", "d inf"},
    {"<real>1e400</real>", "d inf"},
    {"<real>12abc</real>", "none"},
    {"<real></real>", "none"},
    {"<true/>", "c 1"},
    {"<false></false>", "c 0"},
    {"<true>x</true>", "none"},
    {"<string/>", "''"},
    {"<string> a </string>", "' a '"},
    {"<string>a\r\nb</string>", "'a\r\nb'"},
    {"<string>&lt;&gt;&amp;&apos;&quot;&#65;&#x42;</string>", "'<>&'\"AB'"},
    {"<string>&#x1F600;</string>", "'\uF600'"}, // 16 bits
    {"<string>a&#xD83D;b</string>", "'ab'"},
    {"<string>&bogus;</string>", "none"},
    {"<string><![CDATA[<x>]]>&amp;</string>", "'<x>&'"},
    {"<string>a<!-- no -->b</string>", "none"},
    {"<string>\xFF</string>", "none"},
    {"<string>\xEF\xBB\xBF"
     "a</string>",
     "'a'"},
    {"<key>a</key>", "'a'"},
    {"<date>2001-01-01T00:00:01Z</date>", "1 s"},
    {"<date>0000-12-30T00:00:00Z</date>", "-63114076800 s"},
    {"<date>-001-01-01T00:00:00Z</date>", "-63177062400 s"},
    {"<date>10000-01-01T00:00:00Z</date>", "252423993600 s"},
    {"<date>2001-01-01T00:00:00</date>", "none"},
    {"<date></date>", "none"},
    {"<data></data>", "0 bytes"},
    {"<data> Y Q = = </data>", "1 bytes"},
    {"<data>YWJj</data>", "3 bytes"},
    {"<data>YQ</data>", "0 bytes"}, // no group of four
    {"<data>!!!</data>", "0 bytes"},
    {"<array/>", "0 elements"},
    {"<array><true/><!-- c --><string>a</string></array>", "2 elements"},
    {"<array>x</array>", "none"},
    {"<array><true/>", "none"},
    {"<dict></dict>", "0 entries"},
    {"<dict><key>a</key><true/></dict>", "1 entries"},
    {"<dict><key>a</key></dict>", "none"},
    {"<dict><string>a</string><true/></dict>", "none"},
    {"<null/>", "none"},
    {"", "none"},
};

const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
                          "1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n";

TEST_F(XMLPropertyList, ElementsAreReadAsOnMacOS)
{
    for (const auto &fact : facts)
        EXPECT_EQ(fact.is, told(read(kHead + fact.element + "\n</plist>\n"))) << fact.element;
    EXPECT_EQ("none", told(read(kHead + "<true/><true/></plist>")));
}

TEST_F(XMLPropertyList, OneElementThatDoesNotFitMakesTheListUnreadable)
{
    for (const auto &fact : facts)
        if (std::string(fact.is) == "none" && *fact.element)
            EXPECT_EQ("none", told(read(kHead + "<array><true/>" + fact.element + "</array></plist>"))) << fact.element;
}

TEST_F(XMLPropertyList, DeepListsAreReadOrRefused)
{
    auto nested = [](int depth) {
        std::string text = kHead;
        for (int i = 0; i < depth; ++i)
            text += "<array>";
        for (int i = 0; i < depth; ++i)
            text += "</array>";
        return text + "</plist>";
    };
    EXPECT_EQ("1 elements", told(read(nested(4000))));
    EXPECT_EQ("none", told(read(nested(1000000))));
}

TEST_F(XMLPropertyList, OtherEncodingsAreReadByTheirNames)
{
    EXPECT_EQ("'\u00E9'",
              told(read("<?xml version='1.0' encoding='ISO-8859-1'?><plist><string>\xE9</string></plist>")));
    EXPECT_EQ("'\u0434'",
              told(read("<?xml version=\"1.0\" encoding=\"KOI8-R\"?><plist><string>\xC4</string></plist>")));
    EXPECT_EQ("none", told(read("<?xml version=\"1.0\" encoding=\"no such\"?><plist><string>a</string></plist>")));
    std::string wide = "\xFE\xFF";
    for (char c : std::string("<plist><string>a</string></plist>"))
        wide += {'\0', c};
    EXPECT_EQ("'a'", told(read(wide)));
}

TEST_F(XMLPropertyList, TheOlderFormIsStillRead)
{
    NSPropertyListFormat format;
    EXPECT_EQ("2 elements", told(read("(1, 2)", &format)));
    EXPECT_EQ(NSPropertyListOpenStepFormat, format);
    EXPECT_EQ("1 entries", told(read("a = 1;", &format)));
    EXPECT_EQ(NSPropertyListOpenStepFormat, format);
    EXPECT_EQ("2 bytes", told(read("<0102>")));
}

TEST_F(XMLPropertyList, IsWrittenAsOnMacOS)
{
    NSMutableData *bytes = [NSMutableData dataWithLength:60];
    NSDictionary *list = [NSDictionary
        dictionaryWithObjectsAndKeys:@"<a&b>\"'", @"text", [NSArray arrayWithObject:[NSDictionary dictionary]],
                                     @"array", bytes, @"data", [NSArray array], @"empty",
                                     [NSDate dateWithTimeIntervalSinceReferenceDate:-0.5], @"date", nil];
    EXPECT_EQ(kHead +
                  "<dict>\n"
                  "\t<key>array</key>\n\t<array>\n\t\t<dict/>\n\t</array>\n"
                  "\t<key>data</key>\n\t<data>\n\t" +
                  std::string(68, 'A') + "\n\t" + std::string(12, 'A') +
                  "\n\t</data>\n"
                  "\t<key>date</key>\n\t<date>2000-12-31T23:59:59Z</date>\n"
                  "\t<key>empty</key>\n\t<array/>\n"
                  "\t<key>text</key>\n\t<string>&lt;a&amp;b&gt;\"'</string>\n"
                  "</dict>\n</plist>\n",
              write(list));
    EXPECT_EQ("none", write([NSNull null]));
    EXPECT_EQ("none", write([NSArray arrayWithObject:[NSURL URLWithString:@"x"]]));
}

TEST_F(XMLPropertyList, MutableListsAreMutableAllTheWayDown)
{
    std::string text = kHead + "<dict><key>a</key><array><string>x</string></array></dict></plist>";
    NSData *data = [NSData dataWithBytes:text.data() length:text.size()];
    id list = [NSPropertyListSerialization propertyListWithData:data
                                                        options:NSPropertyListMutableContainersAndLeaves
                                                         format:nullptr
                                                          error:nullptr];
    [[[list objectForKey:@"a"] objectAtIndex:0] appendString:@"y"];
    [[list objectForKey:@"a"] addObject:@"z"];
    EXPECT_STREQ("xy z", [[[list objectForKey:@"a"] componentsJoinedByString:@" "] UTF8String]);
}

} // namespace
