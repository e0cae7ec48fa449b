// New host strings from encoded text.
#include "hostapi/exceptions.h"
#include "hostapi/owners.h"
#include "hostapi/services.h"
#include "hostapi/strings.h"
#include "hostapi/zeroed_allocation.h"

#include <cstring>
#include <new>

static REALstring BuildMarked(const void *bytes, int32_t length, uint32_t encoding)
{
    OwnedHostString string(originalREALBuildString(static_cast<const char *>(bytes), length));
    if (string.get())
        REALSetStringEncoding(string.get(), encoding);
    return string.release();
}

// The host makes UTF-8 of it: every string that this library builds from wide text arrives as UTF-8.
static REALstring BuildFromUTF16(const void *bytes, int32_t length)
{
    const OwnedHostString wide(BuildMarked(bytes, length, kUTF16Text));
    return wide.get() ? REALConvertString(wide.get(), kUTF8Text) : nullptr;
}

// Each unit is cut to its low 16 bits, so a character above U+FFFF does not become a surrogate pair. That
// is kept: texts stored so are compared with texts built so.
static void Narrow(const void *units, int32_t count, uint16_t *narrow)
{
    for (int32_t i = 0; i < count; i++)
        memcpy(&narrow[i], static_cast<const char *>(units) + 4 * i, sizeof narrow[i]); // the low half comes first
}

static REALstring BuildFromUTF32(const void *bytes, int32_t length)
{
    const int32_t count = length / 4; // bytes that do not fill a unit are left out
    uint16_t local[200];
    const bool fits = length <= 799;
    const HeapBlock heap(fits ? nullptr : ZeroedAllocation(uint64_t(count) * 2 + 4));
    uint16_t *narrow = fits ? local : heap.get<uint16_t>();
    if (!narrow)
        return nullptr;

    Narrow(bytes, count, narrow);
    const OwnedHostString wide(BuildMarked(narrow, count * 2, kUTF16Text));
    // Also for a string that could not be built: the answer is then what the host makes of Nil.
    return REALConvertString(wide.get(), kUTF8Text);
}

static bool IsSevenBit(const void *bytes, int32_t length)
{
    auto text = static_cast<const unsigned char *>(bytes);
    for (int32_t i = 0; i < length; i++) {
        if (text[i] & 0x80)
            return false;
    }
    return true;
}

static REALstring Build(const void *bytes, int32_t length, uint32_t encoding)
{
    switch (encoding) {
    case kUTF32LittleEndianText:
        return BuildFromUTF32(bytes, length);
    case kUTF16Text:
        return BuildFromUTF16(bytes, length);
    case kMacRomanText:
    case kWindowsLatin1Text:
    case kOwnBytes:
        return BuildMarked(bytes, length, IsSevenBit(bytes, length) ? uint32_t(kASCIIText) : encoding);
    default:
        return BuildMarked(bytes, length, encoding);
    }
}

// The exception's message is a host string too. When that cannot be built for the same reason, the
// exception goes without one, instead of raising another exception about it.
static void RaiseOutOfMemory()
{
    static bool raising = false;
    if (raising)
        return;
    struct Once { // also when the host throws on the way
        Once() { raising = true; }
        ~Once() { raising = false; }
    } const once;
    RaiseException("OutOfMemoryException", "Failed to allocate memory for a string.", 0);
}

REALstring REALBuildUnicodeString(const void *bytes, int64_t length, uint32_t encoding)
{
    if (!bytes || length <= 0 || length > INT32_MAX)
        return nullptr;
    try {
        return Build(bytes, static_cast<int32_t>(length), encoding);
    } catch (const std::bad_alloc &) {
        RaiseOutOfMemory();
        return nullptr;
    }
}
