// What can go wrong is told in one line: the file, the section and the symbol where they apply, then what is the
// matter.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace macho {

// Raised by whatever can fail.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

template <class... Parts>
[[noreturn]] void fail(const Parts &...parts)
{
    std::string message;
    (message.append(parts), ...);
    throw Failure(message);
}

// A name from a file as it may stand in a message: control characters, which could break the line, become '?', and a
// very long name is cut.
std::string printable(std::string_view name);
std::string hex(uint32_t value);

} // namespace macho
