// Settles the relocations of one section of one object, in the copies of its pieces that are in the library's image.
#pragma once

#include "tools/macho/addresses.h"
#include "tools/macho/fixups.h"

namespace macho {

// What is left for the loader is added to `fixups`. Raises a Failure for a reference that would make the loader change
// code, and for one that leads nowhere.
void settleRelocations(uint32_t object, uint32_t section, const Addresses &addresses, Bytes &image, Fixups &fixups);

} // namespace macho
