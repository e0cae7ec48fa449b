// Raising exceptions in host code. Nothing here unwinds: a caller goes on, returns its neutral result, and
// the host delivers the exception when control is back in host code.
#pragma once

#include "plugin/host_types.h"

#ifdef __OBJC__
@class NSException;
#else
typedef struct objc_object NSException;
#endif

// Raises a host exception of class `className`, or of "RuntimeException" when the host does not know that
// class. `message` is ASCII and may be null: the exception then has none. `errorNumber` is accepted for the
// callers' sake and not used: the exception's "ErrorNumber" is always 0, which host code has come to expect.
void RaiseException(const char *className, const char *message, uint32_t errorNumber);

// Logs the exception and raises it in host code as the `NSExceptionKTZ` that the family's exception library
// makes of it; when that library makes none, the log line is all.
void RaiseNSExceptionKTZ(NSException *exception);
