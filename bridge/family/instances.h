// The registry of the plug-in family: from carried Cocoa object (by identity) to the host object that
// carries it.
#pragma once

#include "hostapi/held_handles.h"

#include <CoreFoundation/CoreFoundation.h>

// It belongs to another library of the family and is shared by all; null while that library is not loaded,
// and then nothing is recorded or found. An entry takes no lock: it is valid as long as its host object
// lives, whose finaliser removes it.
extern CFMutableDictionaryRef instances;

// The host object that carries `object`, locked once more and held; null when none is recorded. It stands here because
// every conversion of a Cocoa object asks.
inline REALobject LockedCarrierOf(const void *object, HeldHandles &held)
{
    const void *carrier = nullptr;
    if (!instances || !CFDictionaryGetValueIfPresent(instances, object, &carrier) || !carrier)
        return nullptr;
    REALobject hostObject = static_cast<REALobject>(const_cast<void *>(carrier));
    REALLockObject(hostObject);
    return held.hold(hostObject);
}

void RecordCarrier(const void *object, REALobject carrier);
void ForgetCarrier(const void *object);
