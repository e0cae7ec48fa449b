// What the tests of text need of Objective-C.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

// An NSString that is nothing but a length, owned by the caller: for the limits of texts that no test could hold in
// memory. Asking for its characters raises.
CFStringRef CreateLengthOnlyString(uint32_t length);

unsigned RetainCountOf(CFStringRef string);
