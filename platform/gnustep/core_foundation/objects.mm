// What all Core Foundation objects have in common: each is an Objective-C object, and the classes that macOS bridges
// answer _cfTypeID. Other objects do so only where a setting asks for it, which macOS's very likely do.

#include "platform/gnustep/core_foundation/type_ids.h"
#include "platform/gnustep/settings.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

const CFAllocatorRef kCFAllocatorDefault = nullptr;

@interface NSObject (CoreFoundationType)
- (CFTypeID)_cfTypeID;
@end

CFTypeRef CFRetain(CFTypeRef object)
{
    return [(id)object retain];
}

void CFRelease(CFTypeRef object)
{
    [(id)object release];
}

CFTypeID CFGetTypeID(CFTypeRef object)
{
    id any = (id)object;
    CFTypeID type = [any respondsToSelector:@selector(_cfTypeID)] ? [any _cfTypeID] : platform::notAType;
    return type == platform::notAType ? platform::otherObject : type;
}

#define BRIDGED(class, type)                                                                                           \
    @implementation class (CoreFoundationType)                                                                         \
    -(CFTypeID)_cfTypeID                                                                                               \
    {                                                                                                                  \
        return platform::type;                                                                                         \
    }                                                                                                                  \
    @end

// clang-format off
BRIDGED(NSString,           CFStringType)
BRIDGED(NSURL,              CFURLType)
BRIDGED(NSDictionary,       CFDictionaryType)
BRIDGED(NSArray,            CFArrayType)
BRIDGED(NSData,             CFDataType)
BRIDGED(NSSet,              CFSetType)
BRIDGED(NSDate,             CFDateType)
BRIDGED(NSTimeZone,         CFTimeZoneType)
BRIDGED(NSCharacterSet,     CFCharacterSetType)
BRIDGED(NSError,            CFErrorType)
BRIDGED(NSAttributedString, CFAttributedStringType)
// clang-format on

@implementation NSNumber (CoreFoundationType)

- (CFTypeID)_cfTypeID
{
    static Class booleanClass = objc_getClass("NSBoolNumber");
    return [self isKindOfClass:booleanClass] ? platform::CFBooleanType : platform::CFNumberType;
}

@end

static CFTypeID typeOfAnyObject(id, SEL)
{
    return platform::otherObject;
}

__attribute__((constructor)) static void install()
{
    if (platform::typesAllObjects())
        class_addMethod(static_cast<Class>(objc_getClass("NSObject")), sel_registerName("_cfTypeID"),
                        reinterpret_cast<IMP>(typeOfAnyObject), "L8@0:4");
}
