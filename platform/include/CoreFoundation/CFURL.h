#pragma once

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFString.h>

CF_EXTERN_C_BEGIN

struct FSRef; // CoreServices/Files.h

// Null for a null text and for one with characters that no URL may hold (RFC 2396, with "[" and "]" allowed, one "#" at
// most, and two hexadecimal digits behind every "%"); the empty text makes a URL. Brackets that do not enclose a host
// are escaped.
CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef baseURL);

CFStringRef CFURLCopyLastPathComponent(CFURLRef url); // without percent escapes; "/" for a root, "" without a path

CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef allocator, CFURLRef url);
CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url, CFStringRef component,
                                               Boolean isDirectory);

CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const struct FSRef *ref);
Boolean CFURLGetFSRef(CFURLRef url, struct FSRef *ref); // false unless the item exists; a link is not followed

CF_EXTERN_C_END
