// What the companion library gets from the host, by the one entry point "FamilyServices". It asks for nothing else, so
// that hiding, counting and replacing entry points concerns the plug-in under test alone.
#pragma once

#include <cstdint>

#include "host/interface/records.h"

namespace host::interface {

struct FamilyServices {
    void (*registerClass)(ClassRecord9 *record);
    void *(*newInstance)(const char *className);
    void (*lockObject)(void *object);
    void (*unlockObject)(void *object);
    void *(*newString)(const char *utf8); // one lock for the caller
    void (*unlockString)(void *string);
    uint8_t (*setStringProperty)(void *object, const char *name, void *value);
    // Whether the profile wants a class or a feature left out.
    uint8_t (*leavesOut)(const char *feature);
};

} // namespace host::interface
