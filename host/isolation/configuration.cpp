#include "host/isolation/configuration.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "ground.h"

namespace isolation {

static const char kThisProgram[] = "/proc/self/exe";
static const char kDefaults[] = "defaults";
// Set to the id of the process that it was made for: its forks inherit what it has read, programs read their own.
static const char kConfigured[] = "DEFAULTS_IN_CURRENT_FOLDER_OF";

[[noreturn]] static void failed(const std::string &what)
{
    throw std::runtime_error("cannot " + what + ": " + strerror(errno));
}

std::string configurationWith(const std::string &defaultsFolder, const std::string &original)
{
    std::ifstream source(original);
    if (!source)
        failed("read Foundation's configuration " + original);
    std::ostringstream text;
    for (std::string line; std::getline(source, line);)
        if (line.rfind("GNUSTEP_USER_DEFAULTS_DIR=", 0) != 0)
            text << line << '\n';
    text << "GNUSTEP_USER_DEFAULTS_DIR=\"" << defaultsFolder << "\"\n";
    return text.str();
}

std::string fileInMemory(const std::string &content)
{
    int file = memfd_create("GNUstep.conf", 0);
    if (file < 0 || fchmod(file, 0600) != 0 || write(file, content.data(), content.size()) != ssize_t(content.size()))
        failed("keep Foundation's configuration");
    return "/proc/self/fd/" + std::to_string(file);
}

void executeAgain()
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::string words(std::istreambuf_iterator<char>(file), {});
    std::vector<char *> arguments;
    for (size_t i = 0; i < words.size(); i += strlen(&words[i]) + 1)
        arguments.push_back(&words[i]);
    arguments.push_back(nullptr);
    execv(kThisProgram, arguments.data());
    failed("execute the program again");
}

bool keepsDefaultsInCurrentFolder()
{
    const char *configured = getenv(kConfigured);
    return configured && std::to_string(getpid()) == configured;
}

void keepDefaultsInCurrentFolder()
{
    if (keepsDefaultsInCurrentFolder())
        return;
    std::string folder = std::string("/proc/self/cwd/") + kDefaults;
    setenv("GNUSTEP_CONFIG_FILE", fileInMemory(configurationWith(folder, kGnustepConfigFile)).c_str(), 1);
    setenv("GCONV_PATH", kGconvPath, 0);
    setenv("GNUSTEP_TZ", "UTC", 1);
    setenv(kConfigured, std::to_string(getpid()).c_str(), 1);
    executeAgain();
}

void configurePrograms()
{
    std::filesystem::path folder = std::filesystem::current_path(), file = folder / "GNUstep.conf";
    std::filesystem::create_directory(folder / kDefaults);
    std::ofstream(file) << configurationWith(folder / kDefaults, kGnustepConfigFile);
    chmod(file.c_str(), 0600);
    setenv("GNUSTEP_CONFIG_FILE", file.c_str(), 1);
}

} // namespace isolation
