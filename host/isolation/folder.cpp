#include "host/isolation/folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace isolation {

Folder::Folder()
{
    const char *base = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
    _path = std::string(base) + "/case-XXXXXX";
    // Others may look into it: a case may become an ordinary user to see what that one may do.
    if (!mkdtemp(_path.data()) || chmod(_path.c_str(), 0755) != 0)
        throw std::runtime_error(std::string("cannot make a folder for a case: ") + strerror(errno));
}

Folder::~Folder()
{
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

void Folder::enter() const
{
    std::filesystem::current_path(_path);
}

} // namespace isolation
