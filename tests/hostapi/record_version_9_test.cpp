// The way down from the newest record layout to version 9, for every kind of member table: the class itself has methods
// only.
#include "hostapi/record_version_9.h"

#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using ::testing::ElementsAreArray;

namespace {

// `count` records of `words` words; every word is different.
std::vector<uint32_t> table(int32_t count, int32_t words, uint32_t seed)
{
    std::vector<uint32_t> all(count * words);
    for (size_t i = 0; i < all.size(); i++)
        all[i] = seed + i;
    return all;
}

// The first `narrow` words of each record.
std::vector<uint32_t> cut(const std::vector<uint32_t> &wide, int32_t words, int32_t narrow)
{
    std::vector<uint32_t> all;
    for (size_t i = 0; i < wide.size(); i++)
        if (static_cast<int32_t>(i % words) < narrow)
            all.push_back(wide[i]);
    return all;
}

std::vector<uint32_t> wordsAt(const void *address, size_t count)
{
    auto words = static_cast<const uint32_t *>(address);
    return std::vector<uint32_t>(words, words + count);
}

uint32_t word(const void *address)
{
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(address));
}

// Converts, and keeps what was made as a host does: for the life of the process.
void convert(REALclassDefinition &definition)
{
    static auto &kept = *new std::vector<REALclassDefinition>;
    ConvertToVersion9(&definition);
    kept.push_back(definition);
}

struct Kind {
    const char *name;
    const void *REALclassDefinition::*table;
    int32_t REALclassDefinition::*count;
    int32_t words, narrow;
};

void PrintTo(const Kind &kind, std::ostream *out)
{
    *out << kind.name;
}

class MemberTable : public ::testing::TestWithParam<Kind> {
protected:
    REALclassDefinition definition = {};
    const void *&records() { return definition.*GetParam().table; }
    int32_t &count() { return definition.*GetParam().count; }
};

TEST_P(MemberTable, IsCutToTheFirstWordsOfEachRecordInANewTable)
{
    const std::vector<uint32_t> source = table(3, GetParam().words, 0x1000);
    std::vector<uint32_t> wide = source;
    records() = wide.data();
    count() = 3;
    convert(definition);

    ASSERT_NE(records(), nullptr);
    EXPECT_NE(records(), wide.data());
    EXPECT_EQ(count(), 3);
    EXPECT_THAT(wordsAt(records(), 3 * GetParam().narrow),
                ElementsAreArray(cut(source, GetParam().words, GetParam().narrow)));
}

TEST_P(MemberTable, OfNoRecordsBecomesNull)
{
    std::vector<uint32_t> wide = table(1, GetParam().words, 0x1000);
    records() = wide.data();
    count() = 0;
    convert(definition);
    EXPECT_EQ(records(), nullptr);
    EXPECT_EQ(count(), 0);
}

TEST_P(MemberTable, ThatIsNullStaysNullAndItsCountIsCopied)
{
    records() = nullptr;
    count() = 5;
    convert(definition);
    EXPECT_EQ(records(), nullptr);
    EXPECT_EQ(count(), 5);
}

// A source of one record: nothing of it may be read for a table that cannot be made.
TEST_P(MemberTable, OfMoreThan2GBIsNotMade)
{
    std::vector<uint32_t> wide = table(1, GetParam().words, 0x1000);
    records() = wide.data();
    count() = INT32_MAX / (GetParam().narrow * 4) + 1;
    convert(definition);
    EXPECT_EQ(records(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, MemberTable,
    ::testing::Values(Kind{"Properties", &REALclassDefinition::properties, &REALclassDefinition::propertyCount, 12, 10},
                      Kind{"Methods", &REALclassDefinition::methods, &REALclassDefinition::methodCount, 6, 4},
                      Kind{"Events", &REALclassDefinition::events, &REALclassDefinition::eventCount, 4, 2},
                      Kind{"Constants", &REALclassDefinition::constants, &REALclassDefinition::constantCount, 5, 3},
                      Kind{"SharedMethods", &REALclassDefinition::sharedMethods,
                           &REALclassDefinition::sharedMethodCount, 6, 4},
                      Kind{"SharedProperties", &REALclassDefinition::sharedProperties,
                           &REALclassDefinition::sharedPropertyCount, 12, 10}),
    [](const auto &info) { return info.param.name; });

TEST(Events, OfTheSourcePointAtTheirCopies)
{
    std::vector<uint32_t> events = table(3, 4, 0x2000);
    const std::vector<uint32_t> before = events;
    REALclassDefinition definition = {};
    definition.events = events.data();
    definition.eventCount = 3;
    convert(definition);

    auto copies = static_cast<const uint32_t *>(definition.events);
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(events[4 * i + 1], word(copies + 2 * i));
        EXPECT_EQ(copies[2 * i + 1], before[4 * i + 1]) << "the copy has the word as it was";
        EXPECT_EQ(events[4 * i], before[4 * i]);
        EXPECT_EQ(events[4 * i + 2], before[4 * i + 2]);
        EXPECT_EQ(events[4 * i + 3], before[4 * i + 3]);
    }
}

TEST(ClassRecord, KeepsWhatVersion9HasAndDropsTheBindDescriptions)
{
    std::vector<uint32_t> words(29);
    for (size_t i = 0; i < words.size(); i++)
        words[i] = 0x100 + i;
    for (int count : {8, 10, 12, 19, 22, 24})
        words[count] = 0; // no member tables
    words[0] = 12;
    REALclassDefinition definition;
    memcpy(&definition, words.data(), sizeof definition);
    convert(definition);

    std::vector<uint32_t> expected = words;
    expected[0] = 9;
    for (int tableWord : {7, 9, 11, 18, 21, 23})
        expected[tableWord] = 0;
    expected[16] = expected[17] = 0; // bindDescriptions
    EXPECT_THAT(wordsAt(&definition, 29), ElementsAreArray(expected)) << "the last four words stay as they are";
}

TEST(FixProperties, DropsTheLastTwoWordsOfEachRecord)
{
    const std::vector<uint32_t> wide = table(2, 12, 0x3000);
    void *narrow = FixProperties(wide.data(), 2);
    ASSERT_NE(narrow, nullptr);
    EXPECT_THAT(wordsAt(narrow, 20), ElementsAreArray(cut(wide, 12, 10)));
    free(narrow);
}

TEST(FixProperties, GivesNullForNoTableAndForNoRecords)
{
    const std::vector<uint32_t> wide = table(1, 12, 0x3000);
    EXPECT_EQ(FixProperties(nullptr, 2), nullptr);
    EXPECT_EQ(FixProperties(wide.data(), 0), nullptr);
}

} // namespace
