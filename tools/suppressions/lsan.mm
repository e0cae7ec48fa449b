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

// The others are Foundation's, and not about start-up. When it forwards a message that its receiver does not
// understand, in order to raise for it, it never frees the description of a structure among the message's types (76
// bytes each time). Tests send such messages on purpose.
NSMutableData *cifframe_closure(NSMethodSignature *signature, void (*called)(void))
{
    LeaksNotCounted here;
    return theSystems(cifframe_closure, "cifframe_closure")(signature, called);
}

// Foundation forgets the name of the user when the process becomes another one, which tests do on purpose.
NSString *NSUserName(void)
{
    LeaksNotCounted here;
    return theSystems(NSUserName, "NSUserName")();
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

namespace {

// Foundation's reader of the oldest form of property lists loses a first string that more follows, as in a file of
// strings. The platform layer puts its reader of the other forms before it, later than this: leaks of that one count.
using ReadList = id (*)(id, SEL, NSData *, NSPropertyListReadOptions, NSPropertyListFormat *, NSError **);
ReadList systemsReadList;

id readList(id self, SEL selector, NSData *data, NSPropertyListReadOptions options, NSPropertyListFormat *format,
            NSError **error)
{
    LeaksNotCounted here;
    return systemsReadList(self, selector, data, options, format, error);
}

__attribute__((constructor(101))) void wrapReadList()
{
    Method method = class_getClassMethod(objc_getClass("NSPropertyListSerialization"),
                                         sel_registerName("propertyListWithData:options:format:error:"));
    systemsReadList = reinterpret_cast<ReadList>(method_setImplementation(method, reinterpret_cast<IMP>(readList)));
}

} // namespace
