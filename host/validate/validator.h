// The validator: loads a plug-in as a host would, and tries to break it.
#pragma once

#include "host/validate/settings.h"

namespace validate {

// To be called when the defaults are kept in the current folder (host/isolation/configuration.h). Answers whether every
// case passed. Throws std::runtime_error for what cannot be run at all, also when there is no case of that name.
bool run(const Settings &settings);

} // namespace validate
