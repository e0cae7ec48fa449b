// Arguments and results of messages that an image sends to objects of this process.
#include "tests/tools/machorun/loaded_image.h"

#include <Foundation/Foundation.h>

#include <climits>

class Results : public LoadedImage {};
INSTANTIATE_FOR_EVERY_IMAGE(Results);

TEST_P(Results, IntegersOfEverySize)
{
    EXPECT_EQ(call<int>("intResult", static_cast<id>([NSNumber numberWithInt:INT_MIN])), INT_MIN);
    EXPECT_EQ(call<int>("negativeIntResult"), -5);
    EXPECT_EQ(call<long long>("longLongResult", 0x123456789abcdefLL), 0x123456789abcdefLL);
    EXPECT_EQ(call<long long>("longLongResult", LLONG_MIN), LLONG_MIN);
    EXPECT_EQ(call<int>("shortResult", static_cast<id>([NSNumber numberWithShort:-2])), -2);
}

TEST_P(Results, BooleansHaveOneByte)
{
    EXPECT_EQ(call<int>("boolResult", 1), 1);
    EXPECT_EQ(call<int>("boolResult", 0), 0);
    EXPECT_EQ(call<int>("boolResult", 256), 0);
}

TEST_P(Results, FloatingPointNumbers)
{
    EXPECT_EQ(call<float>("floatResult", 2.5f), 2.5f);
    EXPECT_EQ(call<double>("doubleResult", 6.02e23), 6.02e23);
}

TEST_P(Results, StructsOfEightBytes)
{
    unsigned range[2] = {};
    call<void>("rangeResult", 3u, 4000000000u, static_cast<unsigned *>(range));
    EXPECT_EQ(range[0], 3u);
    EXPECT_EQ(range[1], 4000000000u);
    float pair[2] = {};
    function<void(float, float, float *)>("pointResult")(1.5f, -2.5f, pair);
    EXPECT_EQ(pair[0], 1.5f);
    EXPECT_EQ(pair[1], -2.5f);
    function<void(float, float, float *)>("sizeResult")(7, 8, pair);
    EXPECT_EQ(pair[0], 7);
    EXPECT_EQ(pair[1], 8);
}

TEST_P(Results, StructOfEightBytesFromAMethodWithArguments)
{
    EXPECT_EQ(call<unsigned>("placeOf", static_cast<id>(@"cd"), static_cast<id>(@"abcdef")), 2u);
    EXPECT_EQ(call<unsigned>("placeOf", static_cast<id>(@"x"), static_cast<id>(@"abcdef")), unsigned{NSNotFound});
}

TEST_P(Results, LargerStructs)
{
    float rect[4] = {};
    function<void(float, float, float, float, float *)>("rectResult")(1, 2, 3, 4, rect);
    EXPECT_EQ(rect[0], 1);
    EXPECT_EQ(rect[1], 2);
    EXPECT_EQ(rect[2], 3);
    EXPECT_EQ(rect[3], 4);
}

TEST_P(Results, VariableArguments)
{
    EXPECT_STREQ([call<id>("formatted", 5, static_cast<id>(@"x"), 0.5) UTF8String], "5-x-0.50");
}

TEST_P(Results, NilAnswersZero)
{
    EXPECT_EQ(call<int>("nilAnswersZero", static_cast<id>(nil)), 1);
    EXPECT_EQ(call<int>("nilLargeStruct", static_cast<id>(nil)), 7);
}

TEST_P(Results, NilKeepsTheFloatingPointStackInOrder)
{
    EXPECT_EQ(call<double>("sumOfNilResults", static_cast<id>(nil), 50), 50.0);
}
