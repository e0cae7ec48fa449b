// What stands behind every handle: the record that plug-ins see, and the host's account of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/ledger.h"

namespace host::runtime {

struct Handle {
    Handle(HandleKind kind, size_t recordSize);
    virtual ~Handle();
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;

    virtual std::string what() const = 0;
    // Runs before the handle is taken out of the ledger; code of a plug-in may be called.
    virtual void finalise() {}

    void *record; // zero-filled at first, of exactly the size asked for
    size_t recordSize;
    HandleKind kind;
    int32_t locks = 1; // the maker's
    int32_t held = 0;  // those of `locks` that the host's own values own
    bool dying = false;
    uint64_t serial;
};

// A lock taken or given back by a plug-in. Giving back one that belongs to the host is a fault and does nothing.
void lock(Handle &handle);
void unlock(Handle &handle);

// A lock that a value of the host owns.
void hold(Handle &handle);
void unhold(Handle &handle);
// The host takes over a plug-in's lock, as with the result of a call.
void takeOver(Handle &handle);

// The live handle with that record, or null.
Handle *find(const void *record);

// A handle that a plug-in passed in: null for a null pointer and, after a fault is noted, for one that is dead, was
// never a handle, or is of another kind. `user` says who got it.
Handle *expect(const void *record, HandleKind kind, const char *user);

} // namespace host::runtime
