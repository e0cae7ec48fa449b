// Classes and categories that an image defines.
#include "tests/tools/machorun/loaded_image.h"

#include <Foundation/Foundation.h>
#include <objc/runtime.h>

class Classes : public LoadedImage {};
INSTANTIATE_FOR_EVERY_IMAGE(Classes);

TEST_P(Classes, InstancesHaveTheirVariablesAndMethods)
{
    id shape = call<id>("makeShape", 21);
    EXPECT_EQ(call<int>("sidesOf", shape), 21);
    EXPECT_EQ(call<double>("sizeOf", shape), 31.5);
    EXPECT_STREQ(object_getClassName(shape), "ImageShape");
}

TEST_P(Classes, SuperReachesTheInheritedMethodOfInstanceAndClass)
{
    EXPECT_EQ(call<int>("sidesOf", call<id>("makeSquare", 4)), 10);
}

TEST_P(Classes, OwnMethodsReturnStructsOfEverySize)
{
    EXPECT_EQ(call<unsigned>("endOf", call<id>("makeShape", 3)), 12u);
    EXPECT_EQ(call<unsigned>("endOf", call<id>("makeSquare", 3)), 14u);
    EXPECT_EQ(call<float>("heightOf", call<id>("makeShape", 3)), 4.0f);
    EXPECT_EQ(call<float>("heightOf", call<id>("makeSquare", 3)), 9.0f);
}

TEST_P(Classes, ThisProcessCallsTheirMethods)
{
    NSString *text = [NSString stringWithFormat:@"%@", call<id>("makeShape", 2)];
    EXPECT_STREQ([text UTF8String], "<shape of 2>");
}

TEST_P(Classes, InstancesAreDeallocated)
{
    id innerPool = [[NSAutoreleasePool alloc] init];
    call<id>("makeShape", 1);
    call<id>("makeSquare", 1);
    [innerPool release];
    EXPECT_EQ(call<int>("deallocatedShapes"), 2);
}

TEST_P(Classes, CategoriesAddToClassesOfTheProcess)
{
    EXPECT_EQ(call<unsigned>("twiceTheLength", [NSString stringWithUTF8String:"abc"]), 6u);
    EXPECT_STREQ([call<id>("greeting") UTF8String], "hello");
    EXPECT_TRUE([@"ours" respondsToSelector:sel_registerName("imageTwiceTheLength")]);
}
