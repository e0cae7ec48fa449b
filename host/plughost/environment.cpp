#include "host/plughost/environment.h"

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

#include "ground.h"
#include "host/isolation/configuration.h"
#include "host/plughost/errors.h"

namespace plughost {

namespace fs = std::filesystem;

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

void prepareEnvironment(const std::string &defaultsDir)
{
    std::string config = environmentValue("GNUSTEP_CONFIG_FILE");
    // One in memory of another process may be gone.
    if (access(config.c_str(), R_OK) != 0)
        config = kGnustepConfigFile;
    if (!defaultsDir.empty())
        config = isolation::fileInMemory(isolation::configurationWith(absoluteFolder(defaultsDir), config));
    setenv("GNUSTEP_CONFIG_FILE", config.c_str(), 1);
    setenv("GCONV_PATH", kGconvPath, 0);
    setenv("GNUSTEP_TZ", getenv("TZ") ? getenv("TZ") : "UTC", 0);
}

} // namespace plughost
