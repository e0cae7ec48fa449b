// How a method of Foundation is replaced. Each file installs its replacements when the library is loaded, before any
// message is sent to the class concerned: only runtime functions may be used there.
#pragma once

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

namespace platform {

// Gives a class another implementation of a method, also of one that it inherits, and returns the one before.
template <typename Implementation>
Implementation replaceMethod(Class owner, const char *name, Implementation with)
{
    SEL selector = sel_registerName(name);
    Method method = class_getInstanceMethod(owner, selector);
    auto before = reinterpret_cast<Implementation>(method_getImplementation(method));
    class_replaceMethod(owner, selector, reinterpret_cast<IMP>(with), method_getTypeEncoding(method));
    return before;
}

template <typename Implementation>
Implementation replaceMethod(const char *className, const char *name, Implementation with)
{
    return replaceMethod(static_cast<Class>(objc_getClass(className)), name, with);
}

template <typename Implementation>
Implementation replaceClassMethod(const char *className, const char *name, Implementation with)
{
    return replaceMethod(object_getClass((id)objc_getClass(className)), name, with);
}

// For all methods that return nothing, an integer or a pointer, whatever their arguments: on this processor the caller
// removes them.
inline id answerNothing(id, SEL, ...)
{
    return nil;
}

// GCC's runtime enters a new implementation into the table that all classes share until they are initialised, so a
// first message with its name initialises nothing. The replacement of a class method calls this first.
inline void initialize(id someClass)
{
    [someClass self];
}

} // namespace platform
