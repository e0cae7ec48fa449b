#include "tools/macho/map_file.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

namespace macho {

namespace {

struct Line {
    uint32_t address;
    std::string text;
};

std::string addressText(uint32_t address)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08x", static_cast<unsigned>(address));
    return text;
}

// As other tools write it: 8-4-4-4-12 digits.
std::string identifierText(const Identifier &identifier)
{
    std::string text;
    for (size_t index = 0; index < identifier.size(); index++) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X", identifier[index]);
        text += index == 4 || index == 6 || index == 8 || index == 10 ? "-" : "";
        text += digits;
    }
    return text;
}

std::vector<Line> symbolLines(const Layout &layout)
{
    std::vector<Line> lines;
    for (uint32_t number = 0; number < layout.objects.size(); number++) {
        const ObjectFile &object = layout.objects[number];
        for (uint32_t index = 0; index < object.symbols.size(); index++) {
            const Symbol &symbol = object.symbols[index];
            if (!symbol.isInSection() || symbol.name.empty())
                continue;
            Place place{number, symbol.section - 1u, symbol.value};
            if (!layout.holds(place))
                continue;
            uint32_t address = *layout.addressOf(place);
            lines.push_back(
                {address, printable(symbol.name) + "  " + printable(object.name) +
                              (layout.symbols.isReplaced(number, index) ? "  (a copy that is not used)" : "")});
        }
    }
    std::stable_sort(lines.begin(), lines.end(), [](const Line &left, const Line &right) {
        return std::tie(left.address, left.text) < std::tie(right.address, right.text);
    });
    return lines;
}

} // namespace

std::string mapFile(const Identifier &identifier, const Layout &layout, const std::vector<LoadedLibrary> &libraries)
{
    std::string text = "# Identifier: " + identifierText(identifier) + "\n# Sections: address, size, name\n";
    for (const OutputSegment &segment : layout.segments)
        for (const OutputSection &section : segment.sections)
            text += addressText(section.address) + "  " + addressText(section.size) + "  " + printable(segment.name) +
                    "," + printable(section.name) + "\n";
    text += "# Symbols: address, name, object\n";
    for (const Line &line : symbolLines(layout))
        text += addressText(line.address) + "  " + line.text + "\n";
    text += "# Libraries\n";
    for (const LoadedLibrary &loaded : libraries)
        text += loaded.library->installName + (loaded.weak ? "  weak" : "") + "\n";
    return text;
}

} // namespace macho
