// The one function that the host calls by name, and how the plug-in calls itself.
#pragma once

#include "hostapi/version.h"

// Called once by the host, before any class is used, with its lookup call-back. A further call registers
// the class again from its original tables; the version learned first then stands in for a missing one.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(HostResolver resolver);

// Null, null and 0 until REALPluginMain has run.
extern const char *gpartname;
extern const char *gpluginname;
extern char gplugin;
