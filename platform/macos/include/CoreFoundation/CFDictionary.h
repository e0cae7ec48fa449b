#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key);
Boolean CFDictionaryGetValueIfPresent(CFDictionaryRef dictionary, const void *key, const void **value);
void CFDictionarySetValue(CFMutableDictionaryRef dictionary, const void *key, const void *value);
void CFDictionaryRemoveValue(CFMutableDictionaryRef dictionary, const void *key);

CF_EXTERN_C_END
