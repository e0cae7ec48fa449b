// Tells the unwinder of this process how to walk the functions of an image.
#pragma once

#include "tools/machorun/mapped_image.h"

#include <memory>

namespace machorun {

// A copy of the image's __eh_frame, translated for the unwinder here: the two number their registers differently. It
// leads into the image and serves wherever it is. Empty when the image has none.
std::unique_ptr<uint8_t[]> TranslatedUnwindTables(const macho::DylibFile &file, const MappedImage &image);

// Hands the translation to the unwinder, for the life of the process.
void RegisterUnwindTables(std::unique_ptr<uint8_t[]> tables);

} // namespace machorun
