// The bytes of all sections as they lie in the file, with every reference settled, and what is left to the loader.
#pragma once

#include <vector>

#include "tools/macho/addresses.h"
#include "tools/macho/bytes.h"
#include "tools/macho/fixups.h"
#include "tools/macho/layout.h"

namespace macho {

struct Contents {
    Bytes image; // from the start of the file to the start of __LINKEDIT; the header is still zero
    Fixups fixups;
};

Contents makeContents(const Layout &layout, const CallFrameTables &callFrames);

} // namespace macho
