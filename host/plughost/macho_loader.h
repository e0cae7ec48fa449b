// Lets the embedded host load the plug-in's macOS binary.
#pragma once

#include "host/plugin.h"

namespace plughost {

host::PluginLoader machoLoader();

} // namespace plughost
