#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

typedef UInt32 CFStringEncoding;

#define kCFStringEncodingInvalidId (0xffffffffU)

enum {
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingISOLatin1 = 0x0201,
    kCFStringEncodingNextStepLatin = 0x0B01,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingNonLossyASCII = 0x0BFF,

    kCFStringEncodingUTF16 = 0x0100, // native byte order
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,

    kCFStringEncodingUTF32 = 0x0c000100, // native byte order
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1c000100
};

typedef CFIndex CFStringNormalizationForm;

enum {
    kCFStringNormalizationFormD = 0,
    kCFStringNormalizationFormKD,
    kCFStringNormalizationFormC,
    kCFStringNormalizationFormKC
};

// The makers return a string owned by the caller, or null when the bytes are no valid text of that encoding
// or the encoding is unknown. Units are kept as they are: a leading byte order mark is a character. Of bytes UTF-8's
// mark in front is left out; UTF-16 (an external representation only) and UTF-32 in no particular order begin with a
// mark or are big-endian; part of a unit at the end is dropped; ASCII has Latin 1's upper half.
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char *text, CFStringEncoding encoding);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8 *bytes, CFIndex length,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar *units, CFIndex length);
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator, CFIndex maxLength, CFStringRef string);

CFIndex CFStringGetLength(CFStringRef string); // UTF-16 units
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *units);

// False, with the buffer's contents undefined, when the encoding cannot express the text (UTF-8: a lone
// surrogate) or the bytes and their final zero need more than size bytes.
Boolean CFStringGetCString(CFStringRef string, char *buffer, CFIndex size, CFStringEncoding encoding);

void CFStringNormalize(CFMutableStringRef string, CFStringNormalizationForm form);

CF_EXTERN_C_END
