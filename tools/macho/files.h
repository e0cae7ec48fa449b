// Whole files, in and out. Errors name the file.
#pragma once

#include <string>
#include <string_view>

#include "tools/macho/bytes.h"

namespace macho {

// Both raise a Failure.
Bytes readFile(const std::string &path);
void writeFile(const std::string &path, const void *bytes, size_t size);

inline std::string_view textOf(const Bytes &bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

} // namespace macho
