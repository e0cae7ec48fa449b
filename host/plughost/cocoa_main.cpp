#include <filesystem>

#include "host/plughost/plughost.h"

int main(int count, char **arguments)
{
    return plughost::run(std::filesystem::read_symlink("/proc/self/exe").parent_path(), count, arguments);
}
