// NSExceptionKTZ, which carries a Cocoa exception to host code, and what NSException learns from the family.
#include "host/family/class_record.h"
#include "host/family/cocoa_methods.h"

#include <Foundation/Foundation.h>

namespace family {

namespace {

int32_t preparations = 0;

NSException *&exceptionIn(void *object)
{
    return *dataOf<NSException *>(object);
}

void *hostString(NSString *text)
{
    return text ? services->newString([text UTF8String]) : nullptr;
}

void releaseException(void *object)
{
    [exceptionIn(object) release];
    exceptionIn(object) = nil;
}

void *nameOfException(void *object)
{
    return hostString([exceptionIn(object) name]);
}

void *reasonOfException(void *object)
{
    return hostString([exceptionIn(object) reason]);
}

int32_t countPreparations()
{
    return preparations;
}

void *newExceptionObject(id, SEL, NSException *exception)
{
    void *object = services->newInstance("NSExceptionKTZ");
    if (!object)
        return nullptr;
    exceptionIn(object) = [exception retain];
    void *message = hostString([exception reason]);
    services->setStringProperty(object, "Message", message);
    if (message)
        services->unlockString(message);
    return object;
}

void prepareExceptions(id, SEL)
{
    ++preparations;
}

CFMutableDictionaryRef getInstances(id, SEL)
{
    return instances();
}

} // namespace

CFMutableDictionaryRef instances()
{
    static CFMutableDictionaryRef dictionary = CFDictionaryCreateMutable(nullptr, 0, nullptr, nullptr);
    return dictionary;
}

void addExceptions()
{
    addClass({"NSExceptionKTZ", "RuntimeException", sizeof(NSException *), nullptr, releaseException},
             {{"name as string", pointer(nameOfException)}, {"reason as string", pointer(reasonOfException)}},
             {{"preparations as integer", pointer(countPreparations)}});
    Class exceptions = [NSException class];
    addClassMethod(exceptions, "NewNSExceptionKTZ:", newExceptionObject, "^v@:@");
    addClassMethod(exceptions, "PrepareNSExceptionKTZ", prepareExceptions, "v@:");
    addClassMethod(exceptions, "GetInstancesDictionaryKTZ", getInstances, "^v@:");
}

} // namespace family
