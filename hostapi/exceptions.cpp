#include "hostapi/exceptions.h"

#include "hostapi/services.h"
#include "hostapi/strings.h"

#include <cstring>

void RaiseException(const char *className, const char *message, uint32_t)
{
    REALstring text = message ? REALBuildUnicodeString(message, strlen(message), kASCIIText) : nullptr;

    REALobject exception = REALnewInstance(className);
    if (!exception)
        exception = REALnewInstance("RuntimeException");

    if (exception) {
        REALSetPropValueString(exception, "Message", text);
        REALSetPropValueInt32(exception, "ErrorNumber", 0);
        REALRaiseException(exception);
        REALUnlockObject(exception);
    }
    if (text)
        REALUnlockString(text);
}
