#pragma once

#include "platform/gnustep/core_foundation/text_encoding.h"

namespace platform {

// Encodings that the C library converts. False for one that it does not know, for bytes that are no text in it, and for
// a text that it cannot express.
bool decodeForeign(const UInt8 *bytes, size_t length, CFStringEncoding encoding, Units *text);
bool encodeForeign(const Units &text, CFStringEncoding encoding, std::string *bytes);

} // namespace platform
