#pragma once

#include <CoreFoundation/CoreFoundation.h>

// Every type that has a number, in the order of their numbers: X, or LATER for those that the oldest systems lack.
#define PLATFORM_CF_TYPES(X, LATER)                                                                                    \
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
    LATER(CFError)                                                                                                     \
    LATER(CTFont)                                                                                                      \
    X(CTFontCollection)                                                                                                \
    X(CTFrame)                                                                                                         \
    X(CTFramesetter)                                                                                                   \
    X(CTGlyphInfo)                                                                                                     \
    X(CTLine)                                                                                                          \
    X(CTParagraphStyle)                                                                                                \
    X(CTRun)                                                                                                           \
    X(CTTypesetter)                                                                                                    \
    LATER(CTRunDelegate)

namespace platform {

enum TypeID : CFTypeID {
    notAType = 0,
    otherObject = 1, // any Objective-C object that is none of the types below
#define X(name) name##Type,
    PLATFORM_CF_TYPES(X, X)
#undef X
};

} // namespace platform
