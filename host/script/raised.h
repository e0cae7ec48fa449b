// An exception of the script language on its way to a Catch.
#pragma once

#include "host/exception.h"
#include "host/script/source.h"
#include "host/value.h"

namespace script {

// The calls that led to a place, the innermost first.
struct Call {
    std::string method;
    Place place; // of the call
};
using Calls = std::vector<Call>;

struct Raised {
    host::Value object;
    Place place; // where it was raised
    Calls calls;
};

// With a new exception object of the host.
Raised raised(const std::string &className, const std::string &message, const Place &place);

// An Assert that did not hold. Nothing in the program catches it.
struct AssertionFailed {
    Place place;
    std::string message;
    Calls calls;
};

// The person at the keyboard wants the program to end. Nothing in the program catches it.
struct Interrupted {
    Place place;
};

// Runs something of the host's and turns what goes wrong into Raised: exceptions that it raises, at once or as pending
// ones, and calls that the host refuses.
template <class Body>
auto hosted(const Place &place, Body body) -> decltype(body());

} // namespace script

#include "host/host.h"

template <class Body>
auto script::hosted(const Place &place, Body body) -> decltype(body())
{
    try {
        auto result = body();
        std::vector<host::RaisedException> pending = host::Host::shared().takePendingExceptions();
        if (!pending.empty())
            throw Raised{pending.front().object, place, {}};
        return result;
    } catch (const host::Exception &exception) {
        throw Raised{exception.object(), place, {}};
    } catch (const host::CallError &error) {
        throw raised("TypeMismatchException", error.what(), place);
    }
}
