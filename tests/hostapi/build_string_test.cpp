// New host strings from encoded text.
#include "hostapi/services.h"
#include "hostapi/strings.h"
#include "tests/support/allocations.h"
#include "tests/support/inner_test.h"

#include <new>
#include <stdexcept>

using support::raisedOnce;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Lt;

namespace {

struct Case {
    const char *name;
    std::string bytes;
    uint32_t encoding;
    std::string built;
    uint32_t marked;
};

void PrintTo(const Case &sample, std::ostream *out)
{
    *out << sample.name;
}

std::string units16(const std::u16string &text)
{
    return {reinterpret_cast<const char *>(text.data()), 2 * text.size()};
}

std::string units32(const std::u32string &text)
{
    return {reinterpret_cast<const char *>(text.data()), 4 * text.size()};
}

constexpr uint32_t kISOLatin1 = 0x0201; // an encoding without a rule of its own

const Case kCases[] = {
    {"UTF8", "gr\u00FC\u00DF \U0001F44B", kUTF8Text, "gr\u00FC\u00DF \U0001F44B", kUTF8Text},
    {"SevenBitUTF8", "abc", kUTF8Text, "abc", kUTF8Text},
    {"ASCII", "abc", kASCIIText, "abc", kASCIIText},
    {"UTF16", units16(u"\u00E9\U0001F44B"), kUTF16Text, "\u00E9\U0001F44B", kUTF8Text},
    {"UTF32", units32(U"a\u00E9\u20AC"), kUTF32LittleEndianText, "a\u00E9\u20AC", kUTF8Text},
    {"UTF32AboveTheBasicPlaneIsCut", units32(U"\U0001F600"), kUTF32LittleEndianText, "\uF600", kUTF8Text},
    {"UTF32WithBytesLeftOver", units32(U"ab") + "xyz", kUTF32LittleEndianText, "ab", kUTF8Text},
    {"SevenBitMacRoman", "abc\x7F", kMacRomanText, "abc\x7F", kASCIIText},
    {"MacRoman", "caf\x8E", kMacRomanText, "caf\x8E", kMacRomanText},
    {"MacRomanFirstHighByte", "\x80", kMacRomanText, "\x80", kMacRomanText},
    {"SevenBitWindowsLatin1", "abc", kWindowsLatin1Text, "abc", kASCIIText},
    {"WindowsLatin1", "caf\xE9", kWindowsLatin1Text, "caf\xE9", kWindowsLatin1Text},
    {"SevenBitOwnBytes", "abc", kOwnBytes, "abc", kASCIIText},
    {"OwnBytes", "caf\xFF", kOwnBytes, "caf\xFF", kOwnBytes},
    {"SevenBitOfAnotherEncoding", "abc", kISOLatin1, "abc", kISOLatin1},
    {"TextWithAZeroByte", std::string("a\0b", 3), kUTF8Text, std::string("a\0b", 3), kUTF8Text},
};

class BuildString : public support::InnerOn2013, public ::testing::WithParamInterface<Case> {
protected:
    void SetUp() override
    {
        support::InnerOn2013::SetUp();
        host.resetCounts();
    }
    static host::Value build(const std::string &bytes, uint32_t encoding)
    {
        return build(bytes.data(), bytes.size(), encoding);
    }
    static host::Value build(const char *bytes, int64_t length, uint32_t encoding)
    {
        return support::adopted(
            [=](HeldHandles &held) { return REALBuildUnicodeString(bytes, length, encoding, held); });
    }
};

TEST_P(BuildString, GivesOneStringMarkedWithItsEncoding)
{
    const host::LedgerMark mark = host.mark();
    host::Value string = build(GetParam().bytes, GetParam().encoding);
    EXPECT_EQ(string.bytes(), GetParam().built);
    EXPECT_EQ(string.encoding(), GetParam().marked);
    EXPECT_EQ(string.lockCount(), 1);
    EXPECT_EQ(host.liveSince(mark).size(), 1u) << "what was built on the way is gone";
}

INSTANTIATE_TEST_SUITE_P(Encodings, BuildString, ::testing::ValuesIn(kCases),
                         [](const auto &info) { return info.param.name; });

class BuildStringRules : public BuildString {};

TEST_F(BuildStringRules, NoTextGivesNilWithoutACallOfTheHost)
{
    for (uint32_t encoding : {kUTF8Text, kUTF16Text, kUTF32LittleEndianText, kMacRomanText, kOwnBytes}) {
        EXPECT_TRUE(build("abc", 0, encoding).isNullHandle());
        EXPECT_TRUE(build("abc", -1, encoding).isNullHandle());
        EXPECT_TRUE(build("abc", INT64_MIN, encoding).isNullHandle());
        EXPECT_TRUE(build(nullptr, 3, encoding).isNullHandle());
    }
    EXPECT_THAT(host.lookupLog(), IsEmpty());
}

TEST_F(BuildStringRules, MoreThan2GBGivesNilWithoutACallOfTheHost)
{
    for (int64_t length : {int64_t(0x80000000), int64_t(0x100000003), INT64_MAX})
        EXPECT_TRUE(build("abc", length, kUTF8Text).isNullHandle()) << length;
    EXPECT_THAT(host.lookupLog(), IsEmpty());
}

std::vector<std::string> builtTexts;

void *noteText(const char *bytes, int32_t length)
{
    builtTexts.push_back({bytes, size_t(length)});
    return nullptr;
}

TEST_F(BuildStringRules, WideTextGoesToTheHostAsUTF16)
{
    host.replace("REALBuildString", reinterpret_cast<void *>(noteText));
    build(units16(u"ab"), kUTF16Text);
    build(units32(U"ab\U0001F600"), kUTF32LittleEndianText);
    EXPECT_THAT(builtTexts, ElementsAre(units16(u"ab"), units16(u"ab\uF600")));
}

TEST_F(BuildStringRules, LessThanOneUnitOfUTF32IsAnEmptyStringThatIsConverted)
{
    for (const char *bytes : {"a", "ab", "abc"}) {
        host.resetCounts();
        host::Value string = build(bytes, kUTF32LittleEndianText);
        EXPECT_FALSE(string.isNullHandle());
        EXPECT_EQ(string.bytes(), "");
        EXPECT_EQ(string.encoding(), kUTF8Text);
        EXPECT_EQ(host.calls("REALBuildString"), 1);
        EXPECT_EQ(host.calls("REALSetStringEncoding"), 1);
        EXPECT_EQ(host.calls("REALConvertString"), 1);
    }
}

TEST_F(BuildStringRules, UTF32ShortAndLongTextsAreTheSame)
{
    const std::string units = units32(std::u32string(300, U'\u20AC'));
    for (int length : {4, 796, 799, 800, 803, 1200}) {
        std::string expected;
        for (int i = 0; i < length / 4; i++)
            expected += "\u20AC";
        EXPECT_EQ(build(units.substr(0, length), kUTF32LittleEndianText).bytes(), expected) << length;
    }
}

TEST_F(BuildStringRules, UTF32Of799BytesIsNarrowedOnTheStackAndOf800OnTheHeap)
{
    const std::string units = units32(std::u32string(200, U'x'));
    {
        Allocations allocations;
        build(units.substr(0, 799), kUTF32LittleEndianText);
        EXPECT_THAT(allocations.callocs, Each(Lt(100u))) << "only the host's records";
    }
    Allocations allocations;
    build(units, kUTF32LittleEndianText);
    EXPECT_THAT(allocations.callocs, Contains(200 * 2 + 4).Times(1));
}

TEST_F(BuildStringRules, UTF32WithoutMemoryGivesNilSilently)
{
    Allocations allocations;
    allocations.failCallocs();
    EXPECT_TRUE(build(std::string(800, 'x').data(), 800, kUTF32LittleEndianText).isNullHandle());
    EXPECT_EQ(host.calls("REALBuildString"), 0);
}

// --- Hosts that cannot -----------------------------------------------------------------------------------------

TEST_F(BuildStringRules, StringThatTheHostDoesNotBuildIsNilAndNotMarked)
{
    for (uint32_t encoding : {kUTF8Text, kUTF16Text, kMacRomanText}) {
        host.failCreation(host::Creation::String, 1);
        EXPECT_TRUE(build("abcd", encoding).isNullHandle());
    }
    EXPECT_EQ(host.calls("REALSetStringEncoding"), 0);
    EXPECT_EQ(host.calls("REALConvertString"), 0);
}

TEST_F(BuildStringRules, HostWithoutBuildingGivesNil)
{
    host.hide("REALBuildString");
    for (uint32_t encoding : {kUTF8Text, kUTF16Text, kUTF32LittleEndianText, kMacRomanText})
        EXPECT_TRUE(build("abcd", encoding).isNullHandle());
}

TEST_F(BuildStringRules, HostWithoutConversionGivesNilForWideText)
{
    host.hide("REALConvertString");
    EXPECT_TRUE(build(units16(u"ab"), kUTF16Text).isNullHandle());
    EXPECT_TRUE(build(units32(U"ab"), kUTF32LittleEndianText).isNullHandle());
    EXPECT_EQ(host.calls("REALUnlockString"), 2) << "the UTF-16 strings";
}

TEST_F(BuildStringRules, HostWithoutMarkingBuildsAllTheSame)
{
    host.hide("REALSetStringEncoding");
    EXPECT_EQ(build("abc", kUTF8Text).bytes(), "abc");
}

void *convertNil;
void *givenToConvert;

void *convertToSample(void *string, uint32_t)
{
    givenToConvert = string;
    return convertNil;
}

TEST_F(BuildStringRules, UTF32ThatTheHostDoesNotBuildIsWhatItMakesOfNil)
{
    host::Value sample = "of nil";
    host.failCreation(host::Creation::String, 1);
    givenToConvert = this;
    convertNil = sample.handle();
    host.replace("REALConvertString", reinterpret_cast<void *>(convertToSample));
    HeldHandles held;
    EXPECT_EQ(held.keep(REALBuildUnicodeString("abcd", 4, kUTF32LittleEndianText, held)), sample.handle());
    EXPECT_EQ(givenToConvert, nullptr);
}

// --- Out of memory ----------------------------------------------------------------------------------------------

constexpr char kOutOfMemory[] = "OutOfMemoryException";
constexpr char kMessage[] = "Failed to allocate memory for a string.";

TEST_F(BuildStringRules, OutOfMemoryIsRaisedAndGivesNil)
{
    for (uint32_t encoding : {kUTF8Text, kUTF16Text, kUTF32LittleEndianText, kMacRomanText}) {
        host.throwWhileBuildingString(1);
        EXPECT_TRUE(build("abcd", encoding).isNullHandle());
        EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
    }
}

TEST_F(BuildStringRules, HostThatCanBuildNoStringAtAllRaisesOnceWithoutMessage)
{
    host.throwWhileBuildingString(1, 1000);
    EXPECT_TRUE(build("abcd", kUTF8Text).isNullHandle());
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, ""));
    EXPECT_EQ(host.calls("REALBuildString"), 2) << "the text and the message";
    host.throwWhileBuildingString(0);
}

