#include "tests/userdefaults/cocoa_objects.h"

#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>
#include <dlfcn.h>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

@interface NSException (Registry)
+ (CFMutableDictionaryRef)GetInstancesDictionaryKTZ;
@end

@interface UnreleasableObject : NSObject
@end

@implementation UnreleasableObject
- (oneway void)release
{
    [NSException raise:@"NSTestException" format:@"not released"];
}
@end

@interface UnretainableObject : NSObject {
@public
    std::function<void()> first;
}
@end

@implementation UnretainableObject
- (id)retain
{
    first();
    [NSException raise:@"NSTestException" format:@"not retained"];
    return nil;
}
@end

@interface ObjectWithReleaseWatched : NSObject {
@public
    std::function<void()> look;
}
@end

@implementation ObjectWithReleaseWatched
- (oneway void)release
{
    look();
    [super release];
}
@end

@interface TextlessURL : NSURL
@end

@implementation TextlessURL
- (NSString *)absoluteString
{
    return nil;
}
@end

namespace cocoa {

void *carriedBy(const host::Value &instance)
{
    return *static_cast<void **>(instance.instanceData());
}

const void *registeredCarrier(void *object)
{
    return CFDictionaryGetValue([NSException GetInstancesDictionaryKTZ], object);
}

int registeredCarriers()
{
    return CFDictionaryGetCount([NSException GetInstancesDictionaryKTZ]);
}

std::string currentUser()
{
    return [NSUserName() UTF8String];
}

void *standardUserDefaults()
{
    return [NSUserDefaults standardUserDefaults];
}

int retainCount(void *object)
{
    return static_cast<int>([static_cast<id>(object) retainCount]);
}

void release(void *object)
{
    [static_cast<id>(object) release];
}

void *newUnreleasableObject()
{
    return [[UnreleasableObject alloc] init];
}

void releaseAllTheSame(void *unreleasable)
{
    NSDeallocateObject(static_cast<id>(unreleasable));
}

void *unretainableObject(std::function<void()> first)
{
    UnretainableObject *object = [[[UnretainableObject alloc] init] autorelease];
    object->first = std::move(first);
    return object;
}

void *newObjectWithReleaseWatched(std::function<void()> look)
{
    ObjectWithReleaseWatched *object = [[ObjectWithReleaseWatched alloc] init];
    object->look = std::move(look);
    return object;
}

void *textlessURL()
{
    return [[[TextlessURL alloc] initWithString:@"http://localhost/"] autorelease];
}

std::string objectThrownBy(const std::function<void()> &body)
{
    @try {
        body();
    } @catch (id object) {
        return [[object description] UTF8String];
    }
    return "";
}

// Constants lie in memory that is read-only once the program runs.
static void write(void **place, void *value)
{
    const uintptr_t page = sysconf(_SC_PAGESIZE);
    void *start = reinterpret_cast<void *>(reinterpret_cast<uintptr_t>(place) & ~(page - 1));
    if (mprotect(start, page, PROT_READ | PROT_WRITE) != 0)
        throw std::runtime_error("the constant's page stays read-only");
    *place = value;
}

AbsentConstant::AbsentConstant(const char *name) : _constant(static_cast<void **>(dlsym(RTLD_DEFAULT, name)))
{
    if (!_constant)
        throw std::invalid_argument(name);
    _value = *_constant;
    write(_constant, nullptr);
}

AbsentConstant::~AbsentConstant()
{
    write(_constant, _value);
}

} // namespace cocoa
