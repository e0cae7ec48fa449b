// NSArrays of strings as host string arrays.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

class StringArray : public CrossingTest {
protected:
    Value stringsOf(NSArray *array) { return toHostWith("stringArrayForKey", array); }
};

} // namespace

TEST_F(StringArray, StringsAreAppendedInTheirOrder)
{
    start();
    Value array = stringsOf([NSArray arrayWithObjects:@"one", @"Größe", @"\U0001F600", nil]);
    ASSERT_EQ(array.count(), 3);
    EXPECT_EQ(array.elementType(), host::ElementType::String);
    EXPECT_EQ(array.at(0).text(), "one");
    EXPECT_EQ(array.at(1).text(), "Größe");
    EXPECT_EQ(array.at(2).text(), "\U0001F600");
    for (int i = 0; i < 3; i++)
        EXPECT_EQ(array.at(i).encoding(), host::kUTF8);
}

TEST_F(StringArray, AnEmptyStringIsANullEntryInItsPlace)
{
    start();
    Value array = stringsOf([NSArray arrayWithObjects:@"", @"x", @"", nil]);
    ASSERT_EQ(array.count(), 3);
    EXPECT_TRUE(array.at(0).isNullHandle());
    EXPECT_EQ(array.at(1).text(), "x");
    EXPECT_TRUE(array.at(2).isNullHandle());
}

TEST_F(StringArray, NoArrayAndAnEmptyOneGiveAnEmptyArray)
{
    start();
    EXPECT_EQ(stringsOf(nil).count(), 0);
    EXPECT_EQ(stringsOf([NSArray array]).count(), 0);
}

TEST_F(StringArray, TheInsertProcedureIsAskedForAnewForEachElement)
{
    start();
    host.resetCounts();
    stringsOf([NSArray arrayWithObjects:@"a", @"", @"b", nil]);
    EXPECT_EQ(host.calls("RuntimeArrayDirectGetInsertProc"), 3);
}

TEST_F(StringArray, AnElementThatIsNotInsertedKeepsItsIndexFree)
{
    start();
    EXPECT_EQ(indexesWithoutTheSecondProcedure([&] { stringsOf([NSArray arrayWithObjects:@"a", @"b", @"c", nil]); }),
              (std::vector<int>{0, 2}));
}

TEST_F(StringArray, WithoutInsertProceduresItStaysEmptyAndNothingLeaks)
{
    host.hide("RuntimeArrayDirectGetInsertProc");
    start();
    EXPECT_EQ(stringsOf([NSArray arrayWithObjects:@"a", @"b", nil]).count(), 0);
}

TEST_F(StringArray, AHostWithoutArraysGivesNil)
{
    host.hide("RuntimeArrayCreateSingleDimBoundedArray");
    start();
    EXPECT_TRUE(stringsOf([NSArray arrayWithObject:@"a"]).isNil());
}
