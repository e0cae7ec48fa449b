// Structures of many levels, both ways. (One that contains itself is converted without end, so none is tried.)
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

const int kLevels = 1000;

class Depth : public CrossingTest, public testing::WithParamInterface<const char *> {
protected:
    void SetUp() override { start(GetParam()); }

    // Arrays and Dictionaries in turn, or one kind alone.
    enum Kind { Arrays, Dictionaries, Both };

    static bool isDictionary(Kind kind, int level) { return kind == Dictionaries || (kind == Both && level % 2); }

    static Value nestedValue(Kind kind)
    {
        Value value = "innermost";
        for (int level = 0; level < kLevels; level++)
            value = isDictionary(kind, level) ? Value::dictionary({{"k", value}}) : Value::variants({value});
        return value;
    }

    static void expectLevels(Kind kind, id object)
    {
        for (int level = kLevels; level-- > 0;) {
            ASSERT_EQ([object count], 1u) << level;
            object = isDictionary(kind, level) ? [object objectForKey:@"k"] : [object objectAtIndex:0];
        }
        EXPECT_TRUE([object isEqual:@"innermost"]);
    }

    static void expectLevels(Kind kind, Value value)
    {
        for (int level = kLevels; level-- > 0;) {
            ASSERT_EQ(value.count(), 1) << level;
            value = isDictionary(kind, level) ? value.lookup("k") : value.at(0);
        }
        EXPECT_EQ(value.text(), "innermost");
    }
};

INSTANTIATE_TEST_SUITE_P(Hosts, Depth, testing::Values("2011.4", "2014.1"),
                         [](const auto &info) { return std::string("Host") + std::string(info.param).substr(0, 4); });

} // namespace

TEST_P(Depth, AThousandLevelsCrossBothWays)
{
    for (Kind kind : {Arrays, Dictionaries, Both}) {
        SCOPED_TRACE(kind);
        id object = toCocoa(nestedValue(kind));
        expectLevels(kind, object);
        expectLevels(kind, toHost(object));
    }
}
