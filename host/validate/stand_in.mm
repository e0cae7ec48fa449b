#include "host/validate/stand_in.h"

#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>

#include <cstdio>
#include <map>

#include "host/runtime/text.h"

@interface ValidationException : NSException
@end

@implementation ValidationException
@end

namespace {

struct Script {
    std::vector<std::string> messages;
    std::map<std::string, std::string> answers; // the bytes of a result
    validate::Throwing throwing = validate::Throwing::Nothing;
};

} // namespace

@interface ValidationStandIn : NSObject {
@public
    Script *script;
    NSMutableArray *kept; // answers that are objects
}
@end

namespace validate {

static NSString *const kForeign = @"foreign to every exception";

const void *foreignObject()
{
    return kForeign;
}

void throwForCase(Throwing what)
{
    if (what == Throwing::Foreign)
        @throw kForeign;
    Class exceptionClass = what == Throwing::Subclass ? [ValidationException class] : [NSException class];
    @throw [exceptionClass exceptionWithName:[NSString stringWithUTF8String:kThrownName]
                                      reason:[NSString stringWithUTF8String:kThrownReason]
                                    userInfo:nil];
}

static std::string shownItems(NSArray *items)
{
    std::string text;
    for (id item in items)
        text += (text.empty() ? "" : ", ") + shownObjectOfCocoa(item);
    return "[" + text + "]";
}

static std::string shownEntries(NSDictionary *dictionary)
{
    std::map<std::string, std::string> sorted;
    for (id key in dictionary)
        sorted[shownObjectOfCocoa(key)] = shownObjectOfCocoa([dictionary objectForKey:key]);
    std::string text;
    for (const auto &[key, value] : sorted)
        text += (text.empty() ? "" : ", ") + key + ": " + value;
    return "{" + text + "}";
}

// Every unit beyond ASCII by its number, so that any text can be shown and none is taken for another.
static std::string shownText(NSString *string)
{
    std::string text = "\"";
    for (NSUInteger i = 0; i < [string length]; i++) {
        unichar unit = [string characterAtIndex:i];
        char escaped[8];
        snprintf(escaped, sizeof escaped, unit >= 0x20 && unit < 0x7F ? "%c" : "\\u%04X", unit);
        text += escaped;
    }
    return text + "\"";
}

static std::string shownNumber(NSNumber *number)
{
    char text[40];
    switch (*[number objCType]) {
    case 'f':
        snprintf(text, sizeof text, "single %.9g", double([number floatValue]));
        return text;
    case 'd':
        snprintf(text, sizeof text, "double %.17g", [number doubleValue]);
        return text;
    case 'c':
    case 'C':
        return [number boolValue] ? "yes" : "no";
    }
    return std::to_string([number longLongValue]);
}

std::string shownObjectOfCocoa(void *pointer)
{
    id object = static_cast<id>(pointer);
    if (!object)
        return "nil";
    if (object == [NSNull null])
        return "null";
    if ([object isKindOfClass:[NSString class]])
        return shownText(object);
    if ([object isKindOfClass:[NSNumber class]])
        return shownNumber(object);
    if ([object isKindOfClass:[NSURL class]])
        return "<" + std::string([[object absoluteString] UTF8String]) + ">";
    if ([object isKindOfClass:[NSArray class]])
        return shownItems(object);
    if ([object isKindOfClass:[NSDictionary class]])
        return shownEntries(object);
    if ([object isKindOfClass:[NSData class]])
        return "{" + host::runtime::hexadecimalOf({static_cast<const char *>([object bytes]), [object length]}) + "}";
    if ([object isKindOfClass:[NSCalendarDate class]])
        return "date " + std::string([[object descriptionWithCalendarFormat:@"%Y-%m-%d %H:%M:%S"] UTF8String]);
    if ([object isKindOfClass:[NSValue class]])
        return std::string("value ") + [object objCType];
    return class_getName([object class]);
}

template <class Type>
static Type argument(NSInvocation *invocation, NSInteger index)
{
    Type value;
    [invocation getArgument:&value atIndex:index];
    return value;
}

static std::string formatted(const char *format, double number)
{
    char text[64];
    snprintf(text, sizeof text, format, number);
    return text;
}

static std::string shownArgument(NSInvocation *invocation, NSInteger index)
{
    switch (*[[invocation methodSignature] getArgumentTypeAtIndex:index]) {
    case '@':
        return shownObjectOfCocoa(argument<id>(invocation, index));
    case 'f':
        return formatted("%.9g", argument<float>(invocation, index));
    case 'd':
        return formatted("%.17g", argument<double>(invocation, index));
    case 'c':
    case 'C':
    case 'B':
        return std::to_string(argument<signed char>(invocation, index));
    default:
        return std::to_string(argument<int>(invocation, index));
    }
}

static std::string shownMessage(NSInvocation *invocation)
{
    NSArray *parts = [NSStringFromSelector([invocation selector]) componentsSeparatedByString:@":"];
    std::string text = [[parts objectAtIndex:0] UTF8String];
    for (NSUInteger i = 0; i + 1 < [parts count]; i++) {
        if (i)
            text += " " + std::string([[parts objectAtIndex:i] UTF8String]);
        text += ":" + shownArgument(invocation, NSInteger(i) + 2);
    }
    return text;
}

} // namespace validate

