// Library and system versions: "X.Y.Z" in text, packed as sixteen, eight and eight bits in the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace macho {

std::optional<uint32_t> parseVersion(std::string_view text);
std::string versionText(uint32_t version);

} // namespace macho
