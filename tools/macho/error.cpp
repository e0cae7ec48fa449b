#include "tools/macho/error.h"

#include <cstdint>
#include <cstdio>

namespace macho {

std::string printable(std::string_view name)
{
    constexpr size_t longest = 200;
    std::string text(name.substr(0, longest));
    for (char &character : text) {
        auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7f)
            character = '?';
    }
    if (name.size() > longest)
        text += "...";
    return text;
}

std::string hex(uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(value));
    return text;
}

} // namespace macho