TEST_F(BuildStringRules, OutOfMemoryIsRaisedWithItsMessageAgainLater)
{
    host.throwWhileBuildingString(1, 2);
    build("abcd", kUTF8Text);
    host.takePendingExceptions();
    host.throwWhileBuildingString(1);
    build("abcd", kUTF8Text);
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
    EXPECT_EQ(build("abcd", kUTF8Text).bytes(), "abcd");
}

int buildingsTried;

void *throwBadAllocAndThenLogicError(const char *, int32_t)
{
    if (buildingsTried++ == 0)
        throw std::bad_alloc();
    throw std::logic_error("of the host, while the message is built");
}

TEST_F(BuildStringRules, OutOfMemoryIsRaisedAgainAfterAHostThatThrewOnTheWay)
{
    host.replace("REALBuildString", reinterpret_cast<void *>(throwBadAllocAndThenLogicError));
    EXPECT_THROW(build("abcd", kUTF8Text), std::logic_error);
    host.replace("REALBuildString", nullptr);
    host.throwWhileBuildingString(1);
    EXPECT_TRUE(build("abcd", kUTF8Text).isNullHandle());
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
}

void throwBadAlloc(void *, uint32_t)
{
    throw std::bad_alloc();
}

TEST_F(BuildStringRules, OutOfMemoryWhileConvertingUnlocksWhatWasBuilt)
{
    host.replace("REALConvertString", reinterpret_cast<void *>(throwBadAlloc));
    for (uint32_t encoding : {kUTF16Text, kUTF32LittleEndianText}) {
        EXPECT_TRUE(build("abcd", encoding).isNullHandle());
        EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
    }
}

