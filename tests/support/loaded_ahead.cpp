#include "tests/support/loaded_ahead.h"

#include "host/host.h"
#include "tests/support/plugin_under_test.h"

namespace support {

void loadFilesAhead()
{
    addPluginLoaders();
    host::Host &host = host::Host::shared();
    for (const std::string &file : {familyLibrary(), pluginUnderTest()})
        host.unload(host.open(file)); // the host forgets it; what has Objective-C classes stays in memory
}

} // namespace support
