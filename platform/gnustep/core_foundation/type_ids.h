#pragma once

#include <CoreFoundation/CoreFoundation.h>

// Every type that has a number, in the order of their numbers.
#define PLATFORM_CF_TYPES(X)                                                                                           \
    X(CFURL)                                                                                                           \
    X(CFDictionary)                                                                                                    \
    X(CFString)                                                                                                        \
    X(CFNumber)                                                                                                        \
    X(CFArray)                                                                                                         \
    X(CFBoolean)                                                                                                       \
    X(CFData)                                                                                                          \
    X(CFCharacterSet)                                                                                                  \
    X(CFBundle)                                                                                                        \
    X(CFSet)                                                                                                           \
    X(CFBag)                                                                                                           \
    X(CFUUID)                                                                                                          \
    X(CFTimeZone)                                                                                                      \
    X(CFDate)                                                                                                          \
    X(CFAttributedString)                                                                                              \
    X(CFError)                                                                                                         \
    X(CTFont)                                                                                                          \
    X(CTFontCollection)                                                                                                \
    X(CTFrame)                                                                                                         \
    X(CTFramesetter)                                                                                                   \
    X(CTGlyphInfo)                                                                                                     \
    X(CTLine)                                                                                                          \
    X(CTParagraphStyle)                                                                                                \
    X(CTRun)                                                                                                           \
    X(CTTypesetter)                                                                                                    \
    X(CTRunDelegate)

namespace platform {

enum TypeID : CFTypeID {
    notAType = 0,
    otherObject = 1, // any Objective-C object that is none of the types below
#define X(name) name##Type,
    PLATFORM_CF_TYPES(X)
#undef X
};

} // namespace platform
