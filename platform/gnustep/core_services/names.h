// Names of items: bytes of UTF-8 on this disk, UTF-16 in form D for the File Manager, MacRoman in an FSSpec. A colon on
// disk is a slash for the File Manager, and the other way round.
#pragma once

#include <CoreServices/CoreServices.h>

#include <string>

namespace platform {

// The UTF-8 text in form D; bytes that are no UTF-8 come back as they are.
std::string decomposed(const std::string &name);

// Each is false when the name cannot be expressed: no valid text, or more than 255 units or 63 bytes.
bool unicodeName(const std::string &diskName, HFSUniStr255 *name);
bool diskName(const UniChar *units, size_t length, std::string *name);
bool macRomanName(const std::string &diskName, StrFileName name);
bool diskName(ConstStr255Param macRoman, std::string *name);

} // namespace platform
