// What bytes of UTF-8 are.
#pragma once

#include <cstddef>
#include <string_view>

namespace host::runtime {

// Whether a byte begins a character, which is a code point.
inline bool startsCharacter(char byte)
{
    return (byte & 0xC0) != 0x80;
}

// The first byte that belongs to no character; the text's length when there is none.
size_t firstBadByte(std::string_view text);

} // namespace host::runtime
