// What can go wrong is told in one line: the file, the section and the symbol where they apply, then what is the
// matter.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace macho {

struct Error {
    std::string message; // one line, no line feed
};

// How an error travels inside the linker; no function of link.h, object_file.h or import_table.h lets it out.
class Failure : public std::exception {
public:
    explicit Failure(std::string message) : error{std::move(message)} {}
    const char *what() const noexcept override { return error.message.c_str(); }
    Error error;
};

template <class... Parts>
[[noreturn]] void fail(const Parts &...parts)
{
    std::string message;
    (message.append(parts), ...);
    throw Failure(std::move(message));
}

// A value, or the error that stood in its way.
template <class Value>
class Result {
public:
    Result(Value value) : state(std::move(value)) {}
    Result(Error error) : state(std::move(error)) {}
    explicit operator bool() const { return std::holds_alternative<Value>(state); }
    Value &value() { return std::get<Value>(state); }
    const Error &error() const { return std::get<Error>(state); }

private:
    std::variant<Value, Error> state;
};

// Runs a body that may fail, and gives its value or its error.
template <class Body>
auto resultOf(Body body) -> Result<decltype(body())>
{
    try {
        return body();
    } catch (const Failure &failure) {
        return failure.error;
    }
}

// A name from a file as it may stand in a message: control characters, which could break the line, become '?', and a
// very long name is cut.
std::string printable(std::string_view name);
std::string hex(uint32_t value);

} // namespace macho
