// Reading the fix-ups and the exports of a finished library.
#pragma once

#include "tools/macho/dylib_file.h"

namespace macho {

struct DylibRange {
    uint32_t offset = 0, count = 0; // bytes or records
};

// All of these raise a Failure for damaged bytes. Segments, sections and symbols of the file are read already.
void readClassicFixups(DylibFile &file, const DylibRange &local, const DylibRange &external);
void readCompressedFixups(DylibFile &file, const DylibRange &rebases, const DylibRange &binds);
void readExportTrie(DylibFile &file, const DylibRange &trie);

} // namespace macho
