// Calls of C functions by their declarations, in both directions.
#pragma once

#include "host/classes.h"
#include "host/declaration.h"
#include "host/value.h"

namespace host::runtime {

// Calls a function of that declaration with checked arguments. `self` is nil for shared and global methods.
Value callFunction(void *function, const Declaration &declaration, const Value &self, const Arguments &arguments);

// A C function of that declaration that runs a body in C++. It is never freed.
void *functionFor(const Declaration &declaration, bool isShared, const HostMethod::Body &body);

// The form in which a setter is called: the method's parameters, then the value; no result.
Declaration setterDeclaration(const Declaration &getter);

} // namespace host::runtime
