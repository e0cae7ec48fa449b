// The image info, __OBJC,__image_info: eight bytes in which each object tells the Objective-C runtime how it was made.
// The runtime reads one per library.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/macho/object_file.h"

namespace macho {

struct ImageInfo {
    static constexpr uint32_t size = 8;
    uint32_t version = 0, flags = 0;
};

// What holds for all objects together. Raises a Failure if they do not go together.
ImageInfo mergeImageInfo(const std::vector<ObjectFile> &objects);

} // namespace macho
