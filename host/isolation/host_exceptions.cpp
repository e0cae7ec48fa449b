#include "host/isolation/host_exceptions.h"

#include <stdexcept>

namespace isolation {

void throwHostException()
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

} // namespace isolation
