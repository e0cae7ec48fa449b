#include "tests/support/plugin_under_test.h"

#include "ground.h"
#include "host/host.h"

#include <cstdlib>

#ifdef HAVE_MACHORUN
#include "tools/machorun/machorun.h"

#include <stdexcept>
#endif

namespace support {

std::string pluginUnderTest()
{
    const char *named = getenv("PLUGIN_UNDER_TEST");
    return named && *named ? named : std::string(kBuildDir) + "/NSUserDefaults.so";
}

std::string familyLibrary()
{
    return std::string(kBuildDir) + "/Family.so";
}

void addPluginLoaders()
{
#ifdef HAVE_MACHORUN
    static bool added = false;
    if (added)
        return;
    added = true;

    host::PluginLoader loader;
    loader.name = "Mach-O";
    loader.recognises = [](const std::vector<uint8_t> &first) {
        return first.size() >= 4 && first[0] == 0xCE && first[1] == 0xFA && first[2] == 0xED && first[3] == 0xFE;
    };
    loader.load = [](const std::string &path) {
        std::string error;
        host::LoadedFile file;
        file.entry = reinterpret_cast<host::interface::PluginMain>(machorun::LoadPlugin(path.c_str(), error));
        if (!file.entry)
            throw std::runtime_error(error);
        return file;
    };
    host::Host::shared().addLoader(loader);
#endif
}

} // namespace support
