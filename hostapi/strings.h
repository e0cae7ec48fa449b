// Reading and building host strings: the string services that need more than one call of the host.
#pragma once

#include "hostapi/types.h"

class HeldHandles;

// Core Foundation's encoding numbers as the host uses them. They are our own constants because the
// names of the system's headers do not all stand for the same numbers: there UTF-32 LE is 0x1C000100.
enum HostTextEncoding : uint32_t {
    kMacRomanText = 0x0000,
    kUTF16Text = 0x0100, // in host byte order
    kWindowsLatin1Text = 0x0500,
    kASCIIText = 0x0600,
    kUTF8Text = 0x08000100,
    kUTF32LittleEndianText = 0x0C000100,
    kOwnBytes = 0xFFFF, // the host's own: the bytes as they are, whatever they mean
};

// The bytes of a host string. The last two words are the host's: nothing here reads or writes them.
struct REALstringData {
    char *data;
    int32_t length; // bytes of text, without the 32-bit zero that follows them in a copy made here
    uint32_t encoding;
    void *hostsOwn[2];
};
static_assert(sizeof(REALstringData) == 5 * 4, "the host knows this record by its layout");

// Fills `out` with the bytes of `string` in `encoding` and answers true; the caller then passes the record
// to REALDisposeStringData once. Answers false, with `out` untouched, for a null string, a host that
// cannot hand out bytes and a failed conversion. Raises nothing.
//
// `out->length` is read on entry: with kOwnBytes a copy made here gets room for that many bytes where that is more than
// the string has. Callers set it to 0 unless they want to write behind the text.
bool REALGetStringData(REALstring string, uint32_t encoding, REALstringData *out);

void REALDisposeStringData(REALstringData *data);

// A new host string from `length` bytes of text in `encoding`, held (one lock). UTF-16 and
// UTF-32 arrive in the host as UTF-8; 8-bit text of unknown meaning that is pure 7-bit is marked ASCII.
// Null for null bytes, for no bytes (an empty text gives no string), for more than 0x7FFFFFFF bytes, and
// when the host cannot build a string. A std::bad_alloc thrown by the host is raised in host code as
// "OutOfMemoryException"; other exceptions of the host pass through.
REALstring REALBuildUnicodeString(const void *bytes, int64_t length, uint32_t encoding, HeldHandles &held);

// The same for some ASCII text, but without memory nothing is raised.
REALstring BuildASCIIOrNone(const char *text, int32_t length, HeldHandles &held);
