// What the tests of the defaults share.
#pragma once

#include "tests/platform/support.h"

#import <Foundation/Foundation.h>

class DefaultsTest : public PlatformTest {
protected:
    NSUserDefaults *standard = [NSUserDefaults standardUserDefaults];

    // An object that has read its domains from disk just now; autoreleased.
    static NSUserDefaults *fresh() { return [[[NSUserDefaults alloc] init] autorelease]; }

    static NSString *domain() { return [[NSProcessInfo processInfo] processName]; }

    static std::string folder() { return [GSDefaultsRootForUser(NSUserName()) UTF8String]; }
    static std::string fileOf(NSString *name) { return folder() + "/" + [name UTF8String] + ".plist"; }
};

inline NSString *text(const char *utf8)
{
    return [NSString stringWithUTF8String:utf8];
}

inline std::string textOf(NSString *string)
{
    return string ? [string UTF8String] : "nil";
}
