#include "bridge/strings/cf_string.h"

#include "hostapi/heap_block.h"
#include "hostapi/held_handles.h"
#include "hostapi/records.h"
#include "hostapi/services.h"
#include "hostapi/strings.h"
#include "hostapi/zeroed_allocation.h"

#include <cstring>

// Null text gives null: Core Foundation is not asked what it makes of that.
static CFStringRef CreateFromBytes(const char *text, int32_t length, uint32_t encoding)
{
    if (!text)
        return nullptr;
    if (encoding == kUTF16Text)
        return CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(text), length / 2);
    return CFStringCreateWithCString(nullptr, text, encoding);
}

static CFStringRef CreateFromHandedOutBytes(REALstring string, uint32_t encoding)
{
    REALstringData data;
    data.length = 0; // no more room than the text needs
    if (!REALGetStringData(string, kOwnBytes, &data))
        return nullptr;
    CFStringRef text = CreateFromBytes(data.data, data.length, encoding);
    REALDisposeStringData(&data);
    return text;
}

static CFStringRef CreateFromOldRecord(REALstring string, uint32_t encoding)
{
    REALLockString(string);
    const OldHostString *record = OldRecord(string);
    CFStringRef text = CreateFromBytes(record->text(), record->length, encoding);
    REALUnlockString(string);
    return text;
}

CFStringRef RBString2CFString(REALstring string)
{
    if (!string)
        return nullptr;

    if (HostHandsOutStringBytes()) {
        if (CFStringRef text = REALCopyStringCFString(string))
            return text;
    }
    if (CFStringRef text = REALGetStringCFString(string, 0))
        return text;

    uint32_t encoding = REALGetStringEncoding(string);
    if (encoding == kOwnBytes)
        encoding = kMacRomanText;
    return HostHandsOutStringBytes() ? CreateFromHandedOutBytes(string, encoding)
                                     : CreateFromOldRecord(string, encoding);
}

// `buffer` has room for `size` bytes, the terminating zero among them.
static REALstring BuildFromUTF8(CFStringRef text, char *buffer, CFIndex size, HeldHandles &held)
{
    if (!CFStringGetCString(text, buffer, size, kUTF8Text))
        return nullptr;
    return REALBuildUnicodeString(buffer, strlen(buffer), kUTF8Text, held);
}

REALstring CFString2RBString(CFStringRef text, HeldHandles &held)
{
    if (!text)
        return nullptr;
    const CFIndex length = CFStringGetLength(text);
    if (length <= 0)
        return nullptr;

    if (length <= 99) { // at most 297 bytes of UTF-8
        char local[601] = {};
        return BuildFromUTF8(text, local, 600, held);
    }
    const uint32_t size = static_cast<uint32_t>(length) * 6;
    const HeapBlock heap(ZeroedAllocation(size));
    return heap.get<char>() ? BuildFromUTF8(text, heap.get<char>(), size, held) : nullptr;
}
