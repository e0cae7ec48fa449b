// Thrown by the stages of loading; Load turns it into its one line of text.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace machorun
{

class BadImage : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

inline std::string Hex(uint32_t value)
{
    char text[11];
    std::snprintf(text, sizeof text, "0x%x", value);
    return text;
}

} // namespace machorun
