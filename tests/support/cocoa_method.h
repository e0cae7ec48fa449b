// Puts something else in the place of a method of Cocoa for as long as the object lives.
#pragma once

#include <string>

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

// The method raises an NSException. One kind of exception at a time: the names of the newest one count.
class RaisingMethod {
public:
    RaisingMethod(const char *className, const char *selector, MethodOf kind = MethodOf::Instance,
                  const std::string &name = "NSTestException", const std::string &reason = "raised by the test");

private:
    CocoaMethod _method;
};

// What is logged for the exception of a RaisingMethod with the usual name and reason.
inline constexpr char kRaisingMethodLogLine[] = "A NSTestException: raised by the test, Info: (null)\n";

} // namespace support
