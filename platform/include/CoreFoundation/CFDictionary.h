#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef struct CFDictionaryKeyCallBacks CFDictionaryKeyCallBacks;
typedef struct CFDictionaryValueCallBacks CFDictionaryValueCallBacks;

// Without call-backs the dictionary compares keys by identity, retains nothing, and takes any word, null included, as
// key and value. GNUstep's has no others: with call-backs the result is null there.
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                 const CFDictionaryKeyCallBacks *keyCallBacks,
                                                 const CFDictionaryValueCallBacks *valueCallBacks);

// These read, and the last two change, any NSDictionary too.
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key);
Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void *key, const void **value);
void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value);
void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void *key);

CF_EXTERN_C_END
