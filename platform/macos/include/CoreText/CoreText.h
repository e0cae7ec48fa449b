// Core Text is public since 10.5, so every function of it is imported weakly: on 10.4 all of them are null. They come
// from ApplicationServices, which 10.4 has too and which hands on Core Text's symbols wherever that is: inside
// ApplicationServices until 10.7, a framework of its own since 10.8. Naming CoreText.framework as the library would
// keep the plug-in from loading on the systems that have no such folder.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

CF_EXTERN_C_BEGIN

CFTypeID CTFontGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTFontCollectionGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTFrameGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTFramesetterGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTGlyphInfoGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTLineGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTParagraphStyleGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTRunGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTTypesetterGetTypeID(void) CF_WEAK_IMPORT;
CFTypeID CTRunDelegateGetTypeID(void) CF_WEAK_IMPORT;

CF_EXTERN_C_END
