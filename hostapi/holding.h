// Held handles and what ends a call.
#pragma once

#include "hostapi/held_handles.h"

#include <Foundation/Foundation.h>

// The object that is thrown, past every frame of the call, when there is no memory to write a handle down. The method
// guard ends the call with it, as calls end that lack memory: "OutOfMemoryException" in host code and a neutral result.
extern const id kNoMemoryForHandles;

// What a handler of whatever is thrown takes: an object of any class, with NSObject as its root or not. GNUstep's
// runtime runs no destructor for an exception of C++ beside a handler of `id`, but one for an object that no handler
// takes.
#ifdef __NEXT_RUNTIME__
typedef id Thrown;
#else
typedef NSObject *Thrown;
#endif

// For a stretch of work that belongs to no guarded call: what it holds is given back however it ends, and what ends it
// passes through.
template <typename Body>
auto holding(Body body)
{
    HeldHandles held; // the destructor is for exceptions of C++, as in the method guard
    @try {
        return body(held);
    } @catch (Thrown) {
        held.releaseAll();
        @throw;
    }
}
