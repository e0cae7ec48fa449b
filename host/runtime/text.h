// Conversions between the text encodings that host strings carry.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host::runtime {

// Bytes to UTF-16 units; nothing when the bytes are no text of that encoding or the encoding is unknown. Lone
// surrogates of UTF-16 text stay as they are.
std::optional<std::u16string> decodeText(std::string_view bytes, uint32_t encoding);

// UTF-16 units to bytes; nothing for an unknown encoding. What the encoding cannot express becomes "?" or, in a Unicode
// encoding, U+FFFD.
std::optional<std::string> encodeText(std::u16string_view units, uint32_t encoding);

std::optional<std::string> convertText(std::string_view bytes, uint32_t from, uint32_t to);

// "00ff10", and back from pairs of digits.
std::string hexadecimalOf(std::string_view bytes);
std::string bytesOfHexadecimal(const std::string &digits);

std::string encodingName(uint32_t encoding); // "UTF-8", "0x00000A01"

} // namespace host::runtime
