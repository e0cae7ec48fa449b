// CFStrings as host strings.
#include "bridge/strings/cf_string.h"
#include "tests/bridge/strings/cocoa_strings.h"
#include "tests/support/allocations.h"
#include "tests/support/inner_test.h"

using support::raisedOnce;
using ::testing::Contains;
using ::testing::Each;
using ::testing::IsEmpty;
using ::testing::Lt;

namespace {

host::Value converted(CFStringRef text)
{
    return support::adopted([=](HeldHandles &held) { return CFString2RBString(text, held); });
}

CFStringRef create(const std::u16string &units)
{
    return CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units.data()), units.size());
}

host::Value convert(const std::u16string &units)
{
    CFStringRef text = create(units);
    host::Value string = converted(text);
    CFRelease(text);
    return string;
}

std::string repeated(const std::string &text, int times)
{
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

class CFStringOnEveryHost : public support::InnerOnEveryHost {};

TEST_P(CFStringOnEveryHost, BecomesOneUTF8HostString)
{
    const host::LedgerMark mark = host.mark();
    host::Value string = convert(u"gr\u00FC\u00DF dich \U0001F44B");
    EXPECT_EQ(string.bytes(), "gr\u00FC\u00DF dich \U0001F44B");
    EXPECT_EQ(string.encoding(), host::kUTF8);
    EXPECT_EQ(string.lockCount(), 1);
    EXPECT_EQ(host.liveSince(mark).size(), 1u);
}

TEST_P(CFStringOnEveryHost, OfOneCharacterBecomesAStringOfOneCharacter)
{
    EXPECT_EQ(convert(u"x").bytes(), "x");
}

TEST_P(CFStringOnEveryHost, ThatIsEmptyBecomesNilWithoutACallOfTheHost)
{
    CFStringRef empty = create(u"");
    host.resetCounts();
    EXPECT_TRUE(converted(empty).isNullHandle());
    EXPECT_TRUE(converted(nullptr).isNullHandle());
    EXPECT_THAT(host.lookupLog(), IsEmpty());
    CFRelease(empty);
}

TEST_P(CFStringOnEveryHost, ComesBackAsTheSameCFString)
{
    host::Value string = convert(u"gr\u00FC\u00DF \U0001F44B");
    CFStringRef back = RBString2CFString(support::stringOf(string));
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(converted(back).equals(string));
    CFRelease(back);
}

INSTANTIATE_TEST_SUITE_P(Hosts, CFStringOnEveryHost, support::everyProfile(), support::profileTestName);

// The lengths around the change from the local buffer to the heap, in characters of every width.
struct Width {
    const char *name;
    std::u16string units;
    std::string utf8;
};

void PrintTo(const Width &width, std::ostream *out)
{
    *out << width.name;
}

class CFStringLength : public support::InnerOn2013, public ::testing::WithParamInterface<Width> {};

TEST_P(CFStringLength, MakesNoDifference)
{
    for (int length : {1, 98, 99, 100, 101, 1000}) {
        std::u16string units;
        while (units.size() + GetParam().units.size() <= size_t(length))
            units += GetParam().units;
        if (units.empty())
            continue;
        EXPECT_EQ(convert(units).bytes(), repeated(GetParam().utf8, units.size() / GetParam().units.size())) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Widths, CFStringLength,
                         ::testing::Values(Width{"OneByte", u"x", "x"}, Width{"TwoBytes", u"\u00FC", "\u00FC"},
                                           Width{"ThreeBytes", u"\u20AC", "\u20AC"},
                                           Width{"FourBytes", u"\U0001F44B", "\U0001F44B"}),
                         [](const auto &info) { return info.param.name; });

using CFStringRules = support::InnerOn2013;

TEST_F(CFStringRules, TextIsCutAtItsFirstZeroCharacter)
{
    EXPECT_EQ(convert(std::u16string(u"ab\0c", 4)).bytes(), "ab");
    EXPECT_EQ(convert(std::u16string(150, u'x') + std::u16string(u"\0c", 2)).bytes(), std::string(150, 'x'));
}

TEST_F(CFStringRules, TextThatBeginsWithAZeroCharacterBecomesNil)
{
    EXPECT_TRUE(convert(std::u16string(u"\0ab", 3)).isNullHandle());
}

TEST_F(CFStringRules, HalfASurrogatePairBecomesNil)
{
    EXPECT_TRUE(convert(u"a\xD83D").isNullHandle());
    EXPECT_TRUE(convert(std::u16string(100, u'x') + u"\xD83D").isNullHandle());
}

TEST_F(CFStringRules, IsOnlyRead)
{
    CFStringRef text = create(u"text");
    const unsigned retains = RetainCountOf(text);
    converted(text);
    EXPECT_EQ(RetainCountOf(text), retains);
    CFRelease(text);
}

// Allocations of Foundation's are in a library of its own and not seen here.
TEST_F(CFStringRules, Of99UnitsUsesNoHeapAndOf100OneBlockOfSixBytesPerUnit)
{
    {
        CFStringRef text = create(std::u16string(99, u'x'));
        Allocations allocations;
        converted(text);
        EXPECT_THAT(allocations.callocs, Each(Lt(100u))) << "only the host's records";
        CFRelease(text);
    }
    CFStringRef text = create(std::u16string(100, u'x'));
    Allocations allocations;
    converted(text);
    EXPECT_THAT(allocations.callocs, Contains(600).Times(1));
    CFRelease(text);
}

TEST_F(CFStringRules, WithoutMemoryBecomesNilSilently)
{
    CFStringRef text = create(std::u16string(100, u'x'));
    Allocations allocations;
    allocations.failCallocs();
    EXPECT_TRUE(converted(text).isNullHandle());
    CFRelease(text);
}

TEST_F(CFStringRules, OfMoreThan2GBOfUTF8BecomesNilWithoutAskingForTheMemory)
{
    CFStringRef text = CreateLengthOnlyString(0x7FFFFFFF / 6 + 1);
    Allocations allocations;
    EXPECT_TRUE(converted(text).isNullHandle());
    EXPECT_THAT(allocations.callocs, IsEmpty());
    CFRelease(text);
}

TEST_F(CFStringRules, OfANegativeLengthBecomesNil)
{
    CFStringRef text = CreateLengthOnlyString(0x80000000);
    EXPECT_TRUE(converted(text).isNullHandle());
    CFRelease(text);
}

TEST_F(CFStringRules, OutOfMemoryExceptionOfTheStringPassesThrough)
{
    CFStringRef text = create(u"text");
    host.throwWhileBuildingString(1);
    EXPECT_TRUE(converted(text).isNullHandle());
    EXPECT_TRUE(
        raisedOnce(host.takePendingExceptions(), "OutOfMemoryException", "Failed to allocate memory for a string."));
    CFRelease(text);
}

} // namespace
