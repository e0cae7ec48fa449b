#include "bridge/family/cocoa_init.h"

#include "bridge/family/family.h"
#include "bridge/family/instances.h"

#include <AppKit/AppKit.h>

static bool NSApplicationLoaded = false;
static bool ExceptionsInitialized = false;

void CocoaInit()
{
    if (!instances && [NSException respondsToSelector:@selector(GetInstancesDictionaryKTZ)])
        instances = [NSException GetInstancesDictionaryKTZ];

    if (!NSApplicationLoaded) {
        NSApplicationLoad();
        [NSApplication sharedApplication];
        NSApplicationLoaded = true;
    }

    if (!ExceptionsInitialized && [NSException respondsToSelector:@selector(PrepareNSExceptionKTZ)]) {
        [NSException PrepareNSExceptionKTZ];
        ExceptionsInitialized = true;
    }
}
