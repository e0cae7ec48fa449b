// The bytes of a host string, on hosts that hand them out and on those that do not.
#include "hostapi/owners.h"
#include "hostapi/services.h"
#include "hostapi/strings.h"

#include <cstdlib>
#include <cstring>

static HostEntry<RBBoolean(REALstring, uint32_t, REALstringData *)> pluginGetStringData{"PluginGetStringData"};
static HostEntry<void(REALstringData *)> pluginDisposeStringData{"PluginDisposeStringData"};
static HostEntry<const char *(REALstring)> stringGetCString{"StringGetCString"};
static HostMethod<int32_t(REALstring)> lenB{"LenB( s as string ) as integer"};

// Fills the record with a copy of the string's bytes as they are, in a block that has room for `capacity`
// bytes of text and the 32-bit zero behind them. The answer of malloc is not looked at:
// a host without memory for one string's bytes has no way on.
static void CopyBytes(REALstring string, int32_t length, int32_t capacity, uint32_t encoding, REALstringData *out)
{
    char *copy = static_cast<char *>(malloc(capacity + sizeof(uint32_t)));
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

    if (!stringGetCString.get() || !lenB.get() || !string)
        return false;

    if (encoding == kOwnBytes) {
        CopyBytes(string, lenB(string), out->length, encoding, out); // the room is the caller's to say
        return true;
    }
    if (encoding == REALGetStringEncoding(string)) {
        const int32_t length = lenB(string);
        CopyBytes(string, length, length, encoding, out);
        return true;
    }
    const OwnedHostString converted(REALConvertString(string, encoding));
    if (!converted.get())
        return false;
    const int32_t length = lenB(converted.get());
    CopyBytes(converted.get(), length, length, encoding, out);
    return true;
}

int32_t OwnBytesCapacity(REALstring string)
{
    return pluginGetStringData.get() ? 0 : lenB(string);
}

void REALDisposeStringData(REALstringData *data)
{
    if (auto disposeStringData = pluginDisposeStringData.get())
        disposeStringData(data);
    else
        free(data->data);
}
