#include "platform/gnustep/core_services/names.h"

#include "platform/gnustep/core_foundation/strings.h"

#include <string.h>

#include <algorithm>

namespace platform {
namespace {

template <typename Text>
void swapColonAndSlash(Text *text)
{
    for (auto &c : *text)
        c = c == ':' ? '/' : c == '/' ? ':' : c;
}

} // namespace

std::string decomposed(const std::string &name)
{
    bool ascii = std::all_of(name.begin(), name.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    Units units;
    std::string result;
    if (ascii || !decodeUTF8(name, &units))
        return name;
    encodeText(normalized(units, kCFStringNormalizationFormD), kCFStringEncodingUTF8, &result);
    return result;
}

bool unicodeName(const std::string &diskName, HFSUniStr255 *name)
{
    Units units;
    if (!decodeUTF8(decomposed(diskName), &units) || units.size() > 255)
        return false;
    swapColonAndSlash(&units);
    name->length = units.size();
    std::copy(units.begin(), units.end(), name->unicode);
    return true;
}

bool diskName(const UniChar *units, size_t length, std::string *name)
{
    Units swapped(units, units + length);
    swapColonAndSlash(&swapped);
    name->clear();
    return length > 0 && length <= 255 && encodeText(swapped, kCFStringEncodingUTF8, name) &&
           name->find('\0') == std::string::npos;
}

bool macRomanName(const std::string &diskName, StrFileName name)
{
    Units units;
    std::string bytes;
    if (!decodeUTF8(diskName, &units) ||
        !encodeText(normalized(units, kCFStringNormalizationFormC), kCFStringEncodingMacRoman, &bytes) ||
        bytes.size() > 63)
        return false;
    swapColonAndSlash(&bytes);
    name[0] = bytes.size();
    memcpy(name + 1, bytes.data(), bytes.size());
    return true;
}

bool diskName(ConstStr255Param macRoman, std::string *name)
{
    Units units;
    decodeText(macRoman + 1, macRoman[0], kCFStringEncodingMacRoman, false, &units);
    return diskName(units.data(), units.size(), name);
}

} // namespace platform
