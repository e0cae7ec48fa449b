#include "bridge/variant/wrapper_objects.h"

#include "bridge/family/instances.h"
#include "hostapi/held_handles.h"

#include <objc/runtime.h>

#include <cstdio>

static const char kWrapperSuffix[] = "KTZ";
static const size_t kLongestClassName = 199; // longer names are passed over, for a buffer of fixed size

static void Carry(REALobject wrapper, id object)
{
    *reinterpret_cast<id *>(InstanceData(wrapper)) = [object retain];
}

// A new instance of the wrapper class named after a Cocoa class, or null.
static REALobject NewInstanceNamedAfter(Class cocoaClass)
{
    const char *name = object_getClassName((id)cocoaClass);
    if (!name || strlen(name) > kLongestClassName)
        return nullptr;
    char wrapperName[kLongestClassName + sizeof kWrapperSuffix];
    snprintf(wrapperName, sizeof wrapperName, "%s%s", name, kWrapperSuffix);
    return REALnewInstance(wrapperName);
}

// Up the object's classes to the first that has a wrapper class and whose instance `accepts`. An instance
// that is not accepted is left as it is, neither kept nor released. The order is kept as it is, first
// the instance, then the question: a wrapper class sees the same calls for every object.
template <typename Accepts>
static REALobject NewMostDerivedWrapper(id object, HeldHandles &held, Accepts accepts)
{
    for (Class cocoaClass = [object class]; cocoaClass; cocoaClass = [cocoaClass superclass]) {
        REALobject wrapper = held.hold(NewInstanceNamedAfter(cocoaClass));
        if (wrapper && accepts()) {
            Carry(wrapper, object);
            return wrapper;
        }
        held.keep(wrapper);
    }
    return nullptr;
}

REALobject NewNSObjectKTZ(id object, Class required, HeldHandles &held)
{
    if (!object || !required)
        return nullptr;
    return NewMostDerivedWrapper(object, held, [=] { return bool([object isKindOfClass:required]); });
}

REALobject NewWrapperByClassName(id object, HeldHandles &held)
{
    return NewMostDerivedWrapper(object, held, [] { return true; });
}

REALobject NewRegisteredWrapper(id object, const char *className, HeldHandles &held)
{
    if (!object)
        return nullptr;

    if (REALobject shared = LockedCarrierOf(object, held))
        return shared;

    REALobject wrapper = held.hold(REALnewInstance(className));
    if (!wrapper)
        return nullptr;
    Carry(wrapper, object);
    RecordCarrier(object, wrapper);
    return wrapper;
}
