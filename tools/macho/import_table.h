// Which library each import comes from. The table is also the list of what may be imported at all: a symbol that is
// not in it is an error, so a call that older systems lack is noticed when the library is linked.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tools/macho/error.h"

namespace macho {

struct Library {
    std::string installName;
    uint32_t currentVersion = 0;       // written into the load command; no loader compares it
    uint32_t compatibilityVersion = 0; // the least that a loader accepts
};

struct ImportRow {
    size_t library; // an index into ImportTable::libraries
    bool weak;      // may be missing at run time: its address is then null
};

struct ImportTable {
    std::vector<Library> libraries;
    std::map<std::string, ImportRow, std::less<>> rows;

    const ImportRow *find(std::string_view symbol) const
    {
        auto row = rows.find(symbol);
        return row == rows.end() ? nullptr : &row->second;
    }
};

// Lines "library INSTALL_NAME CURRENT COMPATIBILITY", each followed by its symbols, one per line, with "weak" behind
// those that may be missing. '#' starts a comment. Raises a Failure for anything else.
ImportTable parseImportTable(std::string_view fileName, std::string_view text);

} // namespace macho
