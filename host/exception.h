// What goes wrong in a host: exceptions of the host language, and calls that the host refuses before making them.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "host/value.h"

namespace host {

// An exception object that a plug-in raised.
struct RaisedException {
    Value object;
    std::string className;
    std::string message;
    int32_t errorNumber = 0;

    std::string text() const { return className + ": " + message; }
};

// Delivered when control is back in host code. `raised` holds everything that was raised during the call in the order
// of raising; the accessors speak of the first.
class Exception : public std::runtime_error {
public:
    explicit Exception(std::vector<RaisedException> raised);
    const std::string &className() const { return _raised.front().className; }
    const std::string &message() const { return _raised.front().message; }
    int32_t errorNumber() const { return _raised.front().errorNumber; }
    const Value &object() const { return _raised.front().object; }
    const std::vector<RaisedException> &raised() const { return _raised; }

private:
    std::vector<RaisedException> _raised;
};

// A call that cannot be made: unknown class or method, wrong number of arguments, a plug-in that does not load.
struct CallError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A value of a type that is not taken: by the declaration, an array, or whoever reads it.
struct TypeError : CallError {
    using CallError::CallError;
};

} // namespace host