int markingsLeftToFail;

void throwBadAllocOnce(void *, uint32_t)
{
    if (markingsLeftToFail-- > 0)
        throw std::bad_alloc();
}

TEST_F(BuildStringRules, OutOfMemoryWhileMarkingUnlocksWhatWasBuilt)
{
    markingsLeftToFail = 1;
    host.replace("REALSetStringEncoding", reinterpret_cast<void *>(throwBadAllocOnce));
    EXPECT_TRUE(build("abcd", kUTF8Text).isNullHandle());
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
}

int unlockingsLeftToFail;

// The host has let go of the string when it runs out of memory.
void unlockAndThrowBadAlloc(void *string)
{
    host::Host &host = host::Host::shared();
    host.replace("REALUnlockString", nullptr);
    reinterpret_cast<void (*)(void *)>(host::Host::resolver()("REALUnlockString"))(string);
    host.replace("REALUnlockString", reinterpret_cast<void *>(unlockAndThrowBadAlloc));
    if (unlockingsLeftToFail-- > 0)
        throw std::bad_alloc();
}

TEST_F(BuildStringRules, OutOfMemoryWhileUnlockingIsRaisedAndNothingIsLeftLocked)
{
    host.replace("REALUnlockString", reinterpret_cast<void *>(unlockAndThrowBadAlloc));
    for (uint32_t encoding : {kUTF16Text, kUTF32LittleEndianText}) {
        for (int times : {1, 2}) { // while the wide string is unlocked; while the converted one is, too
            SCOPED_TRACE(testing::Message() << encoding << ", " << times);
            unlockingsLeftToFail = times;
            EXPECT_TRUE(build("abcd", encoding).isNullHandle());
            EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
            EXPECT_LT(unlockingsLeftToFail, 0) << "each was tried";
            EXPECT_THAT(host.imbalances(), IsEmpty());
        }
    }
}

