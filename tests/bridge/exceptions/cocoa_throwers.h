// Functions that fail in each of the ways that exist, and what a caller outside Objective-C sees of it.
#pragma once

#include "hostapi/held_handles.h"

#include <functional>
#include <string>

namespace cocoa_throwers {

// Raises an NSException, without or with a dictionary {"Line": "7"} as its info.
void raise(const std::string &name, const std::string &reason);
void raiseWithInfo(const std::string &name, const std::string &reason);
// Throws the text "foreign", an Objective-C object that is no exception.
void throwObject();

// Runs the body in the method guard.
int32_t guardedInt32(const std::function<int32_t()> &body);
double guardedDouble(const std::function<double()> &body);
REALobject guardedHandle(const std::function<REALobject()> &body);
void guardedNothing(const std::function<void()> &body);
void guardedHolding(const std::function<void(HeldHandles &)> &body);
// With a handle as the neutral result.
REALobject guardedFrom(REALobject neutral, const std::function<void(HeldHandles &)> &body);
// Throws the object that is thrown without memory for handles.
void throwWithoutMemory();

// Runs the body and tells which Objective-C object came out of it: the name of an NSException, the description of any
// other object, "" when it returned.
std::string thrownBy(const std::function<void()> &body);

// Makes an NSException and hands it to RaiseNSExceptionKTZ.
void raiseInHostCode(const std::string &name, const std::string &reason, bool withInfo = false);

} // namespace cocoa_throwers
