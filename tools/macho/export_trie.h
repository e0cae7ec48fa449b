// The exported names as a tree of common beginnings, as loaders since 10.6 look them up.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>

#include "tools/macho/bytes.h"

namespace macho {

// By name: the address.
Bytes exportTrie(const std::map<std::string_view, uint32_t> &exports);

} // namespace macho
