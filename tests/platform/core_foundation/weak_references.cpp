// A library that refers weakly to the later functions, as a plug-in does.

#include <CoreText/CoreText.h>

#include <string.h>

extern "C" void *addressSeen(const char *name)
{
    if (strcmp(name, "CFErrorGetTypeID") == 0)
        return reinterpret_cast<void *>(CFErrorGetTypeID);
    if (strcmp(name, "CTFontGetTypeID") == 0)
        return reinterpret_cast<void *>(CTFontGetTypeID);
    return reinterpret_cast<void *>(CTRunDelegateGetTypeID);
}
