// The host's services as plug-ins call them: C functions over raw handles. Each is a row of its file's table, with the
// name that plug-ins ask for and the host version that brought it.
//
// Handles passed in are borrowed; handles given out carry one lock for the caller. A handle that is dead or of the
// wrong kind is noted as a fault and counts as null.
#pragma once

#include <cstdint>

#include "host/interface/records.h"
#include "host/runtime/entry_points.h"

namespace host::runtime::entries {

using Byte = uint8_t; // the host's boolean

template <auto Function>
struct Entry;

template <class Result, class... Arguments, Result (*Function)(Arguments...)>
struct Entry<Function> {
    static inline Door door;

    static Result call(Arguments... arguments)
    {
        ++door.calls;
        if (door.observer)
            std::function<void()>(door.observer)(); // a copy: it may remove itself
        auto *function = door.replacement ? reinterpret_cast<Result (*)(Arguments...)>(door.replacement) : Function;
        return function(arguments...);
    }
};

template <auto Function>
Door *entry(const char *name, double since = 0)
{
    Door &door = Entry<Function>::door;
    door.name = name;
    door.since = since;
    door.entry = reinterpret_cast<void *>(&Entry<Function>::call);
    return &door;
}

template <auto Function>
Door *global(const char *name, const char *declaration)
{
    Door *door = entry<Function>(name);
    door->declaration = declaration;
    return door;
}

// One function for each file of this folder.
using Doors = std::vector<Door *>;
Doors objectDoors();
Doors stringDoors();
Doors variantDoors();
Doors arrayDoors();
Doors memoryBlockDoors();
Doors fileDoors();
Doors familyDoors();

// Those that the companion library gets without a door.
void registerClass(interface::ClassRecord9 *record);
void *newInstance(const char *className);
void lockObject(void *object); // an array in a Variant's place too
void unlockObject(void *object);
void unlockString(void *string);
Byte setStringProperty(void *object, const char *name, void *value);

} // namespace host::runtime::entries
