// The header and the load commands, and where the parts of __LINKEDIT lie that they point at.
#pragma once

#include <cstdint>

#include "tools/macho/fixups.h"
#include "tools/macho/layout.h"
#include "tools/macho/link.h"
#include "tools/macho/symbol_table.h"

namespace macho {

// The part of the file behind the segments with sections: only the loader and tools read it.
struct LinkEdit {
    struct Range {
        uint32_t offset = 0, size = 0; // an empty part has neither
    };
    Range rebases, binds, exports;
    Range localRelocations, externalRelocations, functionStarts;
    Range symbols, indirect, names;
    uint32_t offset = 0; // in the file
    Bytes bytes;
};

LinkEdit makeLinkEdit(uint32_t offset, const SymbolTable &symbols, const ClassicFixups &classic,
                      const CompressedFixups &compressed, FixupForm form);

struct LoadCommands {
    Bytes bytes;         // with the header before them
    uint32_t uuidOffset; // of the sixteen bytes that identify the file, still zero
};

// Their size depends on the number of sections and the libraries' names alone.
LoadCommands makeLoadCommands(const Layout &layout, const LinkEdit &linkEdit, const SymbolTable &symbols,
                              const std::vector<LoadedLibrary> &libraries, const LinkOptions &options);

} // namespace macho
