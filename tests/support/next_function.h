// For functions of a test's program that come before the system's own.
#pragma once

#include <dlfcn.h>

// The one that comes next: the system's own.
template <class Function>
Function *nextFunction(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}
