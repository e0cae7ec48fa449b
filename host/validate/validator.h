// The validator: loads a plug-in as a host would, and tries to break it.
#pragma once

#include "host/validate/settings.h"

namespace validate {

// Foundation must look for the defaults database in the folder "defaults" of each process's current folder; this is the
// value that its configuration wants for GNUSTEP_USER_DEFAULTS_DIR.
inline constexpr char kDefaultsFolder[] = "/proc/self/cwd/defaults";

// Answers whether every case passed. Throws std::runtime_error for what cannot be run at all, also when there is no
// case of that name.
bool run(const Settings &settings);

} // namespace validate
