// The host's book of faults and of dead handles; what it knows of the live ones, the Host tells.
#pragma once

#include <optional>
#include <string>

namespace host::runtime {

void noteFault(const std::string &fault);

// What a dead record was; nothing for memory that was never one or was forgotten since.
std::optional<std::string> epitaph(const void *record);

} // namespace host::runtime
