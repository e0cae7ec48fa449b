// Exceptions of C++ that host code throws and swallows: in plain C++, which alone can catch them.
#pragma once

#include <functional>

namespace isolation {

[[noreturn]] void throwHostException();
// Whether the body ended with one.
bool swallowedIn(const std::function<void()> &body);

} // namespace isolation
