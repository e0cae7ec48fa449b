// Aids for tests of code that uses this layer; nothing here exists on macOS.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

// Environment variable with names of CFErrorGetTypeID, CTFontGetTypeID and CTRunDelegateGetTypeID, separated by
// anything: those named have a null address in every library that is bound while the variable is set so. Set it before
// the process starts, or before the dlopen of the library in question.
#define PLATFORM_ABSENT_VARIABLE "PLATFORM_ABSENT"

CF_EXTERN_C_BEGIN

// The number of a type by its name ("CFError"), whether or not its function is absent; 0 for an unknown name.
CFTypeID PlatformTypeIDNamed(const char *typeName);

// An object of which nothing is known but its type, owned by the caller. It responds to _cfTypeID with just that
// number, so 0 and numbers that no type has work too.
CFTypeRef PlatformCreateObject(CFTypeID type);

// How many objects of PlatformCreateObject are alive.
CFIndex PlatformLiveObjects(void);

CF_EXTERN_C_END
