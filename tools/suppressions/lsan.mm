// What LeakSanitizer passes over: memory that the libraries of the system lose themselves. Part of the platform layer
// in the build under sanitizers, and there so that each of these functions is found before the system's own one; leaks
// are not counted while that one runs. Known by their functions, losses need no stack of callers for every allocation,
// which would make a test five times as long.

#import <Foundation/Foundation.h>

#include <dlfcn.h>
#include <objc/runtime.h>
#include <sanitizer/lsan_interface.h>

namespace {

class LeaksNotCounted {
public:
    LeaksNotCounted() { __lsan_disable(); }
    ~LeaksNotCounted() { __lsan_enable(); }
    LeaksNotCounted(const LeaksNotCounted &) = delete;
    LeaksNotCounted &operator=(const LeaksNotCounted &) = delete;
};

template <class Function>
Function *theSystems(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

// Start-up of the Objective-C runtime, for each library that is loaded: it keeps the tables of classes and categories,
// which it makes then, for ever, and forgets lists that it has read.
void __objc_exec_class(void *module)
{
    LeaksNotCounted here;
    theSystems(__objc_exec_class, "__objc_exec_class")(module);
}

// A method that is added to a class stays for the life of the process; the runtime refers to it by a place inside the
// block only. Foundation adds some while it starts, the companion library and tests some more.
BOOL class_addMethod(Class target, SEL selector, IMP body, const char *types)
{
    LeaksNotCounted here;
    return theSystems(class_addMethod, "class_addMethod")(target, selector, body, types);
}

// Foundation's alone, and the one entry that is not about start-up: when it forwards a message that its receiver does
// not understand, in order to raise for it, it never frees the description of a structure among the message's types
// (76 bytes each time). Tests send such messages on purpose.
NSMutableData *cifframe_closure(NSMethodSignature *signature, void (*called)(void))
{
    LeaksNotCounted here;
    return theSystems(cifframe_closure, "cifframe_closure")(signature, called);
}

} // extern "C"

// Foundation's time zones make, when they start, one object of 20 bytes that is never used again: they start here.
@interface TimeZoneStart : NSObject
@end

@implementation TimeZoneStart

+ (void)load
{
    LeaksNotCounted here;
    @autoreleasepool {
        [NSTimeZone class];
    }
}

@end
