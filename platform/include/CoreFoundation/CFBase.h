#pragma once

#include <MacTypes.h>

#ifdef __cplusplus
#define CF_EXTERN_C_BEGIN extern "C" {
#define CF_EXTERN_C_END }
#else
#define CF_EXTERN_C_BEGIN
#define CF_EXTERN_C_END
#endif

// A function that older systems lack: its address is null in a process that does not have it. On ELF, code that takes
// the address must be position independent, otherwise the linker may supply one of its own.
#ifdef __MACH__
#define CF_WEAK_IMPORT __attribute__((weak_import))
#else
#define CF_WEAK_IMPORT __attribute__((weak))
#endif

CF_EXTERN_C_BEGIN

typedef unsigned long CFTypeID;
typedef signed long CFIndex;

// On GNUstep every reference is an Objective-C object, and the default allocator, null, the only one.
typedef const void *CFTypeRef;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef const struct __CFString *CFStringRef;
typedef struct __CFString *CFMutableStringRef;
typedef const struct __CFURL *CFURLRef;
typedef const struct __CFDictionary *CFDictionaryRef;
typedef struct __CFDictionary *CFMutableDictionaryRef;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length)
{
    CFRange range = {location, length};
    return range;
}

extern const CFAllocatorRef kCFAllocatorDefault;

CFTypeRef CFRetain(CFTypeRef object);   // returns its argument, which must not be null
void CFRelease(CFTypeRef object);       // the argument must not be null
CFTypeID CFGetTypeID(CFTypeRef object); // 1 for an object that is none of Core Foundation's

CF_EXTERN_C_END
