// The linker: object files in, a dynamic library for 32-bit Intel macOS out. Nothing here touches a file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/macho/bytes.h"
#include "tools/macho/error.h"
#include "tools/macho/import_table.h"
#include "tools/macho/object_file.h"

namespace macho {

// How the loader is told what to change in memory. Loaders up to 10.5 know the classic form only; later ones prefer the
// compressed form where there is one.
enum class FixupForm { Classic, Compressed, Both };

struct LinkOptions {
    std::string installName;
    uint32_t currentVersion = 1 << 16;
    uint32_t compatibilityVersion = 1 << 16;
    uint32_t minimumSystem = 10 << 16 | 4 << 8;
    FixupForm fixups = FixupForm::Both;
    std::vector<std::string> exports; // empty: every global name that is not private
    bool strip = false;               // no local symbols
};

struct LinkedLibrary {
    Bytes bytes;     // the file
    std::string map; // a listing of its sections and symbols
};

// Two calls with the same arguments give the same bytes; objects' names are not among them. Raises a Failure for
// objects that make no library.
LinkedLibrary link(const std::vector<ObjectFile> &objects, const ImportTable &table, const LinkOptions &options);

} // namespace macho
