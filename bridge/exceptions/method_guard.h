// The guard around every method that sends a message to Cocoa.
#pragma once

#include "bridge/exceptions/cocoa_exception.h"
#include "hostapi/holding.h"

#include <Foundation/Foundation.h>

#include <type_traits>
#include <utility>

// What a body without handles holds.
struct NoHandles {
    void hold(const void *) {}
    void keep(const void *) {}
};

template <typename Body>
constexpr bool TakesHandles = std::is_invocable_v<Body, HeldHandles &>;

template <typename Body>
auto RunBody(const Body &body, HeldHandles &held)
{
    return body(held);
}

template <typename Body>
auto RunBody(const Body &body, NoHandles &)
{
    return body();
}

// Runs `body` and returns its result; a handle among them goes to host code with its lock. An NSException is raised in
// host code and `neutral` is returned, and so for a call that runs out of memory for its handles; whatever else is
// thrown passes through unchanged. Either way the host handles that the call still held are given back: those of the
// body, and `neutral` where that is a handle and nobody gets it. A body with such a `neutral` returns the same.
//
// Inside the body nothing may rely on a destructor, which the 32-bit runtime of macOS skips on its way here: Cocoa's
// objects are autoreleased at once, host handles are held. The destructor of `held` is for exceptions of C++, which run
// no handler.
template <typename Result, typename Body>
Result guarded(Result neutral, Body body)
{
    std::conditional_t<TakesHandles<Body>, HeldHandles, NoHandles> held;
    if constexpr (std::is_pointer_v<Result>)
        held.hold(neutral);
    @try {
        Result result = RunBody(body, held);
        if constexpr (std::is_pointer_v<Result>)
            held.keep(result);
        return result;
    } @catch (Thrown thrown) {
        if constexpr (TakesHandles<Body>)
            RaiseOrThrowOn(thrown, held);
        else
            RaiseOrThrowOn(thrown);
        if constexpr (std::is_pointer_v<Result>)
            held.keep(neutral);
    }
    return neutral;
}

// With 0, false, null or nothing as the neutral result.
template <typename Body>
auto guarded(Body body)
{
    using Held = std::conditional_t<TakesHandles<Body>, HeldHandles, NoHandles>;
    using Result = decltype(RunBody(body, std::declval<Held &>()));
    if constexpr (!std::is_void_v<Result>)
        return guarded(Result(), body);
    else if constexpr (TakesHandles<Body>)
        guarded(0, [&](HeldHandles &held) { return body(held), 0; });
    else
        guarded(0, [&] { return body(), 0; });
}
