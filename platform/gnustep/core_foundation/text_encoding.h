#pragma once

#include <CoreFoundation/CFString.h>

#include <string>
#include <vector>

namespace platform {

using Units = std::vector<UniChar>;

inline bool isHighSurrogate(uint32_t unit)
{
    return (unit & 0xFC00) == 0xD800;
}
inline bool isLowSurrogate(uint32_t unit)
{
    return (unit & 0xFC00) == 0xDC00;
}

// The text of bytes in an encoding; false for an unknown encoding and for bytes that are no text in it. What macOS
// makes of byte order marks, of bytes left over at the end and of some misfits is told beside the code.
bool decodeText(const UInt8 *bytes, size_t length, CFStringEncoding encoding, bool external, Units *text);

// Strictly, and with a byte order mark as a character like any other.
bool decodeUTF8(const std::string &bytes, Units *text);

// The bytes of a text, without a byte order mark; false when the encoding is unknown or cannot express the text.
bool encodeText(const Units &text, CFStringEncoding encoding, std::string *bytes);

// kCFStringEncodingInvalidId for a name, as XML declarations have it, that is unknown.
CFStringEncoding encodingNamed(const std::string &name);

} // namespace platform
