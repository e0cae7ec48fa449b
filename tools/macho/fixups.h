// What the loader has to change in the library's memory, and the two ways in which the file says so.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/macho/bytes.h"
#include "tools/macho/layout.h"
#include "tools/macho/symbols.h"

namespace macho {

struct Bind {
    uint32_t address;
    size_t import; // an index into Symbols::imports
    int32_t addend;
};

struct Fixups {
    std::vector<uint32_t> rebases;  // words that hold an address of the library and move with it
    std::vector<Bind> binds;        // words in data that become an import's address plus a number
    std::vector<Bind> pointerBinds; // the words of the section of import pointers
};

// The relocations that every loader since 10.0 reads. Words of the pointer section are not among them: they are
// described by the section itself and the table of indirect symbols.
struct ClassicFixups {
    Bytes local;    // for Fixups::rebases
    Bytes external; // for Fixups::binds
};
// `firstImport`: the number of the first import in the library's symbol table.
ClassicFixups classicFixups(const Fixups &fixups, const Layout &layout, const Bytes &image, uint32_t firstImport);

// The byte code that loaders since 10.6 prefer. An old one ignores its load command.
struct CompressedFixups {
    Bytes rebases, binds;
};
// `ordinals`: by import, the number of its library among those that are loaded, from 1.
CompressedFixups compressedFixups(const Fixups &fixups, const Layout &layout, const std::vector<uint32_t> &ordinals);

} // namespace macho
