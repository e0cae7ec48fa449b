// The `NSUserDefaults` object that an instance of the class carries, and the keys that come with a call.
#pragma once

#include "bridge/exceptions/method_guard.h"
#include "bridge/strings/cf_string.h"
#include "hostapi/records.h"
#include "userdefaults/class_members.h"
#include "userdefaults/class_tables.h"

#include <Foundation/Foundation.h>

// The word of an instance that holds its NSUserDefaults object, retained once; nil while the instance is
// empty. The host says where it lies; standardUserDefaults, the finaliser and synchronize take the family's
// fixed place, which is the same.
inline NSUserDefaults **DefaultsWord(REALobject self, int32_t offset = userDefaultsClass.forSystemUse)
{
    return reinterpret_cast<NSUserDefaults **>(InstanceData(self, offset));
}

// Borrowed; may be nil, and a message to nil gives the neutral result. To be asked for when the arguments are
// converted: host code that a conversion calls may make the instance carry another object.
inline NSUserDefaults *defaultsOf(REALobject self)
{
    return *DefaultsWord(self);
}

// A key, name or text as Cocoa wants it: autoreleased; nil for a null string and for one that has no
// Cocoa form. Null and empty keys are not refused here: Cocoa answers to them.
inline NSString *textOf(REALstring string)
{
    return string ? [(NSString *)RBString2CFString(string) autorelease] : nil;
}

// A text from Cocoa as a new host string, owned by the caller; null for nil and for an empty text.
inline REALstring hostTextOf(NSString *text)
{
    return CFString2RBString((CFStringRef)text);
}
