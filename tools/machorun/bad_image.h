// Thrown by the stages of loading; Load turns it into its one line of text.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace machorun {

// One line of plain text, whatever a name out of a damaged file has in it.
inline std::string Printable(std::string text)
{
    for (char &letter : text) {
        if (letter < ' ' || letter > '~')
            letter = '?';
    }
    return text;
}

class BadImage : public std::runtime_error {
public:
    explicit BadImage(const std::string &text) : std::runtime_error(Printable(text)) {}
};

inline std::string Hex(uint32_t value)
{
    char text[11];
    std::snprintf(text, sizeof text, "0x%x", value);
    return text;
}

} // namespace machorun
