// Methods that the family adds to Cocoa's classes at run time, each of which the profile can leave out by its selector.
#pragma once

#include <objc/runtime.h>

#include "host/family/family.h"

namespace family {

// The types are those of Objective-C: host objects are plain pointers ("^v").
template <class Function>
void addInstanceMethod(Class toClass, const char *selector, Function *implementation, const char *types)
{
    if (has(selector))
        class_addMethod(toClass, sel_registerName(selector), reinterpret_cast<IMP>(implementation), types);
}

template <class Function>
void addClassMethod(Class toClass, const char *selector, Function *implementation, const char *types)
{
    addInstanceMethod(object_getClass(reinterpret_cast<id>(toClass)), selector, implementation, types);
}

} // namespace family
