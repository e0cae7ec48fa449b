// Values of every kind through the general converters.
#include "bench/cases/arguments.h"

namespace bench {

namespace {

const char kSetVariant[] = "setVariantValue(key as string, value as variant)";

struct ObjectCases {
    Cases &cases;
    Ground &ground;

    void add(const std::string &what, const Value &value, id object)
    {
        get(what, object);
        const Key key("o" + what, 24);
        id ours = equalTo(object);
        addCall(cases, ground, kSetVariant, key, value.boxed()).named("set Variant: " + what).byHand([=] {
            [standard() setObject:ours forKey:key.cocoa];
        });
    }

    // Objects that the defaults take only in a volatile domain come from there.
    void get(const std::string &what, id object)
    {
        const Key key("o" + what, 24);
        [object retain];
        addCall<void *>(cases, ground, "variantForKey(key as string) as variant", key)
            .named("get Variant: " + what)
            .byHand([=] { return [standard() objectForKey:key.cocoa]; })
            .beforeEach([=] {
                if ([standard() objectForKey:key.cocoa])
                    return;
                [standard() registerDefaults:[NSDictionary dictionaryWithObject:object forKey:key.cocoa]];
            });
    }
};

} // namespace

void addObjects(Cases &cases, Ground &ground)
{
    ObjectCases objects{cases, ground};
    objects.add("integer", 77, [NSNumber numberWithInt:77]);
    objects.add("int64", 1LL << 40, [NSNumber numberWithLongLong:1LL << 40]);
    objects.add("single", 1.5f, [NSNumber numberWithFloat:1.5f]);
    objects.add("double", 2.5, [NSNumber numberWithDouble:2.5]);
    objects.add("boolean", true, [NSNumber numberWithBool:YES]);
    objects.add("text of 20 units", "twenty ASCII units ..", @"twenty ASCII units ..");
    objects.add("data of 256 bytes", Value::memoryBlock(std::string(256, 'd')),
                [NSData dataWithBytes:std::string(256, 'd').data() length:256]);
    objects.add("date", Value::date(2013, 6, 10, 12, 30),
                [NSCalendarDate dateWithYear:2013
                                       month:6
                                         day:10
                                        hour:12
                                      minute:30
                                      second:0
                                    timeZone:[NSTimeZone localTimeZone]]);
    objects.get("rectangle", [NSValue valueWithRect:NSMakeRect(10, 20, 300, 400)]);
    objects.get("an unlisted Cocoa object", [[NSLock new] autorelease]);
}

// On a host whose family cannot wrap it the object is nil to Cocoa, and the setter removes the key.
void addUnlistedHostObject(Cases &cases, Ground &ground)
{
    ground.host.defineClass({"Unlisted", "", 0, {}, {}, nullptr, nullptr});
    const Value object = ground.host.newInstance("Unlisted");
    const Key key("unlisted");
    addCall(cases, ground, kSetVariant, key, object).named("set Variant: an unlisted host object").byHand([=] {
        [standard() setObject:nil forKey:key.cocoa];
    });
    addCall(cases, ground, kSetVariant, key, Value(77).boxed()).named("set Variant: integer, beside it");
}

} // namespace bench
