// A host of nothing but a resolver: it offers what a test gives it and writes down every name that it is asked for.
#pragma once

#include "hostapi/version.h"

#include <map>
#include <string>
#include <vector>

namespace fake_host {

inline std::map<std::string, void *> offered;
inline std::vector<std::string> asked;

inline void *resolve(const char *name)
{
    asked.push_back(name);
    auto found = offered.find(name);
    return found == offered.end() ? nullptr : found->second;
}

template <class Function>
void offer(const char *name, Function *function)
{
    offered[name] = reinterpret_cast<void *>(function);
}

// Makes it the host of the services, without a run of REALPluginMain.
inline void install()
{
    gResolver = resolve;
}

} // namespace fake_host
