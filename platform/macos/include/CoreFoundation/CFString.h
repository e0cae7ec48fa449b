#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef UInt32 CFStringEncoding;

enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUTF8 = 0x08000100,
};

typedef CFIndex CFStringNormalizationForm;
enum {
    kCFStringNormalizationFormD = 0,
};

CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char *text, CFStringEncoding encoding);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *units, CFIndex length);
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength, CFStringRef string);

CFIndex CFStringGetLength(CFStringRef string);
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *units);
Boolean CFStringGetCString(CFStringRef string, char *buffer, CFIndex size, CFStringEncoding encoding);
void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

CF_EXTERN_C_END
