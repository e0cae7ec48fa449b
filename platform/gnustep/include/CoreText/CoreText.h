// Of Core Text only the type numbers exist here; no object of these types is ever made but by a test.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

CF_EXTERN_C_BEGIN

CFTypeID CTFontGetTypeID(void) CF_WEAK_IMPORT; // since Mac OS X 10.5, and with it all of Core Text
CFTypeID CTFontCollectionGetTypeID(void);
CFTypeID CTFrameGetTypeID(void);
CFTypeID CTFramesetterGetTypeID(void);
CFTypeID CTGlyphInfoGetTypeID(void);
CFTypeID CTLineGetTypeID(void);
CFTypeID CTParagraphStyleGetTypeID(void);
CFTypeID CTRunGetTypeID(void);
CFTypeID CTTypesetterGetTypeID(void);
CFTypeID CTRunDelegateGetTypeID(void) CF_WEAK_IMPORT; // since Mac OS X 10.5 (public since 10.6)

CF_EXTERN_C_END
