#include "plugin/entry.h"

#include "hostapi/record_version_9.h"
#include "hostapi/services.h"
#include "userdefaults/class_tables.h"

const char *gpartname = nullptr;
const char *gpluginname = nullptr;
char gplugin = 0;

static int32_t RecordVersionForHost(double hostVersion)
{
    if (hostVersion >= 2013.03)
        return 12;
    if (hostVersion >= 2013.0)
        return 11;
    if (hostVersion >= 2012.0)
        return 10;
    return kOldestRecordVersion;
}

// The host wants the size of the instance data as a multiple of 16.
static void RoundUpDataSize(REALclassDefinition *definition)
{
    while (definition->dataSize & 15)
        definition->dataSize++;
}

void REALPluginMain(HostResolver resolver)
{
    gResolver = resolver;

    // Neither look-up is cached: both are needed only here.
    auto registerPluginVersion = reinterpret_cast<void (*)(int32_t)>(resolver("RegisterPluginVersion"));
    auto getHostVersion = reinterpret_cast<double (*)()>(resolver("REALGetRBVersion"));
    if (getHostVersion)
        rbversion_rbversion = getHostVersion();

    CurrentREALControlVersion = RecordVersionForHost(rbversion_rbversion);
    registerPluginVersion(CurrentREALControlVersion); // every host has this one

    gpartname = "NSUserDefaults";
    gplugin = 1;
    gpluginname = "Cocoa";

    RestoreUserDefaultsClass();
    RoundUpDataSize(&userDefaultsClass);
    if (CurrentREALControlVersion > kOldestRecordVersion)
        userDefaultsClass.version = CurrentREALControlVersion;
    else
        ConvertToVersion9(&userDefaultsClass);
    REALRegisterClass(&userDefaultsClass);
}
