// Cocoa's exceptions on their way to host code.
#include "plugin/exceptions.h"
#include "plugin/family.h"
#include "plugin/host_functions.h"

void RaiseNSExceptionKTZ(NSException *exception)
{
    NSLog(@"A %@: %@, Info: %@\n", [exception name], [exception reason], [exception userInfo]);

    REALobject hostException = [NSException NewNSExceptionKTZ:exception];
    if (!hostException)
        return;
    REALRaiseException(hostException);
    REALUnlockObject(hostException);
}
