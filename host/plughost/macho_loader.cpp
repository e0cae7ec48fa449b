#include "host/plughost/macho_loader.h"

#include <stdexcept>

#include "tools/machorun/machorun.h"

namespace plughost {

// The magic number of a Mach-O file for a 32-bit processor with the low byte first.
static bool isMachO(const std::vector<uint8_t> &firstBytes)
{
    return firstBytes.size() >= 4 && firstBytes[0] == 0xCE && firstBytes[1] == 0xFA && firstBytes[2] == 0xED &&
           firstBytes[3] == 0xFE;
}

static host::LoadedFile loadMachO(const std::string &path)
{
    std::string error;
    void *entry = machorun::LoadPlugin(path.c_str(), error);
    if (!entry)
        throw std::runtime_error(error);
    host::LoadedFile file;
    file.entry = reinterpret_cast<host::interface::PluginMain>(entry);
    file.symbol = [path](const std::string &symbol) -> void * {
        std::string ignored;
        void *library = machorun::Load(path, ignored);
        return library ? machorun::FindExport(library, symbol.c_str(), ignored) : nullptr;
    };
    return file;
}

host::PluginLoader machoLoader()
{
    return {"Mach-O", isMachO, loadMachO};
}

} // namespace plughost
