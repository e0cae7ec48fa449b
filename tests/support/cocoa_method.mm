#include "tests/support/cocoa_method.h"

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <cstring>
#include <stdexcept>
#include <string>

static int timesLeft;

static id raiseForTest(id self, SEL selector)
{
    if (strncmp(sel_getName(selector), "init", 4) == 0)
        [self release]; // an initialiser that fails gives up what was allocated for it
    if (timesLeft-- > 0)
        [NSException raise:@"NSTestException" format:@"raised by the test"];
    return nil;
}

namespace support {

CocoaMethod::CocoaMethod(const char *className, const char *selector, MethodOf kind, void *body)
{
    Class owner = objc_getClass(className);
    SEL name = sel_registerName(selector);
    Method method = kind == MethodOf::Class ? class_getClassMethod(owner, name) : class_getInstanceMethod(owner, name);
    if (!method)
        throw std::invalid_argument(std::string("no method ") + className + " " + selector);
    _method = method;
    _usual = reinterpret_cast<void *>(method_setImplementation(method, reinterpret_cast<IMP>(body)));
}

CocoaMethod::~CocoaMethod()
{
    method_setImplementation(static_cast<Method>(_method), reinterpret_cast<IMP>(_usual));
}

RaisingMethod::RaisingMethod(const char *className, const char *selector, MethodOf kind, int times)
    : _method(className, selector, kind, reinterpret_cast<void *>(raiseForTest))
{
    timesLeft = times;
}

} // namespace support