TEST_F(BuildStringRules, OutOfMemoryWhileUnlockingAfterAFailureIsRaisedOnce)
{
    markingsLeftToFail = 1;
    unlockingsLeftToFail = 1;
    host.replace("REALSetStringEncoding", reinterpret_cast<void *>(throwBadAllocOnce));
    host.replace("REALUnlockString", reinterpret_cast<void *>(unlockAndThrowBadAlloc));
    EXPECT_TRUE(build("abcd", kUTF8Text).isNullHandle());
    EXPECT_TRUE(raisedOnce(host.takePendingExceptions(), kOutOfMemory, kMessage));
    EXPECT_THAT(host.imbalances(), IsEmpty());
}

void throwLogicError(void *, uint32_t)
{
    throw std::logic_error("of the host");
}

TEST_F(BuildStringRules, OtherExceptionsOfTheHostPassUnchanged)
{
    host.replace("REALBuildString", reinterpret_cast<void *>(throwLogicError));
    EXPECT_THROW(build("abcd", kUTF8Text), std::logic_error);
    host.replace("REALBuildString", nullptr);
    host.replace("REALConvertString", reinterpret_cast<void *>(throwLogicError));
    EXPECT_THROW(build("abcd", kUTF16Text), std::logic_error);
    EXPECT_THAT(host.takePendingExceptions(), IsEmpty());
}

} // namespace
