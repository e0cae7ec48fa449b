// Exceptions of the language: the host's own classes, and what was raised and not yet delivered.
#pragma once

#include <string>
#include <vector>

#include "host/exception.h"
#include "host/runtime/objects.h"

namespace host::runtime {

struct ExceptionPayload : Payload {
    std::string describe() const override { return message.describe(); }
    Value message = Value::nullString();
    int32_t errorNumber = 0;
};

// Adds to what is pending.
void raiseObject(ObjectHandle &exception);
void raiseException(const std::string &className, const std::string &message, int32_t errorNumber = 0);

// What was raised since the scope began. Nested calls each take their own.
class PendingScope {
public:
    PendingScope();
    std::vector<RaisedException> take();

private:
    size_t _start;
};

} // namespace host::runtime
