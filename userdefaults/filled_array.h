// The shape of the members that return an array: it is made before Cocoa is asked and returned in every case, empty or
// as far as it was filled when Cocoa raised. On a host that cannot make arrays Cocoa is asked all the same, which host
// code may see; its answer is not converted, on purpose: nobody would get what comes of it.
#pragma once

#include "bridge/exceptions/method_guard.h"

template <typename Fill>
REALarray FilledArray(HostArrayElement elements, Fill fill)
{
    REALarray array = REALCreateArray(elements, kEmptyArrayBound);
    return guarded(array, [=](HeldHandles &held) {
        fill(array, held);
        return array;
    });
}
