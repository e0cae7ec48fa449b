// The bytes of a host string, on hosts that hand them out and on those that do not.
#include "hostapi/held_handles.h"
#include "hostapi/services.h"
#include "hostapi/strings.h"

#include <cstdlib>
#include <cstring>

static HostEntry<RBBoolean(REALstring, uint32_t, REALstringData *)> pluginGetStringData{"PluginGetStringData"};
static HostEntry<void(REALstringData *)> pluginDisposeStringData{"PluginDisposeStringData"};
static HostEntry<const char *(REALstring)> stringGetCString{"StringGetCString"};
static HostMethod<int32_t(REALstring)> lenB{"LenB( s as string ) as integer"};

// Fills the record with a copy of the string's bytes as they are, in a block that has room for them, or for `room`
// bytes where that is more, and for the 32-bit zero behind them. The answer of malloc is not looked at:
// a host without memory for one string's bytes has no way on.
static void CopyBytes(REALstring string, int32_t room, uint32_t encoding, REALstringData *out)
{
    const int32_t length = lenB(string);
    char *copy = static_cast<char *>(malloc((length > room ? length : room) + sizeof(uint32_t)));
    const uint32_t end = 0;
    memcpy(copy, stringGetCString(string), length);
    memcpy(copy + length, &end, sizeof end);

    out->encoding = encoding;
    out->length = length;
    out->data = copy;
}

bool REALGetStringData(REALstring string, uint32_t encoding, REALstringData *out)
{
    if (auto getStringData = pluginGetStringData.get())
        return getStringData(string, encoding, out) != 0;

    const bool handsOutBytes = stringGetCString.get() != nullptr;
    const bool tellsLength = lenB.get() != nullptr; // both are looked for before either is missed
    if (!handsOutBytes || !tellsLength || !string)
        return false;

    if (encoding == kOwnBytes) {
        CopyBytes(string, out->length, encoding, out);
        return true;
    }
    if (encoding == REALGetStringEncoding(string)) {
        CopyBytes(string, 0, encoding, out);
        return true;
    }
    HeldHandles held;
    REALstring converted = held.hold(REALConvertString(string, encoding));
    if (!converted)
        return false;
    CopyBytes(converted, 0, encoding, out);
    held.release(converted);
    return true;
}

void REALDisposeStringData(REALstringData *data)
{
    if (auto disposeStringData = pluginDisposeStringData.get())
        disposeStringData(data);
    else
        free(data->data);
}
