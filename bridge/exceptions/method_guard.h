// The guard around every method that sends a message to Cocoa.
#pragma once

#include "bridge/exceptions/cocoa_exception.h"
#include "bridge/exceptions/held_handles.h"

#include <Foundation/Foundation.h>

// Runs `body` and returns its result. An NSException is raised in host code and the neutral result is
// returned (0, false, null); whatever else is thrown passes through unchanged. Host handles that the body
// still held are unlocked.
//
// Inside the body nothing may rely on a destructor: Cocoa's objects are autoreleased at once, host handles
// are held (bridge/exceptions/held_handles.h).
//
// A C++ exception of the host is not looked after: it passes through, and what was held then stays locked. The
// one that hosts throw, std::bad_alloc while a string is built, is caught where it is thrown
// (hostapi/build_string.cpp).
template <typename Body>
auto guarded(Body body) -> decltype(body())
{
    using Result = decltype(body());
    const HeldMark mark = NewestHeld();
    @try {
        return body();
    } @catch (NSException *exception) {
        @try {
            RaiseNSExceptionKTZ(exception);
        } @finally {
            ReleaseHeldSince(mark); // also when the family's exception library is missing and raising raises
        }
    } @catch (id) {
        ReleaseHeldSince(mark);
        @throw;
    }
    return Result();
}
