// Registration of a class of the family.
#pragma once

#include <cstdlib>
#include <initializer_list>

#include "host/family/family.h"

namespace family {

struct Method {
    const char *declaration;
    void *function;
    void *setter = nullptr;
};

struct ClassFacts {
    const char *name;
    const char *superName = nullptr;
    int32_t dataSize = 0;
    host::interface::ObjectFunction initialiser = nullptr;
    host::interface::ObjectFunction finaliser = nullptr;
};

// Registers the class unless the profile leaves it out. The record is in the oldest layout, which every host reads, and
// is never freed: the host goes on reading it in place.
void addClass(const ClassFacts &facts, std::initializer_list<Method> methods = {},
              std::initializer_list<Method> sharedMethods = {});

template <class Function>
void *pointer(Function *function)
{
    return reinterpret_cast<void *>(function);
}

} // namespace family
