// Places inside the host's own records that this library reads or writes directly.
#pragma once

#include "hostapi/types.h"
#include "hostapi/version.h"

// The instance data of every class of the family begins behind the host's object header.
constexpr int32_t kInstanceDataOffset = 24;

// The words of an object's instance data at `offset` bytes from its start. Borrowed; `object` not null.
inline uint32_t *InstanceData(REALobject object, int32_t offset = kInstanceDataOffset)
{
    return reinterpret_cast<uint32_t *>(reinterpret_cast<char *>(object) + offset);
}

// A host string on hosts older than 2012.0. The text begins one byte behind the buffer's start: the
// first byte is the host's. The caller locks the string while it reads.
struct OldHostString {
    uint32_t hostsOwn;
    const char *buffer;
    uint32_t hostsOwnToo;
    int32_t length; // bytes of text

    const char *text() const { return buffer ? buffer + 1 : nullptr; }
};

inline const OldHostString *OldRecord(REALstring string)
{
    return reinterpret_cast<const OldHostString *>(string);
}

// The packed elements of a host array, index 0 first, or null when they must be asked for one by one:
// on hosts after 2013.9, and for an array that keeps no such block. Borrowed.
inline const void *ArrayStorage(const void *array)
{
    return HostArraysHaveStorage() ? static_cast<const void *const *>(array)[2] : nullptr;
}
