// Wrapper objects: host objects of the family's classes that carry one Cocoa object, one Core Foundation
// object or one small structure. A wrapper class is named after the Cocoa class, with "KTZ" behind it. Its
// instance data lies at the family's fixed place, in 32-bit words:
//
//   a Cocoa wrapper            word 0  the object, retained once
//   a Core Foundation wrapper  word 0  the object, retained once
//                              word 1  the class's own
//                              word 2  the tag 'RBCF', set by the class's constructor
//   a structure's wrapper      words 0 and on  the structure's fields
//
// What a wrapper retains here its class's finaliser releases. All functions give a new host object,
// or null when the host knows no fitting class.
#pragma once

#include "hostapi/records.h"
#include "hostapi/services.h"

#include <Foundation/Foundation.h>

#include <cstring>

class HeldHandles;

// A new wrapper of the most derived class of the object's own that has a wrapper class, for an object of
// the required kind; null for nil and for an object of another kind, which leaves behind one instance of
// every wrapper class that was found on the way.
REALobject NewNSObjectKTZ(id object, Class required, HeldHandles &held);

// As NewNSObjectKTZ, for an object of any kind.
REALobject NewWrapperByClassName(id object, HeldHandles &held);

// The wrapper of one named class, shared: as long as it lives, the same Cocoa object gives the same host
// object. Null for nil.
REALobject NewRegisteredWrapper(id object, const char *className, HeldHandles &held);

// A new wrapper of the class that goes with the object's type id, or of "CFObjectKTZ".
REALobject NewCFWrapper(CFTypeRef object, HeldHandles &held);

// A new host object with the structure in its instance data.
template <typename Struct>
REALobject NewStructWrapper(const char *className, Struct value)
{
    REALobject object = REALnewInstance(className);
    if (object)
        memcpy(InstanceData(object), &value, sizeof value);
    return object;
}

// The object that a wrapper carries, borrowed; nil when it carries none.
inline id CarriedObject(REALobject wrapper)
{
    return *reinterpret_cast<id *>(InstanceData(wrapper));
}
