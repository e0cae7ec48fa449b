// Functions that older systems lack.
#include "tests/tools/machorun/image/exported.h"

#include <AppKit/AppKit.h>

EXPORTED unsigned long errorTypeID()
{
    return CFErrorGetTypeID ? CFErrorGetTypeID() : 0;
}
EXPORTED unsigned long fontTypeID()
{
    return CTFontGetTypeID ? CTFontGetTypeID() : 0;
}
EXPORTED unsigned long runDelegateTypeID()
{
    return CTRunDelegateGetTypeID ? CTRunDelegateGetTypeID() : 0;
}
EXPORTED unsigned long stringTypeID()
{
    return CFStringGetTypeID();
}
