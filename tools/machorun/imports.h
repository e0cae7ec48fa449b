// Where the library's imports lead.
#pragma once

#include "tools/macho/dylib_file.h"

#include <string>
#include <vector>

namespace machorun {

// What the table in import_table.mm has for a symbol, but for those that are to be absent. Throws BadImage, naming the
// symbol, for a strong import that has no row or is absent.
macho::SymbolAddress ImportsWithout(std::vector<std::string> absent);

} // namespace machorun
