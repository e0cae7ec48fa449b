// The companion library of the plug-in family, as far as the plug-in needs it: the exceptions, the dictionary of live
// wrapper objects, the wrapper classes, the object wrapper and the time values. It is a plug-in itself and may be
// absent; the profile says what it leaves out.
//
// Objective-C methods cannot be taken away again, so one process has one companion library: the first load decides.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <cstdint>

#include "host/interface/family.h"

namespace family {

// The host's services, set when the library is loaded.
extern const host::interface::FamilyServices *services;

inline bool has(const char *feature)
{
    return !services->leavesOut(feature);
}

// The instance data of an object of the family begins at a fixed place, as 32-bit words.
template <class T>
T *dataOf(void *object)
{
    return reinterpret_cast<T *>(static_cast<char *>(object) + host::interface::kInstanceDataOffset);
}

// The dictionary of live wrapper objects: Cocoa object, by identity, to host object. It locks neither.
CFMutableDictionaryRef instances();

// Each adds what the profile does not leave out.
void addExceptions();
void addWrapperClasses();
void addValueClasses();
void addTimeClasses();
void addObjectWrapper();

} // namespace family
