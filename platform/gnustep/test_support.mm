#include "platform/gnustep/test_support.h"

#include "platform/gnustep/core_foundation/type_ids.h"

#import <Foundation/Foundation.h>
#include <string.h>

static CFIndex liveObjects;

@interface PlatformOpaqueObject : NSObject {
@public
    CFTypeID type;
}
@end

@implementation PlatformOpaqueObject

- (CFTypeID)_cfTypeID
{
    return type;
}

- (void)dealloc
{
    --liveObjects;
    [super dealloc];
}

@end

CFTypeID PlatformTypeIDNamed(const char *typeName)
{
    static const struct {
        const char *name;
        CFTypeID type;
    } types[] = {
#define X(name) {#name, platform::name##Type},
        PLATFORM_CF_TYPES(X, X)
#undef X
    };
    for (const auto &row : types)
        if (strcmp(row.name, typeName) == 0)
            return row.type;
    return platform::notAType;
}

CFTypeRef PlatformCreateObject(CFTypeID type)
{
    PlatformOpaqueObject *object = [[PlatformOpaqueObject alloc] init];
    object->type = type;
    ++liveObjects;
    return object;
}

CFIndex PlatformLiveObjects(void)
{
    return liveObjects;
}
