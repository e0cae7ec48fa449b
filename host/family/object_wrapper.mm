// KTZREALobjectWrapper: a Cocoa object that carries a host object through Cocoa and keeps it alive. The class is made
// at run time, so that a profile can do without it, and when somebody asks for it: for a new class the run time goes
// through all others.
#include "host/family/cocoa_methods.h"

#include <Foundation/Foundation.h>
#include <cstring>

namespace family {

namespace {

const char kClassName[] = "KTZREALobjectWrapper";
const char kIvarName[] = "_hostObject";

void *&hostObjectIn(id wrapper)
{
    static const ptrdiff_t offset =
        ivar_getOffset(class_getInstanceVariable(static_cast<Class>(objc_getClass(kClassName)), kIvarName));
    return *reinterpret_cast<void **>(reinterpret_cast<char *>(wrapper) + offset);
}

// Autoreleased. The wrapper has a lock of its own.
id wrap(id wrapperClass, SEL, void *object)
{
    id wrapper = [[wrapperClass alloc] init];
    services->lockObject(object);
    hostObjectIn(wrapper) = object;
    return [wrapper autorelease];
}

// With one more lock, which is the caller's.
void *unwrap(id wrapper, SEL)
{
    services->lockObject(hostObjectIn(wrapper));
    return hostObjectIn(wrapper);
}

void dealloc(id wrapper, SEL selector)
{
    if (hostObjectIn(wrapper))
        services->unlockObject(hostObjectIn(wrapper));
    using Dealloc = void (*)(id, SEL);
    auto inherited = reinterpret_cast<Dealloc>(class_getMethodImplementation([NSObject class], selector));
    inherited(wrapper, selector);
}

// Wrappers are equal when they carry the same object, and can be keys of a dictionary.
BOOL isEqual(id wrapper, SEL, id other)
{
    return object_getClass(other) == object_getClass(wrapper) && hostObjectIn(wrapper) == hostObjectIn(other);
}

NSUInteger hash(id wrapper, SEL)
{
    return reinterpret_cast<NSUInteger>(hostObjectIn(wrapper));
}

id copyWithZone(id wrapper, SEL, NSZone *)
{
    return [wrapper retain];
}

template <class Function>
void add(Class toClass, const char *selector, Function *implementation, const char *types)
{
    class_addMethod(toClass, sel_registerName(selector), reinterpret_cast<IMP>(implementation), types);
}

Class objectWrapper()
{
    Class wrapper = objc_allocateClassPair([NSObject class], kClassName, 0);
    class_addIvar(wrapper, kIvarName, sizeof(void *), 2, "^v");
    class_addProtocol(wrapper, @protocol(NSCopying));
    add(wrapper, "unwrap", unwrap, "^v@:");
    add(wrapper, "dealloc", dealloc, "v@:");
    add(wrapper, "isEqual:", isEqual, "C@:@");
    add(wrapper, "hash", hash, "I@:");
    add(wrapper, "copyWithZone:", copyWithZone, "@@:^v");
    add(object_getClass(reinterpret_cast<id>(wrapper)), "wrap:", wrap, "@@:^v");
    objc_registerClassPair(wrapper);
    return wrapper;
}

objc_get_unknown_class_handler unknownBefore;

Class unknownClass(const char *name)
{
    if (strcmp(name, kClassName) != 0)
        return unknownBefore ? unknownBefore(name) : Nil;
    objc_setGetUnknownClassHandler(unknownBefore); // making a class asks whether there is one of its name
    return objectWrapper();
}

} // namespace

void addObjectWrapper()
{
    if (!has(kClassName) || objc_lookUpClass(kClassName))
        return;
    auto before = objc_setGetUnknownClassHandler(unknownClass);
    if (before != unknownClass)
        unknownBefore = before;
}

} // namespace family
