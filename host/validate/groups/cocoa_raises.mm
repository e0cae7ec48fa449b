// Cocoa raises. Every message that a member sends is answered by an NSException, a subclass of it, and an object that
// is no exception: the first two become one line of the log and one host exception, and the call gives its neutral
// result, or an array as far as it was filled; the last one passes through as it is. The locks balance in every case.
#include "host/validate/case.h"
#include "host/validate/rows.h"

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <cstring>

namespace validate {

struct Kind {
    const char *name;
    Throwing throwing;
};

static const Kind kKinds[] = {
    {"exception", Throwing::Exception}, {"subclass", Throwing::Subclass}, {"foreign", Throwing::Foreign}};

// --- Messages of the conversions: methods that Cocoa has, replaced by one that throws once ---------------------------

static Throwing armed = Throwing::Nothing;
static int throws = 0;

static void throwOnce(id self, SEL selector)
{
    throws++;
    if (strncmp(sel_getName(selector), "init", 4) == 0)
        [self release]; // an initialiser that fails gives up what was allocated for it
    throwForCase(armed);
}

namespace {

struct Message {
    const char *className;
    const char *selector;
    bool ofClass;
    std::vector<const char *> rows; // whose calls send it
};

class Replaced {
public:
    explicit Replaced(const Message &message)
    {
        Class owner = objc_getClass(message.className);
        if (message.ofClass)
            owner = object_getClass(id(owner));
        else if (owner == [NSURL class]) // its objects may be of another class
            owner = object_getClass([NSURL URLWithString:@"http://example.com/"]);
        SEL name = sel_registerName(message.selector);
        Method found = class_getInstanceMethod(owner, name);
        expect(found, std::string("Cocoa has no method ") + message.className + " " + message.selector);
        // An inherited method gets a place of its own: other classes must go on.
        class_addMethod(owner, name, method_getImplementation(found), method_getTypeEncoding(found));
        _method = class_getInstanceMethod(owner, name);
    }
    void put() { _usual = method_setImplementation(_method, reinterpret_cast<IMP>(throwOnce)); }
    void restore() { method_setImplementation(_method, _usual); }

private:
    Method _method;
    IMP _usual = nullptr;
};

} // namespace

static const std::vector<Message> &messages()
{
    static const std::vector<Message> all = {
        {"NSUserDefaults", "standardUserDefaults", true, {"standardUserDefaults"}},
        {"NSUserDefaults", "resetStandardUserDefaults", true, {"resetStandardUserDefaults"}},
        {"NSUserDefaults", "alloc", true, {"Constructor", "Constructor-user"}},
        {"NSUserDefaults", "init", false, {"Constructor"}},
        {"NSUserDefaults", "initWithUser:", false, {"Constructor-user"}},
        {"NSNumber",
         "numberWithLong:",
         true,
         {"setVariantValue-int32", "setVariantValue-color", "setVariantValue-integers", "setVariantValue-variants",
          "setDictionaryValue", "setArrayValue", "registerDefaults", "setPersistentDomain", "setVolatileDomain"}},
        {"NSNumber", "numberWithLongLong:", true, {"setVariantValue-int64", "setVariantValue-longs"}},
        {"NSNumber", "numberWithFloat:", true, {"setVariantValue-single", "setVariantValue-singles"}},
        {"NSNumber",
         "numberWithDouble:",
         true,
         {"setVariantValue-double", "setVariantValue-currency", "setVariantValue-doubles"}},
        {"NSNumber", "numberWithBool:", true, {"setVariantValue-boolean", "setVariantValue-booleans"}},
        {"NSMutableArray",
         "array",
         true,
         {"setVariantValue-integers", "setVariantValue-strings", "setVariantValue-dates", "setVariantValue-variants"}},
        {"NSMutableArray", "arrayWithCapacity:", true, {"setStringArrayValue", "setArrayValue"}},
        {"NSData", "dataWithBytes:length:", true, {"setDataValue", "setVariantValue-memoryblock"}},
        {"NSMutableDictionary",
         "dictionaryWithCapacity:",
         true,
         {"setDictionaryValue", "registerDefaults", "setVariantValue-dictionary"}},
        {"NSTimeZone", "localTimeZone", true, {"setVariantValue-date", "setVariantValue-dates"}},
        {"NSCalendarDate",
         "dateWithYear:month:day:hour:minute:second:timeZone:",
         true,
         {"setVariantValue-date", "setVariantValue-dates"}},
        {"NSCalendarDate", "monthOfYear", false, {"variantForKey-date"}},
        {"NSURL", "absoluteString", false, {"URLForKey", "variantForKey-url"}},
    };
    return all;
}

static std::string bracketed(const std::string &text)
{
    return text.empty() ? "[]" : "[" + text + "]";
}

// What an exception on the way must look like. `result` is what the call gives then.
static void expectThrown(const Observed &observed, const World &world, Throwing throwing, const std::string &result)
{
    if (throwing == Throwing::Foreign) {
        expect(observed.thrownObject == foreignObject(), "a foreign object does not pass: " + observed.thrown);
        expectMatch(observed.raised, "[]", "exceptions raised");
        expectMatch(observed.logged, "[]", "lines logged");
        return;
    }
    World expected = world;
    expected.raiseOfCocoa(kThrownName, kThrownReason);
    expectMatch(observed.thrown, expected.thrown, "what was thrown through the plug-in");
    expectMatch(observed.raised, bracketed(expected.raised.empty() ? "" : expected.raised[0]), "exceptions raised");
    expectMatch(observed.logged, bracketed(expected.log[0]), "lines logged");
    if (expected.thrown.empty())
        expectMatch(observed.result, result, "result");
}

static void throwFromMessage(const Message &message, const Row &row, Throwing throwing)
{
    Replaced replaced(message);
    armed = throwing;
    throws = 0;
    World world;
    Observed observed = observe(
        row, world, Throwing::Nothing, [&] { replaced.put(); }, [&] { replaced.restore(); });
    expect(throws > 0, "the message is not sent");
    const host::MethodDescription &method = methodOf(row.declaration, row.isShared);
    expectThrown(observed, world, throwing, row.isAssigned ? "nil" : neutralResult(method.declaration));
    runRow(row); // and then as ever
}

} // namespace validate

