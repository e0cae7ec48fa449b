#include "platform/gnustep/core_foundation/type_ids.h"

#include <CoreText/CoreText.h>

#define TYPE_ID(name)                                                                                                  \
    CFTypeID name##GetTypeID(void)                                                                                     \
    {                                                                                                                  \
        return platform::name##Type;                                                                                   \
    }
#define IN_LATER_FUNCTIONS(name)

PLATFORM_CF_TYPES(TYPE_ID, IN_LATER_FUNCTIONS)
