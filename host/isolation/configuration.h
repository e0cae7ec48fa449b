// Foundation's configuration, which names the folder of the defaults. Foundation reads it before main, so a program
// that needs another one executes itself again.
#pragma once

#include <string>

namespace isolation {

// That configuration file with another folder of defaults. Throws std::runtime_error when it cannot be read.
std::string configurationWith(const std::string &defaultsFolder, const std::string &original);

// A file in memory, as a path that this process and its children can open. Foundation ignores a configuration that
// others may write, hence its mode.
std::string fileInMemory(const std::string &content);

// Executes this program again, with the arguments that it was started with.
[[noreturn]] void executeAgain();

// From here on the defaults of this process and of its forks are in "defaults" in the current folder of each, times are
// those of UTC. To be called first in main, which begins anew the first time.
void keepDefaultsInCurrentFolder();
bool keepsDefaultsInCurrentFolder();

// For programs that this process will start: a configuration of the usual kind with the defaults of this process, whose
// folder is there afterwards.
void configurePrograms();

} // namespace isolation
