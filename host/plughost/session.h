// A host with the plug-in loaded and one defaults object in hand: what a command works with.
#pragma once

#include <functional>
#include <string>

#include "host/host.h"
#include "host/plughost/options.h"

namespace plughost {

inline constexpr char kClassName[] = "NSUserDefaultsKTZ";

class Session {
public:
    // Loads the companion library and the plug-in. Throws UsageError for a host or an entry point that does not exist,
    // host::CallError for a plug-in that does not load, InputError when it registers no class.
    explicit Session(const Options &options);

    host::Host &host() { return _host; }
    const host::ClassDescription &defaultsClass() const;

    // The standard defaults object, or the one of --user, with the suites and registered defaults that were asked for.
    const host::Value &defaults();

    host::Value call(const std::string &method, const host::Arguments &arguments = {});
    // Writes what was stored to disk, so that the next command finds it. Throws InputError or, where the file has been
    // named, Reported when that fails.
    void save();
    // The same at the normal end of a program, for what the program left unwritten.
    void end();

private:
    const Options &_options;
    host::Host &_host;
    host::Value _defaults;
};

// Runs a command's body in a session and answers the exit status. Host exceptions go to standard error as host code
// sees them; with --check-handles the ledger has the last word.
int runInSession(const Options &options, const std::function<void(Session &)> &body);

} // namespace plughost
