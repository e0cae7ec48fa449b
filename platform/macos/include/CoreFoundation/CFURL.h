#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

struct FSRef;

CFURLRef CFURLCreateWithString(CFAllocatorRef allocator, CFStringRef text, CFURLRef baseURL);
CFStringRef CFURLCopyLastPathComponent(CFURLRef url);
CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef allocator, CFURLRef url);
CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url, CFStringRef component,
                                               Boolean isDirectory);
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const struct FSRef *ref);
Boolean CFURLGetFSRef(CFURLRef url, struct FSRef *ref);

CF_EXTERN_C_END
