// NSValue's structures and the host objects that stand for them, both ways.
#include "tests/bridge/crossing.h"

using host::Value;

namespace {

class ValueToVariant : public CrossingTest {
protected:
    // The four geometric classes as the family has them, or without one of them.
    void defineStructClasses(const std::string &without = {})
    {
        for (const char *name : {"NSRectKTZ", "NSSizeKTZ", "NSRangeKTZ", "NSPointKTZ"}) {
            host.removeClass(name);
            if (name != without)
                defineWrapperClass(name);
        }
    }

    template <typename Field, size_t count>
    void expectFields(const Value &object, const char *className, const Field (&fields)[count])
    {
        ASSERT_TRUE(object.isObject()) << className;
        EXPECT_EQ(object.className(), className);
        EXPECT_EQ(memcmp(object.instanceData(), fields, sizeof fields), 0) << className;
    }
};

// Every row of the table of types, and some that it does not have.
const char *const kTimeTypes[] = {
    "{?=qll}", "{?={?=qll}{?=qll}}", "{?=qiIq}", "{?={?=qiIq}{?=qiIq}}", "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}",
};
const char *const kTimeMessages[] = {
    "QTTimeValueKTZ", "QTTimeRangeValueKTZ", "CMTimeValueKTZ", "CMTimeRangeValueKTZ", "CMTimeMappingValueKTZ",
};

NSValue *valueOfType(const char *objCType)
{
    static const char bytes[256] = {};
    return [NSValue valueWithBytes:bytes objCType:objCType];
}

} // namespace

TEST_F(ValueToVariant, StructuresBecomeObjectsWithTheirFieldsInCocoasOrder)
{
    start();
    defineStructClasses();
    expectFields(toHost([NSValue valueWithRect:NSMakeRect(10, 20, 300, 400)]), "NSRectKTZ",
                 {10.0f, 20.0f, 300.0f, 400.0f});
    expectFields(toHost([NSValue valueWithSize:NSMakeSize(1.5f, -2)]), "NSSizeKTZ", {1.5f, -2.0f});
    expectFields(toHost([NSValue valueWithPoint:NSMakePoint(-7, 8.25f)]), "NSPointKTZ", {-7.0f, 8.25f});
    expectFields(toHost([NSValue valueWithRange:NSMakeRange(3, 0xFFFFFFF0u)]), "NSRangeKTZ", {3u, 0xFFFFFFF0u});
}

TEST_F(ValueToVariant, ObjectsOfTheStructureClassesBecomeValues)
{
    start();
    defineStructClasses();
    Value rect = host.newInstance("NSRectKTZ");
    const float fields[] = {10, 20, 300, 400};
    memcpy(rect.instanceData(), fields, sizeof fields);
    NSValue *rectValue = toCocoa(rect);
    EXPECT_TRUE(NSEqualRects([rectValue rectValue], NSMakeRect(10, 20, 300, 400)));

    Value size = host.newInstance("NSSizeKTZ");
    memcpy(size.instanceData(), fields, 8);
    EXPECT_TRUE(NSEqualSizes([(NSValue *)toCocoa(size) sizeValue], NSMakeSize(10, 20)));

    Value point = host.newInstance("NSPointKTZ");
    memcpy(point.instanceData(), fields + 2, 8);
    EXPECT_TRUE(NSEqualPoints([(NSValue *)toCocoa(point) pointValue], NSMakePoint(300, 400)));

    Value range = host.newInstance("NSRangeKTZ");
    const uint32_t words[] = {5, 0x80000001u};
    memcpy(range.instanceData(), words, sizeof words);
    EXPECT_TRUE(NSEqualRanges([(NSValue *)toCocoa(range) rangeValue], NSMakeRange(5, 0x80000001u)));
}

TEST_F(ValueToVariant, AStructureWithoutItsClassIsNil)
{
    start();
    const struct {
        const char *className;
        NSValue *value;
    } rows[] = {
        {"NSRectKTZ", [NSValue valueWithRect:NSMakeRect(1, 2, 3, 4)]},
        {"NSSizeKTZ", [NSValue valueWithSize:NSMakeSize(1, 2)]},
        {"NSRangeKTZ", [NSValue valueWithRange:NSMakeRange(1, 2)]},
        {"NSPointKTZ", [NSValue valueWithPoint:NSMakePoint(1, 2)]},
    };
    for (const auto &row : rows) {
        defineStructClasses(row.className);
        EXPECT_TRUE(toHost(row.value).isNil()) << row.className;
        defineStructClasses();
        EXPECT_FALSE(toHost(row.value).isNil()) << row.className;
    }
}

TEST_F(ValueToVariant, ATimeValueWithoutItsLibraryIsNil)
{
    start(profileWithBareFamily());
    for (const char *type : kTimeTypes)
        EXPECT_TRUE(toHost(valueOfType(type)).isNil()) << type;
}

// The family's object is handed on as it is, with the lock that came with it.
TEST_F(ValueToVariant, ATimeValueConvertsItself)
{
    start(profileWithBareFamily());
    defineWrapperClass("SomeTime");
    static void *answer;
    for (size_t row = 0; row < std::size(kTimeTypes); row++) {
        SCOPED_TRACE(kTimeMessages[row]);
        addMethod("NSValue", kTimeMessages[row], bodyOf([](id, SEL) -> void * { return answer; }));
        Value time = host.newInstance("SomeTime");
        answer = lockedForPlugin(time);
        Value result = toHost(valueOfType(kTimeTypes[row]));
        EXPECT_TRUE(result.sameHandle(time));
        EXPECT_EQ(time.lockCount(), 2) << "one of each Value";

        answer = nullptr;
        EXPECT_TRUE(toHost(valueOfType(kTimeTypes[row])).isNil());
    }
}

TEST_F(ValueToVariant, EveryOtherTypeIsNilAndNoLaterKindIsTried)
{
    start();
    defineWrapperClass("NSValueKTZ");
    defineWrapperClass("NSObjectKTZ");
    int somewhere = 0;
    EXPECT_TRUE(toHost([NSValue valueWithPointer:&somewhere]).isNil());
    EXPECT_TRUE(toHost([NSValue valueWithNonretainedObject:@"text"]).isNil());
    for (const char *type : {"{?=qlll}", "{_NSRange=ii}", "{_NSSize=dd}", "{_NSPoint=ffi}", "i", "{?=ii}"})
        EXPECT_TRUE(toHost(valueOfType(type)).isNil()) << type;
    EXPECT_EQ(host.creations(host::Creation::Instance), 0);
}
