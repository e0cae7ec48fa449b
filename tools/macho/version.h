// Library and system versions: "X.Y.Z" in text, packed as sixteen, eight and eight bits in the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace macho {

std::optional<uint32_t> parseVersion(std::string_view text);
std::string versionText(uint32_t version);

// The compatibility version of a library that says nothing else: its version up to the first number that is not 0. So
// 1.4.2 is compatible from 1.0.0 on, and 0.3.1 from 0.3.0 on, since anything may change before 1.0.0.
uint32_t compatibilityVersionOf(uint32_t version);
// Raises a Failure, which begins with `where`, for a library that claims more than it is: tools call that malformed.
void requireOrderedVersions(std::string_view where, uint32_t current, uint32_t compatibility);

} // namespace macho
