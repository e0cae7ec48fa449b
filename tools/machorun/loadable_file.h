// A library's file as the loader takes it: undamaged, and nothing in it that this process cannot give.
#pragma once

#include "tools/macho/dylib_file.h"

namespace machorun {

// Throws BadImage for what cannot be run here, and a Failure, which names the file, for what is damaged.
macho::DylibFile LoadableFile(const std::string &path, macho::Bytes bytes);

} // namespace machorun
