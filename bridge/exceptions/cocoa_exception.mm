#include "bridge/exceptions/cocoa_exception.h"

#include "bridge/family/family.h"
#include "hostapi/exceptions.h"
#include "hostapi/holding.h"

void RaiseNSExceptionKTZ(NSException *exception)
{
    NSLog(@"A %@: %@, Info: %@\n", [exception name], [exception reason], [exception userInfo]);

    holding([=](HeldHandles &held) {
        REALobject hostException = held.hold([NSException NewNSExceptionKTZ:exception]);
        if (!hostException)
            return;
        REALRaiseException(hostException);
        held.release(hostException);
    });
}

void RaiseOrThrowOn(id thrown)
{
    @try {
        @throw thrown; // so that the handlers tell its kind
    } @catch (NSException *exception) {
        RaiseNSExceptionKTZ(exception);
    } @catch (id other) {
        if (other != kNoMemoryForHandles)
            @throw;
        RaiseException("OutOfMemoryException", "Failed to allocate memory for a conversion.", 0);
    }
}

void RaiseOrThrowOn(id thrown, HeldHandles &held)
{
    @try {
        RaiseOrThrowOn(thrown);
    } @catch (Thrown) { // also when the family's exception library is missing and raising raises
        held.releaseAll();
        @throw;
    }
}