// --- Answers that throw in the middle --------------------------------------------------------------------------------

// An array whose walk throws before its k-th element.
@interface ValidationArray : NSArray {
@public
    unsigned k;
    unsigned count;
    validate::Throwing throwing;
}
@end

@interface ValidationEnumerator : NSEnumerator {
@public
    ValidationArray *array;
    unsigned next;
}
@end

static NSString *elementAt(NSUInteger index)
{
    return [NSString stringWithFormat:@"e%u", unsigned(index)];
}

@implementation ValidationEnumerator
- (id)nextObject
{
    if (next == array->k)
        validate::throwForCase(array->throwing);
    return next < array->count ? elementAt(next++) : nil;
}
@end

@implementation ValidationArray
- (NSUInteger)count
{
    return count;
}
- (id)objectAtIndex:(NSUInteger)index
{
    return elementAt(index);
}
- (NSEnumerator *)objectEnumerator
{
    ValidationEnumerator *enumerator = [[[ValidationEnumerator alloc] init] autorelease];
    enumerator->array = self;
    return enumerator;
}
@end

// A dictionary whose k-th value is not to be had.
@interface ValidationDictionary : NSDictionary {
@public
    unsigned k;
    unsigned asked;
    validate::Throwing throwing;
}
@end

@implementation ValidationDictionary
- (NSUInteger)count
{
    return 3;
}
- (NSArray *)allKeys
{
    return [NSArray arrayWithObjects:@"a", @"b", @"c", nil];
}
- (id)objectForKey:(id)key
{
    if (asked++ == k)
        validate::throwForCase(throwing);
    return key;
}
- (NSEnumerator *)keyEnumerator
{
    return [[self allKeys] objectEnumerator];
}
@end

