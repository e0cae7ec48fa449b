#include "tests/bridge/calls/host_exceptions.h"

#include <stdexcept>

namespace host_exceptions {

void throwOne()
{
    throw std::logic_error("of host code");
}

bool swallowedIn(const std::function<void()> &body)
{
    try {
        body();
        return false;
    } catch (const std::logic_error &) {
        return true;
    }
}

} // namespace host_exceptions
