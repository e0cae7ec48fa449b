// Raising exceptions in host code. Nothing here unwinds: a caller goes on, returns its neutral result, and
// the host delivers the exception when control is back in host code.
#pragma once

#include "hostapi/types.h"

// Raises a host exception of class `className`, or of "RuntimeException" when the host does not know that
// class. `message` is ASCII and may be null: the exception then has none. `errorNumber` is accepted for the
// callers' sake and not used: the exception's "ErrorNumber" is always 0, which host code has come to expect.
void RaiseException(const char *className, const char *message, uint32_t errorNumber);

// Raises "OutOfMemoryException" about a string. Its message is a host string, too: when that cannot be built for the
// same reason, the exception goes without one, instead of raising another one about it.
void RaiseOutOfMemoryForString();
