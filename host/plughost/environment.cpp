#include "host/plughost/environment.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ground.h"
#include "host/plughost/errors.h"

namespace plughost {

namespace fs = std::filesystem;

static const char kThisProgram[] = "/proc/self/exe";
// The defaults folder that the configuration named by GNUSTEP_CONFIG_FILE was made for.
static const char kConfiguredFor[] = "PLUGHOST_CONFIGURED_FOR";

static std::string environmentValue(const char *name)
{
    const char *value = getenv(name);
    return value ? value : "";
}

static std::string absoluteFolder(const std::string &path)
{
    std::error_code error;
    fs::create_directories(path, error);
    fs::path folder = error ? fs::path() : fs::canonical(path, error);
    if (error || !fs::is_directory(folder, error) || access(folder.c_str(), R_OK | X_OK) != 0)
        throw UsageError("--defaults-dir: \"" + path + "\" is no folder that can be read");
    if (folder.string().find_first_of("\"\\\n") != std::string::npos)
        throw UsageError("--defaults-dir: Foundation's configuration cannot name \"" + path + "\"");
    return folder;
}

// The configuration in force with another defaults folder, in memory, as a path that this process and its children can
// open. Foundation ignores a configuration that others may write, hence the mode.
static std::string configurationFor(const std::string &folder, const std::string &original)
{
    std::ifstream source(original);
    if (!source)
        throw UsageError("cannot read Foundation's configuration " + original);
    std::ostringstream text;
    for (std::string line; std::getline(source, line);)
        if (line.rfind("GNUSTEP_USER_DEFAULTS_DIR=", 0) != 0)
            text << line << '\n';
    text << "GNUSTEP_USER_DEFAULTS_DIR=\"" << folder << "\"\n";

    int file = memfd_create("GNUstep.conf", 0);
    std::string content = text.str();
    if (file < 0 || fchmod(file, 0600) != 0 || write(file, content.data(), content.size()) != ssize_t(content.size()))
        throw std::runtime_error(std::string("cannot keep Foundation's configuration: ") + strerror(errno));
    return "/proc/self/fd/" + std::to_string(file);
}

void prepareEnvironment(const std::string &defaultsDir, char **arguments)
{
    std::string folder = defaultsDir.empty() ? "" : absoluteFolder(defaultsDir);
    std::string config = environmentValue("GNUSTEP_CONFIG_FILE");
    bool configured = folder.empty() ? !config.empty()
                                     : environmentValue(kConfiguredFor) == folder && access(config.c_str(), R_OK) == 0;
    if (configured && getenv("GCONV_PATH") && getenv("GNUSTEP_TZ"))
        return;

    if (!configured) {
        // A configuration in memory of another process may be gone: then it is the build's own that is changed.
        if (access(config.c_str(), R_OK) != 0)
            config = kGnustepConfigFile;
        setenv("GNUSTEP_CONFIG_FILE", (folder.empty() ? config : configurationFor(folder, config)).c_str(), 1);
        setenv(kConfiguredFor, folder.c_str(), 1);
    }
    setenv("GCONV_PATH", kGconvPath, 0);
    setenv("GNUSTEP_TZ", getenv("TZ") ? getenv("TZ") : "UTC", 0);
    execv(kThisProgram, arguments);
    throw std::runtime_error(std::string("cannot execute the program again: ") + strerror(errno));
}

std::string besideProgram(const std::string &name)
{
    return fs::read_symlink(kThisProgram).parent_path() / name;
}

} // namespace plughost
