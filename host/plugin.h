// A loaded plug-in. Files are opened by their magic: ELF by the system, others by a loader that was registered.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/interface/records.h"

namespace host {

// What a loader hands back: the entry function and ways to find further symbols and to unload. Without `unload` the
// file stays in memory.
struct LoadedFile {
    interface::PluginMain entry = nullptr;
    std::function<void *(const std::string &symbol)> symbol;
    std::function<void()> unload;
};

struct PluginLoader {
    std::string name; // "Mach-O"
    std::function<bool(const std::vector<uint8_t> &firstBytes)> recognises;
    std::function<LoadedFile(const std::string &path)> load; // throws std::runtime_error when it cannot
};

class Plugin {
public:
    const std::string &path() const { return _path; }
    void *symbol(const std::string &name) const; // null when there is none
    // The record version that it reported with "RegisterPluginVersion"; 0 before that.
    int32_t recordVersion() const { return _recordVersion; }
    // Runs its REALPluginMain, which a plug-in must stand more than once. Delivers what it raises.
    void start();

private:
    friend class Host;
    std::string _path;
    LoadedFile _file;
    int32_t _recordVersion = 0;
};

} // namespace host
