#include "hostapi/exceptions.h"

#include "hostapi/holding.h"
#include "hostapi/strings.h"

#include <cstring>

template <typename NewMessage>
static void Raise(const char *className, NewMessage newMessage)
{
    holding([&](HeldHandles &held) {
        REALstring text = newMessage(held);

        REALobject exception = held.hold(REALnewInstance(className));
        if (!exception)
            exception = held.hold(REALnewInstance("RuntimeException"));

        if (exception) {
            REALSetPropValueString(exception, "Message", text);
            REALSetPropValueInt32(exception, "ErrorNumber", 0);
            REALRaiseException(exception);
            held.release(exception);
        }
        held.release(text);
    });
}

void RaiseException(const char *className, const char *message, uint32_t)
{
    Raise(className, [=](HeldHandles &held) {
        return message ? REALBuildUnicodeString(message, strlen(message), kASCIIText, held) : nullptr;
    });
}

void RaiseOutOfMemoryForString()
{
    static const char message[] = "Failed to allocate memory for a string.";
    Raise("OutOfMemoryException", [](HeldHandles &held) { return BuildASCIIOrNone(message, strlen(message), held); });
}
