#include "tools/machorun/host_loader.h"

#include "tools/macho/format.h"
#include "tools/machorun/machorun.h"

#include <cstring>
#include <stdexcept>

namespace machorun {

using namespace macho::format;

namespace {

// Every kind of Mach-O file, so that one for another processor gets an answer that says so.
bool recognises(const std::vector<uint8_t> &firstBytes)
{
    uint32_t magic = 0;
    if (firstBytes.size() >= sizeof magic) {
        std::memcpy(&magic, firstBytes.data(), sizeof magic);
    }
    return magic == MH_MAGIC || magic == MH_CIGAM || magic == MH_MAGIC_64 || magic == FAT_CIGAM;
}

host::LoadedFile load(const std::string &path)
{
    std::string error;
    host::LoadedFile file;
    file.entry = reinterpret_cast<host::interface::PluginMain>(LoadPlugin(path.c_str(), error));
    if (!file.entry)
        throw std::runtime_error(error);
    file.symbol = [path](const std::string &symbol) {
        std::string ignored;
        void *library = Load(path, ignored); // loaded already
        return library ? FindExport(library, symbol.c_str(), ignored) : nullptr;
    };
    return file;
}

} // namespace

host::PluginLoader HostLoader()
{
    return {"Mach-O", recognises, load};
}

} // namespace machorun
