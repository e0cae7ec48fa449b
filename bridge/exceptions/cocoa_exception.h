// Cocoa's exceptions on their way to host code.
#pragma once

@class NSException;

// Logs the exception and raises it in host code as the `NSExceptionKTZ` that the family's exception library
// makes of it; when that library makes none, the log line is all.
void RaiseNSExceptionKTZ(NSException *exception);