@implementation ValidationStandIn

- (id)init
{
    self = [super init];
    script = new Script;
    kept = [[NSMutableArray alloc] init];
    return self;
}

- (void)dealloc
{
    delete script;
    [kept release];
    [super dealloc];
}

- (BOOL)respondsToSelector:(SEL)selector
{
    return [NSUserDefaults instancesRespondToSelector:selector];
}

- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector
{
    return [NSUserDefaults instanceMethodSignatureForSelector:selector];
}

- (void)forwardInvocation:(NSInvocation *)invocation
{
    script->messages.push_back(validate::shownMessage(invocation));
    if (script->throwing != validate::Throwing::Nothing)
        validate::throwForCase(script->throwing);
    const NSUInteger size = [[invocation methodSignature] methodReturnLength];
    if (size == 0)
        return;
    std::string bytes = script->answers[sel_getName([invocation selector])];
    bytes.resize(size);
    [invocation setReturnValue:&bytes[0]];
}

@end

namespace validate {

static ValidationStandIn *standIn(void *object)
{
    return static_cast<ValidationStandIn *>(object);
}

StandIn::StandIn() : _object([[ValidationStandIn alloc] init]) {}

StandIn::~StandIn()
{
    [standIn(_object) release];
}

void StandIn::carryIn(const host::Value &instance)
{
    *static_cast<id *>(instance.instanceData()) = [standIn(_object) retain];
}

void StandIn::answerNumber(const char *selector, const void *bytes, size_t size)
{
    standIn(_object)->script->answers[selector] = std::string(static_cast<const char *>(bytes), size);
}

void StandIn::answerObject(const char *selector, void *object)
{
    if (object)
        [standIn(_object)->kept addObject:static_cast<id>(object)];
    answerNumber(selector, &object, sizeof object);
}

static id shaped(NSString *text, AnswerShape shape)
{
    switch (shape) {
    case AnswerShape::Text:
        return text;
    case AnswerShape::InArray:
        return [NSArray arrayWithObject:text];
    case AnswerShape::AsValue:
        return [NSDictionary dictionaryWithObject:text forKey:@"key"];
    case AnswerShape::AsKey:
        return [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:1] forKey:text];
    }
    return nil;
}

void StandIn::answerText(const char *selector, AnswerShape shape, const std::u16string &units)
{
    CFStringRef text =
        CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units.data()), CFIndex(units.size()));
    answerObject(selector, shaped((NSString *)text, shape));
    CFRelease(text);
}

void StandIn::raise(Throwing what)
{
    standIn(_object)->script->throwing = what;
}

const std::vector<std::string> &StandIn::messages() const
{
    return standIn(_object)->script->messages;
}

int StandIn::retainCount() const
{
    return int([standIn(_object) retainCount]);
}

} // namespace validate
