#include "platform/gnustep/core_foundation/type_ids.h"

#include <CoreText/CoreText.h>

// CFErrorGetTypeID, CTFontGetTypeID and CTRunDelegateGetTypeID are in later_functions.cpp.
#define TYPE_ID(name)                                                                                                  \
    CFTypeID name##GetTypeID(void)                                                                                     \
    {                                                                                                                  \
        return platform::name##Type;                                                                                   \
    }

TYPE_ID(CFURL)
TYPE_ID(CFDictionary)
TYPE_ID(CFString)
TYPE_ID(CFNumber)
TYPE_ID(CFArray)
TYPE_ID(CFBoolean)
TYPE_ID(CFData)
TYPE_ID(CFCharacterSet)
TYPE_ID(CFBundle)
TYPE_ID(CFSet)
TYPE_ID(CFBag)
TYPE_ID(CFUUID)
TYPE_ID(CFTimeZone)
TYPE_ID(CFDate)
TYPE_ID(CFAttributedString)
TYPE_ID(CTFontCollection)
TYPE_ID(CTFrame)
TYPE_ID(CTFramesetter)
TYPE_ID(CTGlyphInfo)
TYPE_ID(CTLine)
TYPE_ID(CTParagraphStyle)
TYPE_ID(CTRun)
TYPE_ID(CTTypesetter)
