#include "tools/macho/version.h"

#include "tools/macho/error.h"

namespace macho {

std::optional<uint32_t> parseVersion(std::string_view text)
{
    uint32_t parts[3] = {};
    size_t part = 0, digits = 0;
    for (char character : text) {
        if (character == '.') {
            if (digits == 0 || ++part == 3)
                return std::nullopt;
            digits = 0;
        } else if (character >= '0' && character <= '9') {
            parts[part] = parts[part] * 10 + static_cast<uint32_t>(character - '0');
            digits++;
            if (parts[part] > (part == 0 ? 0xffffu : 0xffu))
                return std::nullopt;
        } else {
            return std::nullopt;
        }
    }
    if (digits == 0)
        return std::nullopt;
    return parts[0] << 16 | parts[1] << 8 | parts[2];
}

std::string versionText(uint32_t version)
{
    return std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 0xff) + "." +
           std::to_string(version & 0xff);
}

uint32_t compatibilityVersionOf(uint32_t version)
{
    for (uint32_t kept : {0xffff0000u, 0xffffff00u})
        if (version & kept)
            return version & kept;
    return version;
}

void requireOrderedVersions(std::string_view where, uint32_t current, uint32_t compatibility)
{
    if (compatibility > current)
        fail(where, "compatibility version ", versionText(compatibility), " is above the current version ",
             versionText(current));
}

} // namespace macho
