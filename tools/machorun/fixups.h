// The two encodings of a library's fix-ups. Both lead to the same memory: pointers into the image moved by its slide,
// pointers out of it set to their imports.
#pragma once

#include "tools/machorun/imports.h"
#include "tools/machorun/mapped_image.h"

namespace machorun {

void ApplyClassicFixups(const ImageFile &file, const MappedImage &image, const Imports &imports);
void ApplyCompressedFixups(const ImageFile &file, const MappedImage &image, const Imports &imports);

// An exported symbol's address in memory through the symbol table, as older systems look it up, and through the export
// tree of the compressed information. Null when the file does not export it.
void *FindClassicExport(const ImageFile &file, const MappedImage &image, const std::string &symbol);
void *FindCompressedExport(const ImageFile &file, const MappedImage &image, const std::string &symbol);

} // namespace machorun
