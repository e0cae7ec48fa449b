#include "tests/host/fixture.h"

#include <limits>
#include <unistd.h>

namespace {

using namespace host;
using host_tests::PluginFixture;

class Values : public PluginFixture {
protected:
    void SetUp() override { host.use(*Profile::named("2013.03")); }
};

TEST_F(Values, HaveTheTypeCodesOfTheHost)
{
    const std::pair<Value, int32_t> codes[] = {
        {nullptr, 0},
        {1, 2},
        {1LL, 3},
        {1u, 3},
        {1ull, 3},
        {1.0f, 4},
        {1.0, 5},
        {Value::currency(1), 6},
        {Value::date(2012, 2, 29), 7},
        {"", 8},
        {Value::nullString(), 8},
        {Value::dictionary(), 9},
        {true, 11},
        {Value::color(0xFF8800), 16},
        {Value::array(ElementType::Int32), 4098},
        {Value::array(ElementType::Int64), 4099},
        {Value::array(ElementType::Single), 4100},
        {Value::array(ElementType::Double), 4101},
        {Value::array(ElementType::Currency), 4102},
        {Value::array(ElementType::Date), 4103},
        {Value::array(ElementType::String), 4104},
        {Value::array(ElementType::Object), 4105},
        {Value::array(ElementType::Boolean), 4107},
        {Value::array(ElementType::Color), 4112},
    };
    for (const auto &[value, code] : codes) {
        EXPECT_EQ(value.varType(), code) << value.typeName();
        EXPECT_EQ(host.callGlobal("VarType", {value}).int32(), code) << value.typeName();
        EXPECT_EQ(value.boxed().property("Type").int32(), code) << value.typeName();
    }
}

TEST_F(Values, VariantsConvertThroughTheirProperties)
{
    Value variant = Value("12.75").boxed();
    EXPECT_EQ(variant.property("Int32Value").int32(), 12);
    EXPECT_EQ(variant.property("LongValue").int64(), 12);
    EXPECT_EQ(variant.property("DoubleValue").number(), 12.75);
    EXPECT_EQ(variant.property("stringvalue").text(), "12.75");
    EXPECT_TRUE(variant.property("DateValue").isNil());
    EXPECT_THROW(variant.property("Nothing"), CallError);
    EXPECT_EQ(Value(5).boxed().property("StringValue").text(), "5");
    EXPECT_EQ(Value(true).boxed().property("Int32Value").int32(), 1);
    EXPECT_EQ(Value(std::numeric_limits<double>::quiet_NaN()).boxed().property("LongValue").int64(), 0);
    Value date = Value::date(2012, 2, 29);
    EXPECT_TRUE(date.property("DateValue").sameHandle(date));
}

TEST_F(Values, EmptyAndNullStringsAreTold)
{
    EXPECT_FALSE(Value("").isNullHandle());
    EXPECT_TRUE(Value::nullString().isNullHandle());
    EXPECT_TRUE(Value::nullString().isString());
    EXPECT_EQ(Value::nullString().text(), "");
    EXPECT_TRUE(Value("").equals(Value::nullString()));
    EXPECT_TRUE(Value(static_cast<const char *>(nullptr)).isNil());
}

TEST_F(Values, StringsKeepBytesAndEncoding)
{
    Value string = Value::string(std::string("a\0b", 3), kUnknownEncoding);
    EXPECT_EQ(string.bytes().size(), 3u);
    EXPECT_EQ(string.encoding(), uint32_t(kUnknownEncoding));
    EXPECT_EQ(Value::utf16(u"\u00E4").text(), "ä");
    EXPECT_EQ(Value::string("\x8A", kMacRoman).text(), "ä");
}

TEST_F(Values, DatesFindTheRightDay)
{
    Value date = Value::date(2013, 2, 31, 23, 59, 61);
    EXPECT_EQ(date.describe(), "Date 2013-03-04 00:00:01");
    EXPECT_EQ(date.property("Day").int32(), 4);
    EXPECT_EQ(Value::date(1904, 1, 1).property("TotalSeconds").number(), 0.0);
    EXPECT_EQ(Value::date(1900, 3, 1).property("TotalSeconds").number(), -86400.0 * (365 * 4 - 59));
    Value copy = host.newInstance("Date");
    for (double seconds : {0.0, 3412581630.0, -1.0, 86399.0, 5e11, -5e10}) {
        copy.setProperty("TotalSeconds", seconds);
        EXPECT_EQ(copy.property("TotalSeconds").number(), seconds);
        EXPECT_GE(copy.property("Month").int32(), 1);
        EXPECT_LE(copy.property("Month").int32(), 12);
    }
    EXPECT_THROW(copy.setProperty("Year", "soon"), TypeError);
}

TEST_F(Values, FieldsOfADateCanBeSetInAnyOrder)
{
    Value date = Value::date(2013, 1, 31);
    date.setProperty("Month", 2);
    date.setProperty("Day", 28);
    EXPECT_EQ(date.describe(), "Date 2013-02-28 00:00:00");
}

TEST_F(Values, DictionariesCompareKeysByValue)
{
    Value dictionary = Value::dictionary({{"a", 1}, {2, "two"}, {nullptr, true}});
    EXPECT_EQ(dictionary.count(), 3);
    EXPECT_EQ(dictionary.lookup(Value::utf16(u"a")).int32(), 1);
    EXPECT_EQ(dictionary.lookup(2.0).text(), "two");
    EXPECT_TRUE(dictionary.lookup(nullptr).boolean());
    EXPECT_FALSE(dictionary.hasKey("A"));
    EXPECT_FALSE(dictionary.hasKey("2"));
    EXPECT_FALSE(dictionary.hasKey(2.5));
    Profile ignoringCase = *Profile::named("2013.03");
    ignoringCase.caseInsensitiveKeys = true;
    host.use(ignoringCase);
    EXPECT_TRUE(Value::dictionary({{"a", 1}}).hasKey("A"));
}

TEST_F(Values, DictionariesKeepTheOrderOfTheirKeys)
{
    Value dictionary = Value::dictionary({{"c", 1}, {"a", 2}, {"b", 3}});
    dictionary.put("c", 4);
    host.call(dictionary, "Remove", {"a"});
    EXPECT_EQ(dictionary.describe(), "{\"c\": 4, \"b\": 3}");
    EXPECT_EQ(dictionary.keyAt(1).text(), "b");
    EXPECT_EQ(dictionary.lookup("b").int32(), 3);
    EXPECT_EQ(host.call(dictionary, "Keys").describe(), "[\"c\", \"b\"]");
    EXPECT_EQ(host.call(dictionary, "Lookup", {"x", 9}).int32(), 9);
    EXPECT_THROW(host.call(dictionary, "Value", {"x"}), Exception);
    host.assign(dictionary, "Value", {"x"}, 5);
    EXPECT_EQ(host.call(dictionary, "Value", {"x"}).int32(), 5);
    host.call(dictionary, "Clear");
    EXPECT_EQ(dictionary.property("Count").int32(), 0);
}

TEST_F(Values, ArraysRefuseElementsOfAnotherType)
{
    Value strings = Value::strings({"a", nullptr});
    EXPECT_TRUE(strings.at(1).isNullHandle());
    EXPECT_THROW(strings.append(1), TypeError);
    EXPECT_EQ(strings.count(), 2);
    EXPECT_THROW(strings.at(2), CallError);
    strings.insert(0, "b");
    strings.removeAt(1);
    EXPECT_EQ(strings.describe(), "[\"b\", \"\"]");
    EXPECT_THROW(Value::array(ElementType::Date, {Value::dictionary()}), TypeError);
}

TEST_F(Values, EveryElementTypeRoundTrips)
{
    const std::pair<ElementType, Value> samples[] = {
        {ElementType::Int32, -5},
        {ElementType::Int64, 1LL << 40},
        {ElementType::Single, 1.5f},
        {ElementType::Double, 2.25},
        {ElementType::Boolean, true},
        {ElementType::Currency, Value::currency(1.2345)},
        {ElementType::Color, Value::color(0x123456)},
        {ElementType::String, "text"},
        {ElementType::Object, 7},
        {ElementType::Date, Value::date(2012, 2, 29)},
    };
    for (const auto &[type, sample] : samples)
        EXPECT_EQ(Value::array(type, {sample, sample}).at(1).describe(), sample.describe()) << int(type);
}

TEST_F(Values, MemoryBlocksAreBytes)
{
    Value block = Value::memoryBlock(std::string("a\0b", 3));
    EXPECT_EQ(block.bytes(), std::string("a\0b", 3));
    EXPECT_EQ(block.property("Size").int32(), 3);
    EXPECT_NE(Value::memoryBlock("").data(), nullptr);
    host.assign(block, "Byte", {1}, 255);
    EXPECT_EQ(host.call(block, "Byte", {1}).int32(), 255);
    EXPECT_EQ(host.tryCall(block, "Byte", {3}).raised.at(0).className, "OutOfBoundsException");
    EXPECT_EQ(host.newObject("MemoryBlock", {10}).property("Size").int32(), 10);
}

TEST_F(Values, FolderItemsArePathsThatNeedNotExist)
{
    Value folder = Value::folderItem("/tmp/");
    EXPECT_EQ(folder.path(), "/tmp");
    EXPECT_TRUE(folder.property("Directory").boolean());
    Value file = host.call(folder, "Child", {"not there ä"});
    EXPECT_EQ(file.property("Name").text(), "not there ä");
    EXPECT_FALSE(file.property("Exists").boolean());
    EXPECT_EQ(file.property("Parent").path(), "/tmp");
    EXPECT_TRUE(Value::folderItem("/").property("Parent").isNil());
}

TEST_F(Values, EqualityIsTheLanguages)
{
    EXPECT_TRUE(Value(1).equals(1.0));
    EXPECT_TRUE(Value(1LL << 53).equals(double(1LL << 53)));
    EXPECT_FALSE(Value((1LL << 53) + 1).equals(1LL << 53));
    EXPECT_FALSE(Value(1).equals("1"));
    EXPECT_TRUE(Value::date(2012, 1, 1).equals(Value::date(2011, 12, 32)));
    EXPECT_FALSE(Value::dictionary().equals(Value::dictionary()));
    Value not_a_number(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(not_a_number.equals(not_a_number));
}

TEST_F(Values, ResetGivesTheLockBack)
{
    Value string("abc"), second = string;
    second.reset();
    EXPECT_TRUE(second.isNil());
    EXPECT_EQ(string.lockCount(), 1);
}

TEST_F(Values, PropertiesOfAClassAreListed)
{
    std::vector<PropertyDescription> properties = host.properties("OutOfMemoryException");
    ASSERT_EQ(properties.size(), 2u);
    EXPECT_EQ(properties[0].name, "Message");
    EXPECT_TRUE(properties[0].canBeSet);
    EXPECT_FALSE(host.properties("Dictionary").at(0).canBeSet);
}

TEST_F(Values, WrongKindsAreTypeErrors)
{
    EXPECT_THROW(Value("5").int32(), TypeError);
    EXPECT_THROW(Value(5).text(), TypeError);
    EXPECT_THROW(Value(1LL << 40).int32(), TypeError);
    EXPECT_THROW(Value(0.5).int64(), TypeError);
    EXPECT_THROW(Value(-1).uint64(), TypeError);
    EXPECT_THROW(Value(5).count(), TypeError);
    EXPECT_THROW(Value(1).boolean(), TypeError);
}

} // namespace