namespace validate {

static std::string shownElements(unsigned count, bool asList)
{
    if (!asList)
        return "nil";
    std::string text;
    for (unsigned i = 0; i < count; i++)
        text += (i ? ", \"e" : "\"e") + std::to_string(i) + "\"";
    return "[" + text + "]";
}

static id throwingArray(unsigned k, Throwing throwing)
{
    ValidationArray *array = [[[ValidationArray alloc] init] autorelease];
    array->k = k;
    array->count = 4;
    array->throwing = throwing;
    return array;
}

static id throwingDictionary(unsigned k, Throwing throwing)
{
    ValidationDictionary *dictionary = [[[ValidationDictionary alloc] init] autorelease];
    dictionary->k = k;
    dictionary->throwing = throwing;
    return dictionary;
}

namespace {

struct Filled {
    const char *row;
    const char *selector;
    bool asList; // the member gives what was filled; the others give nil
    id (*answer)(unsigned k, Throwing throwing);
};

} // namespace

// Inside another array and inside a dictionary, too: nothing of what was half made is left.
static id insideAnArray(unsigned k, Throwing throwing)
{
    return [NSArray arrayWithObjects:@"e0", throwingArray(k, throwing), nil];
}

static id insideADictionary(unsigned k, Throwing throwing)
{
    return [NSDictionary dictionaryWithObject:throwingDictionary(k, throwing) forKey:@"outside"];
}

static const Filled kFilled[] = {
    {"stringArrayForKey", "stringArrayForKey:", true, throwingArray},
    {"arrayForKey", "arrayForKey:", true, throwingArray},
    {"persistentDomainNames", "persistentDomainNames", true, throwingArray},
    {"volatileDomainNames", "volatileDomainNames", true, throwingArray},
    {"variantForKey-array", "objectForKey:", false, throwingArray},
    {"variantForKey-array", "objectForKey:", false, insideAnArray},
    {"variantForKey-dictionary", "objectForKey:", false, throwingDictionary},
    {"variantForKey-dictionary", "objectForKey:", false, insideADictionary},
    {"dictionaryForKey", "dictionaryForKey:", false, throwingDictionary},
    {"dictionaryForKey", "dictionaryForKey:", false, insideADictionary},
    {"dictionaryRepresentation", "dictionaryRepresentation", false, throwingDictionary},
    {"persistentDomainForName", "persistentDomainForName:", false, throwingDictionary},
    {"volatileDomainForName", "volatileDomainForName:", false, insideADictionary},
};

static void throwInTheMiddle(const Filled &filled, unsigned k, Throwing throwing)
{
    Row row = rowNamed(filled.row);
    row.answer = [&](StandIn &standIn) { standIn.answerObject(filled.selector, filled.answer(k, throwing)); };
    World world;
    Observed observed = observe(row, world, Throwing::Nothing, nullptr, nullptr);
    expectThrown(observed, world, throwing, shownElements(k, filled.asList));
}

static void addHost(const Played &played, Batches &batches)
{
    Batch batch;
    batch.prepare = [=] { startHost(played); };
    for (const Kind &kind : kKinds) {
        std::string prefix = "raises" + played.path() + kind.name + "/";
        for (const Row &row : rows())
            if (row.message)
                batch.add(prefix + "message/" + row.name, [&row, &kind] { runRow(row, {}, kind.throwing); });
        for (const Message &message : messages())
            for (const char *name : message.rows)
                batch.add(prefix + message.selector + "/" + name,
                          [&message, name, &kind] { throwFromMessage(message, rowNamed(name), kind.throwing); });
        int number = 0;
        for (const Filled &filled : kFilled) {
            number++;
            for (unsigned k = 0; k < 3; k++)
                batch.add(prefix + "middle/" + filled.row + "-" + std::to_string(number) + "/" + std::to_string(k),
                          [&filled, k, &kind] { throwInTheMiddle(filled, k, kind.throwing); });
        }
    }
    batches.push_back(std::move(batch));
}

void addCocoaRaises(const Settings &settings, Batches &batches)
{
    for (const std::string &profile : profilesAt(settings.level, {"2011.4", "2012.2", "2013.0", "2013.03"}))
        for (bool family : {true, false})
            addHost({profile, family}, batches);
}

} // namespace validate
