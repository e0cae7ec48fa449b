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
    static inline EntryPoint point;

    static Result call(Arguments... arguments)
    {
        ++point.calls;
        if (point.observer)
            std::function<void()>(point.observer)(); // a copy: it may remove itself
        auto *function = point.replacement ? reinterpret_cast<Result (*)(Arguments...)>(point.replacement) : Function;
        return function(arguments...);
    }
};

template <auto Function>
EntryPoint *entry(const char *name, double since = 0)
{
    EntryPoint &point = Entry<Function>::point;
    point.name = name;
    point.since = since;
    point.entry = reinterpret_cast<void *>(&Entry<Function>::call);
    return &point;
}

template <auto Function>
EntryPoint *global(const char *name, const char *declaration)
{
    EntryPoint *point = entry<Function>(name);
    point->declaration = declaration;
    return point;
}

// One function for each file of this folder.
using EntryPoints = std::vector<EntryPoint *>;
EntryPoints objectEntryPoints();
EntryPoints stringEntryPoints();
EntryPoints variantEntryPoints();
EntryPoints arrayEntryPoints();
EntryPoints memoryBlockEntryPoints();
EntryPoints fileEntryPoints();
EntryPoints familyEntryPoints();

// Those that the companion library gets without an entry point.
void registerClass(interface::ClassRecord9 *record);
void *newInstance(const char *className);
void lockObject(void *object); // an array in a Variant's place too
void unlockObject(void *object);
void unlockString(void *string);
Byte setStringProperty(void *object, const char *name, void *value);

} // namespace host::runtime::entries
