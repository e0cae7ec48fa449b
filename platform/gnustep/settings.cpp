#include "platform/gnustep/settings.h"

#include <stdlib.h>
#include <string.h>

static bool isSet(const char *name, const char *value)
{
    const char *setting = getenv(name);
    return setting && strcmp(setting, value) == 0;
}

bool platform::playsOldestSystem()
{
    static const bool isOldest = isSet("PLATFORM_SYSTEM", "10.4");
    return isOldest;
}

bool platform::typesAllObjects()
{
    static const bool areTyped = isSet("PLATFORM_TYPED_OBJECTS", "1");
    return areTyped;
}
