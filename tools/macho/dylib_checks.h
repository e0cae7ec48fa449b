// What a finished library must be for every system from the first supported one on to load it and use it safely.
#pragma once

#include <string>
#include <vector>

#include "tools/macho/dylib_file.h"

namespace macho {

struct DylibCheck {
    std::string what;
    std::string problem; // empty: it is so
};

// `exported`: its one export.
std::vector<DylibCheck> checkDylib(const DylibFile &file, const ImportTable &table, const std::string &exported);

} // namespace macho
