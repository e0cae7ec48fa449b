#include "host/runtime/exceptions.h"

#include <algorithm>
#include <iterator>

#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host {

Exception::Exception(std::vector<RaisedException> raised)
    : std::runtime_error(raised.front().className + ": " + raised.front().message), _raised(std::move(raised))
{
}

namespace runtime {

namespace {

struct OwnException {
    const char *name;
    const char *superName;
};

const OwnException kExceptions[] = {
    {"RuntimeException", ""},
    {"FunctionNotFoundException", "RuntimeException"},
    {"IllegalCastException", "RuntimeException"},
    {"KeyNotFoundException", "RuntimeException"},
    {"NilObjectException", "RuntimeException"},
    {"OutOfBoundsException", "RuntimeException"},
    {"OutOfMemoryException", "RuntimeException"},
    {"TypeMismatchException", "RuntimeException"},
    {"UnsupportedFormatException", "RuntimeException"},
    {"UnsupportedOperationException", "RuntimeException"},
};

ExceptionPayload &exceptionOf(ObjectHandle &object)
{
    return *payloadOf<ExceptionPayload>(&object);
}

} // namespace

void raiseObject(ObjectHandle &exception)
{
    RaisedException raised;
    raised.object = Value::borrowHandle(exception.record);
    raised.className = exception.hostClass.name;
    if (auto *payload = payloadOf<ExceptionPayload>(&exception)) {
        raised.message = payload->message.text();
        raised.errorNumber = payload->errorNumber;
    } else {
        noteFault("raised, but no exception: " + exception.what());
    }
    state().pending.push_back(std::move(raised));
}

void raiseException(const std::string &className, const std::string &message, int32_t errorNumber)
{
    const Class *known = findClass(className);
    ObjectHandle *exception = newInstance(known ? *known : *findClass("RuntimeException"));
    Value owner = Value::adoptHandle(exception->record);
    exceptionOf(*exception).message = message;
    exceptionOf(*exception).errorNumber = errorNumber;
    raiseObject(*exception);
}

PendingScope::PendingScope() : _start(state().pending.size()) {}

std::vector<RaisedException> PendingScope::take()
{
    auto &pending = state().pending;
    auto first = pending.begin() + ptrdiff_t(std::min(_start, pending.size()));
    std::vector<RaisedException> taken(std::make_move_iterator(first), std::make_move_iterator(pending.end()));
    pending.erase(first, pending.end());
    return taken;
}

void addExceptionClasses()
{
    for (const OwnException &own : kExceptions)
        addOwnClass(own.name, own.superName, nullptr);
    Class &root = *const_cast<Class *>(findClass("RuntimeException"));
    root.makePayload = [] { return std::make_unique<ExceptionPayload>(); };
    root.properties.push_back({"Message", Passing::String,
                               [](ObjectHandle &object) { return exceptionOf(object).message; },
                               [](ObjectHandle &object, const Value &value) { exceptionOf(object).message = value; }});
    root.properties.push_back(
        {"ErrorNumber", Passing::Int32, [](ObjectHandle &object) { return Value(exceptionOf(object).errorNumber); },
         [](ObjectHandle &object, const Value &value) { exceptionOf(object).errorNumber = value.int32(); }});
}

} // namespace runtime
} // namespace host
