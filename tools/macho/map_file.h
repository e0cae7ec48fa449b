// The map: a listing for people of what lies where in the library.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "tools/macho/addresses.h"
#include "tools/macho/symbol_table.h"

namespace macho {

using Identifier = std::array<uint8_t, 16>;

std::string mapFile(const Identifier &identifier, const Layout &layout, const std::vector<LoadedLibrary> &libraries);

} // namespace macho
