// Settles the relocations of one section of one object.
#pragma once

#include "tools/macho/addresses.h"
#include "tools/macho/fixups.h"

namespace macho {

struct SectionCopy {
    uint32_t object, section; // where it comes from
    uint8_t *bytes;           // its copy in the library's image, to be changed
    uint32_t address;         // of the copy, in the library
};

// What is left for the loader is added to `fixups`. Raises a Failure for a reference that would make the loader change
// code, and for one that leads nowhere.
void settleRelocations(const SectionCopy &copy, const std::vector<ObjectFile> &objects, const Symbols &symbols,
                       const Addresses &addresses, Fixups &fixups);

} // namespace macho
