// What every command takes: which host is played, which plug-in is loaded, whose defaults are used.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace plughost {

struct Options {
    std::string programFolder; // where the plug-in and its family lie, too

    std::string host = "2013.03";
    std::vector<std::string> without; // entry points that this host does not offer
    std::string plugin;               // empty: NSUserDefaults.so in the program's folder
    bool withoutFamily = false;

    std::string domain = "plughost"; // the application's own domain
    std::optional<std::string> user; // nothing: the standard defaults object
    std::string defaultsDir;         // empty: as Foundation's configuration says

    std::vector<std::string> suites;        // added to the search list before the command
    std::vector<std::string> registrations; // files with defaults registered before the command

    bool checkHandles = false;
    bool showLog = false;

    std::string pluginFile() const { return plugin.empty() ? programFolder + "/NSUserDefaults.so" : plugin; }
    std::string familyFile() const { return programFolder + "/Family.so"; }
};

} // namespace plughost
