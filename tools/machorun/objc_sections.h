// The Objective-C parts of the image, written for the runtime of 32-bit macOS, are rewritten in place for the runtime
// that is here. Done after the fix-ups and before any code of the image runs.
#pragma once

#include "tools/machorun/mapped_image.h"

namespace machorun {

// Makes the classes and categories that the image defines.
void DefineClasses(const macho::DylibFile &file, const MappedImage &image);

// Selector references, class references and constant strings. Classes of the image must exist by then.
void FixObjectiveCReferences(const macho::DylibFile &file, const MappedImage &image);

} // namespace machorun
