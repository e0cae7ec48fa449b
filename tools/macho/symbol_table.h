// The library's own symbol table: its local names, what it exports and what it imports, in that order.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "tools/macho/addresses.h"
#include "tools/macho/link.h"

namespace macho {

struct LoadedLibrary {
    const Library *library;
    bool weak; // only weak imports come from it: the loader may do without
};

// The libraries that imports come from, in the table's order.
struct LoadedLibraries {
    std::vector<LoadedLibrary> list;
    std::vector<uint32_t> ordinals; // by import: the position of its library in the list, from 1
};
LoadedLibraries loadedLibraries(const std::vector<Import> &imports, const ImportTable &table);

struct SymbolTable {
    std::map<std::string_view, uint32_t> exports; // by name: the address
    uint32_t localCount = 0, exportCount = 0, importCount = 0;
    Bytes records, names;
    Bytes functionStarts; // the distance of each function from the one before, the first's from the library's start
    Bytes indirect;       // for the stubs, then for the import pointers: the number of the import's symbol
    uint32_t firstImport() const { return localCount + exportCount; }
};

SymbolTable makeSymbolTable(const Layout &layout, const std::vector<uint32_t> &ordinals, const LinkOptions &options);

} // namespace macho
