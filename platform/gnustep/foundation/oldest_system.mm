// The accessors that the oldest systems lack, taken away where the layer plays one.

#include "platform/gnustep/foundation/replacement.h"
#include "platform/gnustep/settings.h"

#import <Foundation/Foundation.h>

static const char *const laterAccessors[] = {"doubleForKey:", "setDouble:forKey:", "URLForKey:", "setURL:forKey:"};

static BOOL (*respondsBefore)(id, SEL, SEL);

static BOOL responds(id self, SEL selector, SEL asked)
{
    for (const char *accessor : laterAccessors)
        if (sel_isEqual(asked, sel_registerName(accessor)))
            return NO;
    return respondsBefore(self, selector, asked);
}

static id notRecognized(id self, SEL selector)
{
    [self doesNotRecognizeSelector:selector];
    return nil;
}

__attribute__((constructor)) static void install()
{
    if (!platform::playsOldestSystem())
        return;
    respondsBefore = platform::replaceMethod("NSUserDefaults", "respondsToSelector:", responds);
    for (const char *accessor : laterAccessors)
        platform::replaceMethod("NSUserDefaults", accessor, notRecognized);
}
