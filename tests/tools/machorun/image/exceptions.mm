// @try, @catch and @finally as the compiler makes them for the 32-bit runtime. The callbacks raise, or call back again.
#include "tests/tools/machorun/image/exported.h"

#include <Foundation/Foundation.h>

// Each function adds up what it went through.
enum { kBody = 1, kCatch = 2, kFinally = 4, kOuterCatch = 8, kAfter = 16 };

EXPORTED int tryCatchFinally(Callback callback)
{
    int passed = 0;
    @try {
        callback();
        passed |= kBody;
    } @catch (NSException *) {
        passed |= kCatch;
    } @finally {
        passed |= kFinally;
    }
    return passed | kAfter;
}

EXPORTED id nameOfCaught(Callback callback)
{
    @try {
        callback();
    } @catch (NSException *exception) {
        return [exception name];
    }
    return nil;
}

EXPORTED int throwOwn(id name)
{
    @try {
        @throw [NSException exceptionWithName:name reason:@"thrown here" userInfo:nil];
    } @catch (NSException *exception) {
        return [[exception name] isEqualToString:name];
    }
}

// The inner handler is for another class, so the exception goes on to the outer one, through the inner @finally.
EXPORTED int passesHandlerOfOtherClass(Callback callback)
{
    int passed = 0;
    @try {
        @try {
            callback();
            passed |= kBody;
        } @catch (NSString *) {
            passed |= kCatch;
        } @finally {
            passed |= kFinally;
        }
    } @catch (id) {
        passed |= kOuterCatch;
    }
    return passed;
}

EXPORTED int rethrows(Callback callback, id name)
{
    int passed = 0;
    @try {
        @try {
            callback();
        } @catch (NSException *) {
            passed |= kCatch;
            @throw;
        }
    } @catch (NSException *exception) {
        if ([[exception name] isEqualToString:name])
            passed |= kOuterCatch;
    }
    return passed;
}

EXPORTED int catchesThrownString()
{
    @try {
        @throw @"no exception object";
    } @catch (NSException *) {
        return kCatch;
    } @catch (NSString *) {
        return kOuterCatch;
    }
}

EXPORTED void callWithoutTry(Callback callback)
{
    callback();
}

EXPORTED void callWithGuard(Callback callback, int *destroyed)
{
    Guard guard(destroyed);
    callback();
}

// A frame with a destructor lies between the raise and the handler.
__attribute__((noinline)) static void raiseBehindGuard(int *destroyed)
{
    Guard guard(destroyed);
    [NSException raise:@"Behind" format:@"a guard"];
}

EXPORTED int catchesAcrossGuard(int *destroyed)
{
    @try {
        raiseBehindGuard(destroyed);
        return kBody;
    } @catch (NSException *) {
        return kCatch;
    }
}

// A handler is found by its frame, not by its depth: deeper calls of the same function have none open.
EXPORTED int catchesAtDepth(int depth, int handlerDepth)
{
    if (depth == 0)
        [NSException raise:@"Deep" format:@"enough"];
    if (depth == handlerDepth) {
        @try {
            return catchesAtDepth(depth - 1, handlerDepth);
        } @catch (NSException *) {
            return 100;
        }
    }
    return catchesAtDepth(depth - 1, handlerDepth) + 1;
}

EXPORTED int releasesLockOnException(id object, Callback callback)
{
    int passed = 0;
    @try {
        @synchronized(object) {
            callback();
        }
    } @catch (NSException *) {
        passed |= kCatch;
    } @
    synchronized(object)
    {
        passed |= kAfter;
    }
    return passed;
}

// What is written inside @try is seen in the handler, at every level of optimisation.
EXPORTED int valueAtException(Callback callback)
{
    volatile int step = 0;
    @try {
        step = 1;
        callback();
        step = 2;
    } @catch (NSException *) {
        return step;
    }
    return 0;
}

EXPORTED int catchesManyTimes(int times)
{
    int caught = 0;
    for (int i = 0; i < times; i++) {
        @try {
            [NSException raise:@"Again" format:@"%d", i];
        } @catch (NSException *) {
            caught++;
        }
    }
    return caught;
}

// A C++ exception is none of Objective-C's: it passes @try, which must be left on the way.
EXPORTED void passThroughTry(Callback callback)
{
    @try {
        callback();
    } @catch (id) {
        [NSException raise:@"Wrong" format:@"@catch took a C++ exception"];
    }
}
