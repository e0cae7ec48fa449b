// Thrown by the stages of loading; Load makes its one line of text of it, with the file's name in front.
#pragma once

#include "tools/macho/error.h"

#include <stdexcept>
#include <string>

namespace machorun {

class BadImage : public std::runtime_error {
public:
    explicit BadImage(const std::string &text) : std::runtime_error(macho::printable(text)) {}
};

} // namespace machorun
