#include "host/runtime/exceptions.h"

#include <algorithm>
#include <iterator>

#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host {

Exception::Exception(std::vector<RaisedException> raised)
    : std::runtime_error(raised.front().text()), _raised(std::move(raised))
{
}

namespace runtime {

namespace {

const char kRoot[] = "RuntimeException";
const char *const kSubclasses[] = {
    "FunctionNotFoundException", "IllegalCastException",       "KeyNotFoundException",
    "NilObjectException",        "OutOfBoundsException",       "OutOfMemoryException",
    "TypeMismatchException",     "UnsupportedFormatException", "UnsupportedOperationException",
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
    ObjectHandle *exception = newInstance(known ? *known : *findClass(kRoot));
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
    Class &root = addOwnClass(kRoot, "", [] { return std::make_unique<ExceptionPayload>(); });
    for (const char *name : kSubclasses)
        addOwnClass(name, kRoot, nullptr);
    root.properties.push_back({"Message", Passing::String,
                               [](ObjectHandle &object) { return exceptionOf(object).message; },
                               [](ObjectHandle &object, const Value &value) { exceptionOf(object).message = value; }});
    root.properties.push_back(
        {"ErrorNumber", Passing::Int32, [](ObjectHandle &object) { return Value(exceptionOf(object).errorNumber); },
         [](ObjectHandle &object, const Value &value) { exceptionOf(object).errorNumber = value.int32(); }});
}

} // namespace runtime
} // namespace host
