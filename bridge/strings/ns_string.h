// The same texts as Cocoa's objects, for messages.
#pragma once

#include "bridge/strings/cf_string.h"

#include <Foundation/Foundation.h>

// A text as Cocoa wants it: autoreleased; nil for a null string and for one that has no Cocoa form.
inline NSString *TextOf(REALstring string)
{
    return string ? [(NSString *)RBString2CFString(string) autorelease] : nil;
}

// A text from Cocoa as a new host string, held; null for nil and for an empty text.
inline REALstring HostTextOf(NSString *text, HeldHandles &held)
{
    return CFString2RBString((CFStringRef)text, held);
}
