// The shape of the members that return an array: it is made before Cocoa is asked and returned in every case, empty or
// as far as it was filled when Cocoa raised.
#pragma once

#include "bridge/exceptions/method_guard.h"
#include "hostapi/services.h"

// Fills `array` inside the guard and gives it back. What the guard lets through leaves nobody to give it to: then its
// lock is given back first.
template <typename Fill>
REALarray FilledArray(REALarray array, Fill fill)
{
    @try {
        guarded([=] { fill(array); });
    } @catch (id) {
        if (array)
            REALUnlockObject(AsObject(array));
        @throw;
    }
    return array;
}
