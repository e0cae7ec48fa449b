#include "bridge/family/instances.h"

CFMutableDictionaryRef instances = nullptr;

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
