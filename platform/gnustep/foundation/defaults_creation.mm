// Defaults objects made with alloc and init or initWithUser: search the usual domains, as they do on macOS; GNUstep
// leaves their search list empty. A user name that the system does not know gives nil. And they leave nothing behind
// when they die: GNUstep forgets the path of their database.

#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>
#include <pwd.h>

#include <vector>

static id (*initBefore)(id, SEL, NSString *);
static id (*standardBefore)(id, SEL);
static void (*deallocBefore)(id, SEL);

// Above 0 while GNUstep makes the standard object, which gets its search list from its maker.
static thread_local int makingStandard;

static bool isKnownUser(NSString *name)
{
    if ([name isEqualToString:NSUserName()])
        return true;
    std::vector<char> buffer(16384);
    passwd entry;
    passwd *found = nullptr;
    return getpwnam_r([name UTF8String], &entry, buffer.data(), buffer.size(), &found) == 0 && found;
}

static id standardUserDefaults(id self, SEL selector)
{
    platform::initialize(self);
    ++makingStandard;
    @try {
        return standardBefore(self, selector);
    } @finally {
        --makingStandard;
    }
}

static id initWithUser(id self, SEL selector, NSString *userName)
{
    if (makingStandard)
        return initBefore(self, selector, userName);
    if (userName && !isKnownUser(userName)) {
        [self release];
        return nil;
    }
    if ((self = initBefore(self, selector, userName))) {
        NSUserDefaults *defaults = self;
        [defaults setSearchList:[[NSUserDefaults standardUserDefaults] searchList]];
        [defaults synchronize]; // reads the domains that are searched now
    }
    return self;
}

static void dealloc(id self, SEL selector)
{
    void *path = nullptr;
    object_getInstanceVariable(self, "_defaultsDatabase", &path);
    deallocBefore(self, selector);
    [static_cast<id>(path) release];
}

__attribute__((constructor)) static void install()
{
    initBefore = platform::replaceMethod("NSUserDefaults", "initWithUser:", initWithUser);
    deallocBefore = platform::replaceMethod("NSUserDefaults", "dealloc", dealloc);
    standardBefore = platform::replaceClassMethod("NSUserDefaults", "standardUserDefaults", standardUserDefaults);
}
