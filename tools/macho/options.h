// The command line of macho_ld.
#pragma once

#include <string>
#include <vector>

#include "tools/macho/error.h"
#include "tools/macho/link.h"

namespace macho {

struct CommandLine {
    LinkOptions link;
    std::string output, symbolTable, map; // files; no map if empty
    std::vector<std::string> exportLists; // files
    std::vector<std::string> objects;     // files
    bool help = false;
};

extern const char usage[];

// Raises a Failure for one that makes no sense.
CommandLine parseCommandLine(const std::vector<std::string> &arguments);
// Lines of one name each; '#' starts a comment.
std::vector<std::string> parseExportList(std::string_view text);

} // namespace macho
