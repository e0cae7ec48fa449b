// Puts something else in the place of a method of Cocoa for as long as the object lives.
#pragma once

#include <climits>

namespace support {

enum class MethodOf { Instance, Class };

// `body` is a function (self, selector, arguments...) of the method's type. The class must have the method itself or
// inherit it from nobody else's use: the method is replaced where it is found.
class CocoaMethod {
public:
    CocoaMethod(const char *className, const char *selector, MethodOf kind, void *body);
    ~CocoaMethod();
    CocoaMethod(const CocoaMethod &) = delete;
    CocoaMethod &operator=(const CocoaMethod &) = delete;

private:
    void *_method;
    void *_usual;
};

// The method raises an NSException with the name "NSTestException" and the reason "raised by the test" the first
// `times` that it is called, and gives nil afterwards: Cocoa uses its methods too, in NSLog for one. One at a time.
class RaisingMethod {
public:
    RaisingMethod(const char *className, const char *selector, MethodOf kind = MethodOf::Instance, int times = INT_MAX);

private:
    CocoaMethod _method;
};

// What is logged for the exception of a RaisingMethod.
inline constexpr char kRaisingMethodLogLine[] = "A NSTestException: raised by the test, Info: (null)\n";

} // namespace support
