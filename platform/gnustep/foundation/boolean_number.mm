// A boolean number says that it holds a signed char, which is what a BOOL is on macOS; GNUstep's BOOL is unsigned.

#include "platform/gnustep/foundation/replacement.h"

#import <Foundation/Foundation.h>

static const char *objCTypeOfBoolean(id, SEL)
{
    return "c";
}

__attribute__((constructor)) static void install()
{
    platform::replaceMethod("NSBoolNumber", "objCType", objCTypeOfBoolean);
}
