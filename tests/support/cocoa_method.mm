#include "tests/support/cocoa_method.h"

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <stdexcept>

static std::string exceptionName;
static std::string exceptionReason;

static void raiseForTest(id, SEL)
{
    [NSException raise:[NSString stringWithUTF8String:exceptionName.c_str()] format:@"%s", exceptionReason.c_str()];
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

RaisingMethod::RaisingMethod(const char *className, const char *selector, MethodOf kind, const std::string &name,
                             const std::string &reason)
    : _method(className, selector, kind, reinterpret_cast<void *>(raiseForTest))
{
    exceptionName = name;
    exceptionReason = reason;
}

} // namespace support
