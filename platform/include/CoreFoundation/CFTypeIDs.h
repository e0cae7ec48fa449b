// The type numbers of the Core Foundation classes. Each is positive, above 1, and stays the same for the life of a
// process.
#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

CFTypeID CFURLGetTypeID(void);
CFTypeID CFDictionaryGetTypeID(void);
CFTypeID CFStringGetTypeID(void);
CFTypeID CFNumberGetTypeID(void);
CFTypeID CFArrayGetTypeID(void);
CFTypeID CFBooleanGetTypeID(void);
CFTypeID CFDataGetTypeID(void);
CFTypeID CFCharacterSetGetTypeID(void);
CFTypeID CFBundleGetTypeID(void);
CFTypeID CFSetGetTypeID(void);
CFTypeID CFBagGetTypeID(void);
CFTypeID CFUUIDGetTypeID(void);
CFTypeID CFTimeZoneGetTypeID(void);
CFTypeID CFDateGetTypeID(void);
CFTypeID CFAttributedStringGetTypeID(void);
CFTypeID CFErrorGetTypeID(void) CF_WEAK_IMPORT; // since Mac OS X 10.5

CF_EXTERN_C_END
