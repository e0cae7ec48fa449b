// What a defaults object accepts and answers for single values, where GNUstep differs from macOS.

#include "platform/gnustep/foundation/property_lists.h"
#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>

using platform::isPropertyList;

using StringForKey = NSString *(*)(id, SEL, NSString *);
using SetObject = void (*)(id, SEL, id, NSString *);
using SetDomain = void (*)(id, SEL, NSDictionary *, NSString *);
using SetInDomain = BOOL (*)(id, SEL, id, NSString *);

static StringForKey stringBefore;
static SetObject setObjectBefore;
static SetDomain setDomainBefore;
static SetInDomain setInDomainBefore;

static NSString *stringForKey(id self, SEL selector, NSString *key)
{
    id value = [self objectForKey:key];
    return [value isKindOfClass:[NSNumber class]] ? [value stringValue] : stringBefore(self, selector, key);
}

static void requirePropertyList(id value, NSString *name)
{
    if (value && !isPropertyList(value))
        [NSException raise:NSInvalidArgumentException
                    format:@"Attempt to insert non-property value '%@' for '%@'", value, name];
}

static void setObject(id self, SEL selector, id value, NSString *key)
{
    requirePropertyList(value, key);
    setObjectBefore(self, selector, value, key);
}

static void setPersistentDomain(id self, SEL selector, NSDictionary *domain, NSString *name)
{
    requirePropertyList(domain, name);
    [self persistentDomainForName:name]; // loads it: entries not known to be there are not taken away
    setDomainBefore(self, selector, domain, name);
}

// Nothing happens when the value there is equal already, whatever its kind. To GNUstep a boolean is equal to a number,
// too: the one there goes first then.
static BOOL setInDomain(id self, SEL selector, id value, NSString *key)
{
    id there = value ? [self objectForKey:key] : nil;
    if (there && platform::areEqual(value, there))
        return NO;
    if (there && [value isEqual:there])
        setInDomainBefore(self, selector, nil, key);
    return setInDomainBefore(self, selector, value, key);
}

@interface PlatformDefaultsValues : NSObject
@end

@implementation PlatformDefaultsValues

+ (void)load
{
    stringBefore = platform::replaceMethod("NSUserDefaults", "stringForKey:", stringForKey);
    setObjectBefore = platform::replaceMethod("NSUserDefaults", "setObject:forKey:", setObject);
    setDomainBefore = platform::replaceMethod("NSUserDefaults", "setPersistentDomain:forName:", setPersistentDomain);
    setInDomainBefore = platform::replaceMethod("GSPersistentDomain", "setObject:forKey:", setInDomain);
}

@end
