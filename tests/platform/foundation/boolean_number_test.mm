#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

namespace {

class BooleanNumber : public PlatformTest {};

TEST_F(BooleanNumber, SaysThatItIsASignedChar)
{
    EXPECT_STREQ("c", [[NSNumber numberWithBool:YES] objCType]);
    EXPECT_STREQ("c", [[NSNumber numberWithBool:NO] objCType]);
    EXPECT_STREQ("i", [[NSNumber numberWithInt:1] objCType]);
}

TEST_F(BooleanNumber, KeepsItsValue)
{
    signed char value = 5;
    [[NSNumber numberWithBool:YES] getValue:&value];
    EXPECT_EQ(1, value);
    EXPECT_TRUE([[NSNumber numberWithBool:YES] isEqual:[NSNumber numberWithInt:1]]);
}

TEST_F(BooleanNumber, IsStillABooleanInXML)
{
    NSData *data =
        [NSPropertyListSerialization dataFromPropertyList:[NSArray arrayWithObject:[NSNumber numberWithBool:YES]]
                                                   format:NSPropertyListXMLFormat_v1_0
                                         errorDescription:nullptr];
    NSString *text = [[[NSString alloc] initWithData:data encoding:NSUTF8StringEncoding] autorelease];
    EXPECT_NE(0u, [text rangeOfString:@"<true/>"].length);
}

TEST_F(BooleanNumber, SurvivesAnArchive)
{
    NSData *archive = [NSKeyedArchiver archivedDataWithRootObject:[NSNumber numberWithBool:YES]];
    EXPECT_TRUE([[NSKeyedUnarchiver unarchiveObjectWithData:archive] boolValue]);
}

} // namespace
