// Which file the black-box tests load.
#pragma once

#include <string>

namespace support {

// PLUGIN_UNDER_TEST of the environment, else the plug-in of this build.
std::string pluginUnderTest();

// Whether that is the file for macOS.
bool isMachO();

// The companion library of this build.
std::string familyLibrary();

// The name of the plug-in's class.
inline constexpr char kClass[] = "NSUserDefaultsKTZ";

// Teaches the host to load Mach-O files, where this build has the loader for them.
void addPluginLoaders();

} // namespace support
