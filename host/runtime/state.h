// What the host of this process keeps besides handles, classes and entry points.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/declaration.h"
#include "host/exception.h"
#include "host/host.h"
#include "host/plugin.h"
#include "host/profile.h"

namespace host::runtime {

// A fault that was asked for: the `countdown`-th attempt from now and the `times` - 1 after it.
struct PlannedFault {
    int countdown = 0; // 0: none planned
    int times = 0;

    bool strikes(); // at each attempt
};

struct State {
    Profile profile;
    std::vector<RaisedException> pending; // in the order of raising

    std::vector<std::unique_ptr<Plugin>> plugins;
    std::vector<PluginLoader> loaders;
    const Plugin *startingPlugin = nullptr; // whose REALPluginMain is running
    int32_t reportedRecordVersion = 0;      // by that plug-in

    std::vector<std::string> lookupLog;
    std::vector<std::pair<std::string, Declaration>> hiddenMethods;    // class, method
    std::vector<std::pair<std::string, std::string>> hiddenProperties; // class, property

    std::map<Creation, long> creations;
    std::map<Creation, PlannedFault> plannedFaults;
    PlannedFault stringBuildingFault;
};

// Never destroyed.
State &state();

// Counts an attempt of a plug-in to make something, and says whether it is to fail.
bool creationFails(Creation sort);

} // namespace host::runtime
