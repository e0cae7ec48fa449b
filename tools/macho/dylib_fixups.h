// Reading the fix-ups and the exports of a finished library.
#pragma once

#include "tools/macho/dylib_file.h"

namespace macho {

// All of these raise a Failure for damaged bytes. Segments, sections and symbols of the file are read already.
void readClassicFixups(DylibFile &file, const format::dysymtab_command &tables);
void readCompressedFixups(DylibFile &file, const format::dyld_info_command &info);
void readExportTrie(DylibFile &file, uint32_t offset, uint32_t size);

} // namespace macho
