// Cocoa's exceptions on their way to host code.
#pragma once

#include <objc/objc.h>

@class NSException;
class HeldHandles;

// Logs the exception and raises it in host code as the `NSExceptionKTZ` that the family's exception library
// makes of it; when that library makes none, the log line is all.
void RaiseNSExceptionKTZ(NSException *exception);

// Tells host code what ended a call: an NSException as above, a lack of memory for handles as "OutOfMemoryException".
// Whatever else is thrown on, unchanged.
void RaiseOrThrowOn(id thrown);
// The same for a call that holds handles: when something passes through, all of them are given back before.
void RaiseOrThrowOn(id thrown, HeldHandles &held);
