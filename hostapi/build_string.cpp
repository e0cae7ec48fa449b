// New host strings from encoded text.
#include "hostapi/exceptions.h"
#include "hostapi/heap_block.h"
#include "hostapi/held_handles.h"
#include "hostapi/strings.h"
#include "hostapi/zeroed_allocation.h"

#include <cstring>
#include <new>

static inline REALstring BuildMarked(const void *bytes, int32_t length, uint32_t encoding, HeldHandles &held)
{
    REALstring string = held.hold(originalREALBuildString(static_cast<const char *>(bytes), length));
    if (string)
        REALSetStringEncoding(string, encoding);
    return string;
}

// The host makes UTF-8 of it: every string that this library builds from wide text arrives as UTF-8.
static REALstring ConvertedFromUTF16(REALstring wide, HeldHandles &held)
{
    REALstring converted = held.hold(REALConvertString(wide, kUTF8Text));
    held.release(wide);
    return converted;
}

static REALstring BuildFromUTF16(const void *bytes, int32_t length, HeldHandles &held)
{
    REALstring wide = BuildMarked(bytes, length, kUTF16Text, held);
    return wide ? ConvertedFromUTF16(wide, held) : nullptr;
}

// Each unit is cut to its low 16 bits, so a character above U+FFFF does not become a surrogate pair. That is kept as
// it has always been.
static void Narrow(const void *units, int32_t count, uint16_t *narrow)
{
    for (int32_t i = 0; i < count; i++)
        memcpy(&narrow[i], static_cast<const char *>(units) + 4 * i, sizeof narrow[i]); // the low half comes first
}

static REALstring BuildFromUTF32(const void *bytes, int32_t length, HeldHandles &held)
{
    const int32_t count = length / 4; // bytes that do not fill a unit are left out
    uint16_t local[200];
    const bool fits = length <= 799;
    const HeapBlock heap(fits ? nullptr : ZeroedAllocation(uint64_t(count) * 2 + 4));
    uint16_t *narrow = fits ? local : heap.get<uint16_t>();
    if (!narrow)
        return nullptr;

    Narrow(bytes, count, narrow);
    // Also for a string that could not be built: the answer is then what the host makes of Nil.
    return ConvertedFromUTF16(BuildMarked(narrow, count * 2, kUTF16Text, held), held);
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

static REALstring Build(const void *bytes, int32_t length, uint32_t encoding, HeldHandles &held)
{
    switch (__builtin_expect(encoding, uint32_t(kUTF8Text))) {
    case kUTF8Text: // all texts of Cocoa
        break;
    case kUTF32LittleEndianText:
        return BuildFromUTF32(bytes, length, held);
    case kUTF16Text:
        return BuildFromUTF16(bytes, length, held);
    case kMacRomanText:
    case kWindowsLatin1Text:
    case kOwnBytes:
        if (IsSevenBit(bytes, length))
            encoding = kASCIIText;
        break;
    }
    return BuildMarked(bytes, length, encoding, held);
}

// What was held on the way, without memory: unlocking may be without it, too.
static void GiveBackTo(int32_t count, HeldHandles &held)
{
    while (held.count() > count) {
        try {
            held.releaseTo(count);
        } catch (const std::bad_alloc &) {
        }
    }
}

REALstring REALBuildUnicodeString(const void *bytes, int64_t length, uint32_t encoding, HeldHandles &held)
{
    const auto size = static_cast<int32_t>(length);
    if (!bytes || size <= 0 || size != length)
        return nullptr;
    const int32_t heldBefore = held.count();
    try {
        return Build(bytes, size, encoding, held);
    } catch (const std::bad_alloc &) {
    }
    GiveBackTo(heldBefore, held);
    RaiseOutOfMemoryForString();
    return nullptr;
}

REALstring BuildASCIIOrNone(const char *text, int32_t length, HeldHandles &held)
{
    const int32_t heldBefore = held.count();
    try {
        return BuildMarked(text, length, kASCIIText, held);
    } catch (const std::bad_alloc &) {
    }
    GiveBackTo(heldBefore, held);
    return nullptr;
}
