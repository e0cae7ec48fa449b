#include "tests/support/plugin_under_test.h"

#include "ground.h"
#include "host/host.h"

#include <cstdlib>
#include <filesystem>

#ifdef HAVE_MACHORUN
#include "tools/machorun/host_loader.h"
#endif

namespace support {

std::string pluginUnderTest()
{
    const char *named = getenv("PLUGIN_UNDER_TEST");
    std::filesystem::path path = named && *named ? named : std::string(kBuildDir) + "/NSUserDefaults.so";
    // The macOS file at another level of optimisation stands in a folder of its own (tools/test-macos-variants.sh).
    const char *level = getenv("MACOS_LEVEL");
    return level && path.extension() == ".dylib" ? path.parent_path() / level / path.filename() : path;
}

bool isMachO()
{
    const std::string path = pluginUnderTest(), ending = ".dylib";
    return path.size() > ending.size() && path.compare(path.size() - ending.size(), ending.size(), ending) == 0;
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

    host::Host::shared().addLoader(machorun::HostLoader());
#endif
}

} // namespace support
