// The MD5 digest (RFC 1321): identifies a file's content; it protects nothing.
#pragma once

#include <array>

#include "tools/macho/bytes.h"

namespace macho {

std::array<uint8_t, 16> md5(const Bytes &message);

} // namespace macho
