// The application that the embedded host plays for Foundation.
#pragma once

#include <string>

namespace plughost {

// Must come before anything that makes a defaults object. `domain` is the application's name and so the name of its
// domain; Foundation sees no command-line arguments, which it would take for values of the argument domain.
// Exceptions that a plug-in logs before it raises them in host code are left out of the log unless `showLog`: they are
// printed as host exceptions.
void becomeApplication(const std::string &domain, bool showLog);

} // namespace plughost
