// Arrays, Dictionaries, data and dates between a host program and GNUstep's own tools, which nobody here wrote: the
// `defaults` command and `pldes`, which describes a property list's file.
#include "ground.h"
#include "tests/interchange/tools.h"
#include "tests/support/host_test.h"

using host::Value;
using interchange::onOneLine;
using interchange::outputOf;
using interchange::quoted;

namespace {

// The name of the test program, under which Foundation keeps its defaults.
const char kDomain[] = "interchange_tests";

std::string defaultsFolder()
{
    return outputOf("sed -n 's/^GNUSTEP_USER_DEFAULTS_DIR=\"\\(.*\\)\"$/\\1/p' \"$GNUSTEP_CONFIG_FILE\" | tr -d '\\n'");
}

class InterchangeOfValues : public support::BlackBoxOn2013 {
protected:
    void SetUp() override
    {
        support::BlackBoxOn2013::SetUp();
        defaults = standardUserDefaults();
    }

    void TearDown() override
    {
        defaults = Value();
        support::BlackBoxOn2013::TearDown();
    }

    // What `defaults read` prints for a value that the host program stored.
    std::string toolReads(const char *setter, const Value &value)
    {
        host.call(defaults, setter, {"Key", value});
        EXPECT_TRUE(host.call(defaults, "synchronize").boolean());
        const std::string line =
            onOneLine(outputOf(std::string(kDefaultsTool) + " read " + kDomain + " Key 2>/dev/null"));
        const std::string start = std::string(kDomain) + " Key ";
        return line.compare(0, start.size(), start) == 0 ? line.substr(start.size()) : line;
    }

    void toolWrites(const std::string &text)
    {
        outputOf(std::string(kDefaultsTool) + " write " + kDomain + " Key " + quoted(text) + " 2>/dev/null");
        EXPECT_TRUE(host.call(defaults, "synchronize").boolean());
    }

    Value get(const char *getter) { return host.call(defaults, getter, {"Key"}); }

    Value defaults;
};

} // namespace

TEST_F(InterchangeOfValues, TheToolReadsArraysOfTheHost)
{
    EXPECT_EQ(toolReads("setStringArrayValue", Value::strings({"one", "two words", ""})),
              "'( one, \"two words\", \"\" )'");
    Value mixed = Value::variants({1, true, 0.5, Value::strings({"inner"}), Value::variants({})});
    EXPECT_EQ(toolReads("setArrayValue", mixed), "'( 1, 1, \"0.5\", ( inner ), ( ) )'");
    EXPECT_EQ(toolReads("setVariantValue", Value::array(host::ElementType::Int64, {1ll, 4294967301ll})),
              "'( 1, 4294967301 )'");
}

TEST_F(InterchangeOfValues, TheToolReadsDictionariesOfTheHost)
{
    Value window = Value::dictionary({{"frame", Value::variants({0, 0, 800, 600})}, {"title", "Main"}});
    EXPECT_EQ(toolReads("setDictionaryValue", window), "'{ frame = ( 0, 0, 800, 600 ); title = Main; }'");
    EXPECT_EQ(toolReads("setVariantValue", Value::dictionary({{"inner", Value::dictionary()}})), "'{ inner = { }; }'");
}

TEST_F(InterchangeOfValues, TheToolReadsDataOfTheHost)
{
    EXPECT_EQ(toolReads("setDataValue", Value::memoryBlock(std::string("\x00\xFF\x10", 3))), "<00ff10>");
}

TEST_F(InterchangeOfValues, TheToolReadsDatesOfTheHost)
{
    EXPECT_EQ(toolReads("setVariantValue", Value::date(2012, 2, 29, 10, 20, 30)), "'2012-02-29 10:20:30 +0000'");
}

TEST_F(InterchangeOfValues, TheHostReadsArraysOfTheTool)
{
    toolWrites("(one, \"two words\", (3, <*I4>), <*R0.5>, <*BY>)");
    Value array = get("arrayForKey");
    ASSERT_EQ(array.count(), 5);
    EXPECT_EQ(array.at(0).text(), "one");
    EXPECT_EQ(array.at(1).text(), "two words");
    EXPECT_EQ(array.at(2).at(0).text(), "3");
    EXPECT_TRUE(array.at(2).at(1).equals(4));
    EXPECT_EQ(array.at(3).kind(), Value::Kind::Double);
    EXPECT_EQ(array.at(4).kind(), Value::Kind::Boolean);
    toolWrites("(b, a)");
    Value strings = get("stringArrayForKey");
    ASSERT_EQ(strings.count(), 2);
    EXPECT_EQ(strings.at(0).text(), "b");
}

TEST_F(InterchangeOfValues, TheHostReadsDictionariesOfTheTool)
{
    toolWrites("{frame = (<*I0>, <*I0>, <*I800>, <*I600>); title = \"Gr\\U00f6\\U00dfe\"; inner = {}; }");
    Value dictionary = get("dictionaryForKey");
    ASSERT_EQ(dictionary.count(), 3);
    EXPECT_EQ(dictionary.lookup("frame").at(2).int32(), 800);
    EXPECT_EQ(dictionary.lookup("title").text(), "Größe");
    EXPECT_EQ(dictionary.lookup("inner").count(), 0);
}

TEST_F(InterchangeOfValues, TheHostReadsDataOfTheTool)
{
    toolWrites("<00ff 10>");
    EXPECT_EQ(get("dataForKey").bytes(), std::string("\x00\xFF\x10", 3));
    EXPECT_EQ(get("variantForKey").bytes(), std::string("\x00\xFF\x10", 3));
}

TEST_F(InterchangeOfValues, TheHostReadsDatesOfTheTool)
{
    toolWrites("<*D2012-02-29 10:20:30 +0000>");
    EXPECT_TRUE(get("variantForKey").equals(Value::date(2012, 2, 29, 10, 20, 30))) << get("variantForKey").describe();
}

TEST_F(InterchangeOfValues, AToolThatKnowsFilesAloneReadsTheHostsFile)
{
    Value everything = Value::dictionary({
        {"data", Value::memoryBlock(std::string("\x00\xFF\x10", 3))},
        {"date", Value::date(2012, 2, 29, 10, 20, 30)},
        {"list", Value::variants({1, "x", Value::dictionary({{"k", "v"}})})},
    });
    host.call(defaults, "setDictionaryValue", {"Key", everything});
    host.call(defaults, "synchronize");
    const std::string file = defaultsFolder() + "/" + kDomain + ".plist";
    EXPECT_EQ(onOneLine(outputOf(std::string(kSysroot) + "/usr/bin/pldes " + quoted(file))),
              "{ Key = { data = <00ff10>; date = \"2012-02-29 10:20:30 +0000\"; list = ( 1, x, { k = v; } ); }; }");
}
