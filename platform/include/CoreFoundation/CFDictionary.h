#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFString.h>

CF_EXTERN_C_BEGIN

typedef const void *(*CFDictionaryRetainCallBack)(CFAllocatorRef allocator, const void *value);
typedef void (*CFDictionaryReleaseCallBack)(CFAllocatorRef allocator, const void *value);
typedef CFStringRef (*CFDictionaryCopyDescriptionCallBack)(const void *value);
typedef Boolean (*CFDictionaryEqualCallBack)(const void *value1, const void *value2);
typedef CFHashCode (*CFDictionaryHashCallBack)(const void *value);

typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
    CFDictionaryHashCallBack hash;
} CFDictionaryKeyCallBacks;

typedef struct {
    CFIndex version;
    CFDictionaryRetainCallBack retain;
    CFDictionaryReleaseCallBack release;
    CFDictionaryCopyDescriptionCallBack copyDescription;
    CFDictionaryEqualCallBack equal;
} CFDictionaryValueCallBacks;

// Without call-backs the dictionary compares keys by identity, retains nothing, and takes any word, null included, as
// key and value. GNUstep's has no others: with call-backs the result is null there.
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                                 const CFDictionaryKeyCallBacks *keyCallBacks,
                                                 const CFDictionaryValueCallBacks *valueCallBacks);

// These read, and the last three change, any NSDictionary too.
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
Boolean CFDictionaryContainsKey(CFDictionaryRef dictionary, const void *key);
const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key);
Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void *key, const void **value);
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void **keys, const void **values);
void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void *key, const void *value);
void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value);
void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void *key);

CF_EXTERN_C_END
