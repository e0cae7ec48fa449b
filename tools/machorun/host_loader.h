// The loader as the embedded host takes it: `host.addLoader(machorun::HostLoader())` makes Mach-O plug-ins loadable.
#pragma once

#include "host/plugin.h"

namespace machorun {

// Options come from the environment.
host::PluginLoader HostLoader();

} // namespace machorun
