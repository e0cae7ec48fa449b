#include "host/plugin.h"

#include <algorithm>
#include <dlfcn.h>
#include <fstream>
#include <utility>

#include "host/exception.h"
#include "host/host.h"
#include "host/runtime/entry_points.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/objects.h"
#include "host/runtime/state.h"

namespace host {

using runtime::state;

namespace {

constexpr size_t kMagicSize = 16;

std::vector<uint8_t> firstBytes(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw CallError(path + ": there is no such file, or it cannot be read");
    std::vector<uint8_t> bytes(kMagicSize);
    file.read(reinterpret_cast<char *>(bytes.data()), std::streamsize(bytes.size()));
    bytes.resize(size_t(file.gcount()));
    return bytes;
}

LoadedFile loadWithSystem(const std::string &path)
{
    // A name without a slash would be looked for in the system's folders.
    std::string place = path.find('/') == std::string::npos ? "./" + path : path;
    void *library = dlopen(place.c_str(), RTLD_NOW);
    if (!library)
        throw CallError(std::string("cannot be loaded: ") + dlerror());
    LoadedFile file;
    file.entry = reinterpret_cast<interface::PluginMain>(dlsym(library, interface::kPluginMainName));
    file.symbol = [library](const std::string &name) { return dlsym(library, name.c_str()); };
    file.unload = [library] { dlclose(library); };
    return file;
}

LoadedFile loadFile(const std::string &path)
{
    std::vector<uint8_t> magic = firstBytes(path);
    for (const PluginLoader &loader : state().loaders) {
        if (!loader.recognises(magic))
            continue;
        try {
            return loader.load(path);
        } catch (const std::runtime_error &error) {
            throw CallError(path + ": cannot be loaded: " + error.what());
        }
    }
    return loadWithSystem(path);
}

} // namespace

void *Plugin::symbol(const std::string &name) const
{
    return _file.symbol ? _file.symbol(name) : nullptr;
}

void Plugin::start()
{
    runtime::PendingScope pending;
    const Plugin *before = std::exchange(state().startingPlugin, this);
    state().reportedRecordVersion = 0;
    _file.entry(runtime::lookUp);
    _recordVersion = state().reportedRecordVersion;
    state().startingPlugin = before;
    std::vector<RaisedException> raised = pending.take();
    if (!raised.empty())
        throw Exception(std::move(raised));
}

Plugin &Host::open(const std::string &path)
{
    auto plugin = std::make_unique<Plugin>();
    plugin->_path = path;
    plugin->_file = loadFile(path);
    if (!plugin->_file.entry)
        throw CallError(path + ": no plug-in, it exports no " + interface::kPluginMainName);
    state().plugins.push_back(std::move(plugin));
    return *state().plugins.back();
}

Plugin &Host::load(const std::string &path)
{
    Plugin &plugin = open(path);
    plugin.start();
    return plugin;
}

void Host::unload(Plugin &plugin)
{
    runtime::forgetClasses([&](const runtime::Class &each) { return each.fromPlugin && each.owner == &plugin; });
    std::function<void()> unloadFile = plugin._file.unload;
    auto &plugins = state().plugins;
    plugins.erase(std::remove_if(plugins.begin(), plugins.end(),
                                 [&](const std::unique_ptr<Plugin> &each) { return each.get() == &plugin; }),
                  plugins.end());
    if (unloadFile)
        unloadFile();
}

void Host::addLoader(PluginLoader loader)
{
    state().loaders.push_back(std::move(loader));
}

} // namespace host
