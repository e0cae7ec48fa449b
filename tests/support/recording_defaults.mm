#include "tests/support/recording_defaults.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <map>
#include <memory>
#include <set>

namespace {

struct Script {
    std::vector<std::string> messages;
    std::map<std::string, std::string> answers; // the bytes of a result
    std::set<std::string> raising;
    std::set<std::string> throwing;
    std::set<std::string> unknown;
};

std::string formatted(const char *format, double number)
{
    char text[64];
    snprintf(text, sizeof text, format, number);
    return text;
}

std::string describe(id object);

std::string describeItems(NSArray *items)
{
    std::string text;
    for (id item in items)
        text += (text.empty() ? "" : ", ") + describe(item);
    return text;
}

std::string describe(id object)
{
    if (!object)
        return "nil";
    if ([object isKindOfClass:[NSString class]])
        return "\"" + std::string([object UTF8String]) + "\"";
    if ([object isKindOfClass:[NSURL class]])
        return "<" + std::string([[object absoluteString] UTF8String]) + ">";
    if ([object isKindOfClass:[NSArray class]])
        return "[" + describeItems(object) + "]";
    if ([object isKindOfClass:[NSDictionary class]]) {
        std::string text;
        for (id key in [[object allKeys] sortedArrayUsingSelector:@selector(compare:)])
            text += (text.empty() ? "" : ", ") + describe(key) + ": " + describe([object objectForKey:key]);
        return "{" + text + "}";
    }
    if ([object isKindOfClass:[NSData class]]) {
        std::string text;
        const unsigned char *bytes = static_cast<const unsigned char *>([object bytes]);
        for (NSUInteger i = 0; i < [object length]; i++) {
            char digits[3];
            snprintf(digits, sizeof digits, "%02x", bytes[i]);
            text += digits;
        }
        return "{" + text + "}";
    }
    return [[object description] UTF8String];
}

template <class Type>
Type argument(NSInvocation *invocation, NSInteger index)
{
    Type value;
    [invocation getArgument:&value atIndex:index];
    return value;
}

std::string describeArgument(NSInvocation *invocation, NSInteger index)
{
    switch (*[[invocation methodSignature] getArgumentTypeAtIndex:index]) {
    case '@':
        return describe(argument<id>(invocation, index));
    case 'f':
        return formatted("%.9g", argument<float>(invocation, index));
    case 'd':
        return formatted("%.17g", argument<double>(invocation, index));
    case 'c':
    case 'C':
    case 'B':
        return std::to_string(argument<signed char>(invocation, index));
    case 'q':
        return std::to_string(argument<long long>(invocation, index));
    default:
        return std::to_string(argument<int>(invocation, index));
    }
}

std::string describeMessage(NSInvocation *invocation)
{
    NSArray *parts = [NSStringFromSelector([invocation selector]) componentsSeparatedByString:@":"];
    if ([parts count] == 1)
        return [[parts objectAtIndex:0] UTF8String];
    std::string text;
    for (NSUInteger i = 0; i + 1 < [parts count]; i++) {
        text += i ? " " : "";
        text += [[parts objectAtIndex:i] UTF8String];
        text += ":" + describeArgument(invocation, i + 2);
    }
    return text;
}

} // namespace

@interface RecordingDefaultsObject : NSObject {
@public
    Script *script;
    NSMutableArray *kept; // answers that are objects
}
@end

@implementation RecordingDefaultsObject

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
    return !script->unknown.count(sel_getName(selector)) && [NSUserDefaults instancesRespondToSelector:selector];
}

- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector
{
    return [NSUserDefaults instanceMethodSignatureForSelector:selector];
}

- (void)forwardInvocation:(NSInvocation *)invocation
{
    const std::string selector = sel_getName([invocation selector]);
    script->messages.push_back(describeMessage(invocation));
    if (script->raising.count(selector))
        [NSException raise:@"NSTestException" format:@"raised by the stand-in"];
    if (script->throwing.count(selector))
        @throw @"foreign";

    const NSUInteger size = [[invocation methodSignature] methodReturnLength];
    if (size == 0)
        return;
    std::string bytes = script->answers[selector];
    bytes.resize(size);
    [invocation setReturnValue:&bytes[0]];
}

@end

static RecordingDefaultsObject *standIn(void *object)
{
    return static_cast<RecordingDefaultsObject *>(object);
}

namespace support {

RecordingDefaults::RecordingDefaults() : _object([[RecordingDefaultsObject alloc] init]) {}

RecordingDefaults::~RecordingDefaults()
{
    [standIn(_object) release];
}

void RecordingDefaults::carryIn(const host::Value &instance)
{
    *static_cast<id *>(instance.instanceData()) = [standIn(_object) retain];
}

void RecordingDefaults::answerBytes(const char *selector, const void *bytes, size_t size)
{
    standIn(_object)->script->answers[selector] = std::string(static_cast<const char *>(bytes), size);
}

void RecordingDefaults::answerObject(const char *selector, void *object)
{
    if (object)
        [standIn(_object)->kept addObject:static_cast<id>(object)];
    answer(selector, object);
}

void RecordingDefaults::answerText(const char *selector, const std::string &utf8)
{
    answerObject(selector, [[[NSString alloc] initWithBytes:utf8.data()
                                                     length:utf8.size()
                                                   encoding:NSUTF8StringEncoding] autorelease]);
}

void RecordingDefaults::answerURL(const char *selector, const std::string &text)
{
    answerObject(selector, [NSURL URLWithString:[NSString stringWithUTF8String:text.c_str()]]);
}

void RecordingDefaults::raise(const char *selector)
{
    standIn(_object)->script->raising.insert(selector);
}

void RecordingDefaults::throwForeignObject(const char *selector)
{
    standIn(_object)->script->throwing.insert(selector);
}

void RecordingDefaults::doNotRespondTo(const char *selector)
{
    standIn(_object)->script->unknown.insert(selector);
}

const std::vector<std::string> &RecordingDefaults::messages() const
{
    return standIn(_object)->script->messages;
}

void RecordingDefaults::forgetMessages()
{
    standIn(_object)->script->messages.clear();
}

int RecordingDefaults::retainCount() const
{
    return static_cast<int>([standIn(_object) retainCount]);
}

void *RecordingDefaults::object() const
{
    return _object;
}

} // namespace support
