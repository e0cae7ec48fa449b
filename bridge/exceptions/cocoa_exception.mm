#include "bridge/exceptions/cocoa_exception.h"

#include "bridge/family/family.h"
#include "hostapi/services.h"

void RaiseNSExceptionKTZ(NSException *exception)
{
    NSLog(@"A %@: %@, Info: %@\n", [exception name], [exception reason], [exception userInfo]);

    REALobject hostException = [NSException NewNSExceptionKTZ:exception];
    if (!hostException)
        return;
    REALRaiseException(hostException);
    REALUnlockObject(hostException);
}
