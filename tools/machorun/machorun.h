// Runs an i386 Mach-O dynamic library inside a 32-bit Linux process: the very file that a Mac loads, its imports bound
// to GNUstep and the platform layer through the table in import_table.mm.
#pragma once

#include <string>
#include <vector>

namespace machorun {

// A library tells the same fix-ups twice: as relocation entries, which every system reads, and as compressed
// operations, which 10.6 and later prefer. `Preferred` takes the compressed ones when the file has them.
enum class Fixups { Preferred, Classic, Compressed };

struct Options {
    Fixups fixups = Fixups::Preferred;
    // Symbols to treat as missing from the system, as on a release that lacks them. Naming one that the library imports
    // strongly is an error, as it would be there.
    std::vector<std::string> absent;
};

// Maps, binds and initialises the library. The answer stands for the loaded library until the process ends (Objective-C
// code cannot be unloaded); a file that is loaded already gives the same answer again. Null with one line in `error`
// when the file is damaged or needs something that is not there.
void *Load(const std::string &path, std::string &error, const Options &options = {});

// The address of an exported function or variable, by its C name. Null with one line in `error` when there is none.
void *FindExport(void *library, const char *name, std::string &error);

// For a host: loads a plug-in and answers its REALPluginMain. The options come from the environment: MACHORUN_FIXUPS is
// `classic` or `compressed`, MACHORUN_ABSENT a list of symbols with colons between them.
void *LoadPlugin(const char *path, std::string &error);

} // namespace machorun
