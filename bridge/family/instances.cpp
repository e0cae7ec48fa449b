#include "bridge/family/instances.h"

#include "hostapi/services.h"

CFMutableDictionaryRef instances = nullptr;

REALobject LockedCarrierOf(const void *object)
{
    const void *carrier = nullptr;
    if (!instances || !CFDictionaryGetValueIfPresent(instances, object, &carrier) || !carrier)
        return nullptr;
    REALobject hostObject = static_cast<REALobject>(const_cast<void *>(carrier));
    REALLockObject(hostObject);
    return hostObject;
}

void RecordCarrier(const void *object, REALobject carrier)
{
    if (instances)
        CFDictionarySetValue(instances, object, carrier);
}

void ForgetCarrier(const void *object)
{
    if (instances)
        CFDictionaryRemoveValue(instances, object);
}
