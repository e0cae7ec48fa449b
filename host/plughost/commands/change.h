// What a change of the search list brings into view and hides.
#pragma once

#include <functional>

#include "host/plughost/session.h"

namespace plughost {

// Makes the change and prints, a line each, the keys whose values are other than before: with their new value, or as
// gone.
void printChange(Session &session, const std::function<void()> &change);

} // namespace plughost
