// The application that the embedded host plays for Foundation.
#pragma once

#include <string>

namespace plughost {

// Must come before anything that makes a defaults object. `domain` is the application's name and so the name of its
// domain; Foundation sees no command-line arguments, which it would take for values of the argument domain.
// Exceptions that a plug-in logs before it raises them in host code are left out of the log unless `showLog`: they are
// printed as host exceptions. What it says of files of defaults becomes lines of the program's own. A Cocoa exception
// that nobody catches ends the program with one line and status 1, as it ends an application: without the companion
// library the plug-in cannot raise it in host code.
void becomeApplication(const std::string &domain, bool showLog);

// What every application does at its normal end: writes the standard defaults, if there is anything to write. Answers
// whether that went well.
bool writeStandardDefaults();

// Whether the system knows a user of that name.
bool isUser(const std::string &name);

// Whether the text is a URL for Cocoa.
bool isURL(const std::string &text);

} // namespace plughost
