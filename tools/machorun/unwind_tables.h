// Tells the unwinder of this process how to walk the functions of an image.
#pragma once

#include "tools/machorun/mapped_image.h"

namespace machorun
{

// Copies the image's __eh_frame, translated for the unwinder here, and registers the copy for the life of the process.
void RegisterUnwindTables(const ImageFile &file, const MappedImage &image);

} // namespace machorun
