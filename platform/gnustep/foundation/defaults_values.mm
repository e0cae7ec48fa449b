// What a defaults object accepts and answers for single values, where GNUstep differs from macOS.

#include "platform/gnustep/foundation/property_lists.h"
#include "platform/gnustep/foundation/replacement.h"
#include "platform/gnustep/settings.h"

#import <Foundation/Foundation.h>

using platform::isPropertyList;

static NSString *(*stringBefore)(id, SEL, NSString *);
static void (*setObjectBefore)(id, SEL, id, NSString *);
static void (*setDomainBefore)(id, SEL, NSDictionary *, NSString *);
static BOOL (*setInDomainBefore)(id, SEL, id, NSString *);

static NSString *stringForKey(id self, SEL selector, NSString *key)
{
    id value = [self objectForKey:key];
    return [value isKindOfClass:[NSNumber class]] ? [value stringValue] : stringBefore(self, selector, key);
}

// What is no property list raises; the oldest systems wrote a line and stored nothing.
static bool isStorable(id value, NSString *name)
{
    if (!value || isPropertyList(value))
        return true;
    NSString *complaint =
        [NSString stringWithFormat:@"Attempt to insert non-property value '%@' for '%@'", value, name];
    if (!platform::playsOldestSystem())
        [NSException raise:NSInvalidArgumentException format:@"%@", complaint];
    NSLog(@"%@", complaint);
    return false;
}

static void setObject(id self, SEL selector, id value, NSString *key)
{
    if (isStorable(value, key))
        setObjectBefore(self, selector, value, key);
}

static void setPersistentDomain(id self, SEL selector, NSDictionary *domain, NSString *name)
{
    if (!isStorable(domain, name))
        return;
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

__attribute__((constructor)) static void install()
{
    stringBefore = platform::replaceMethod("NSUserDefaults", "stringForKey:", stringForKey);
    setObjectBefore = platform::replaceMethod("NSUserDefaults", "setObject:forKey:", setObject);
    setDomainBefore = platform::replaceMethod("NSUserDefaults", "setPersistentDomain:forName:", setPersistentDomain);
    setInDomainBefore = platform::replaceMethod("GSPersistentDomain", "setObject:forKey:", setInDomain);
}
