#include "tests/support/plugin_under_test.h"

#include "ground.h"
#include "host/host.h"

#include <cstdlib>

#ifdef HAVE_MACHORUN
#include "tools/machorun/host_loader.h"
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

    host::Host::shared().addLoader(machorun::HostLoader());
#endif
}

} // namespace support
