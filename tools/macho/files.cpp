#include "tools/macho/files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "tools/macho/error.h"

namespace macho {

namespace {

struct Closer {
    void operator()(FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, Closer>;

[[noreturn]] void failWith(const std::string &path, const char *what)
{
    fail(printable(path), ": ", what, ": ", std::strerror(errno));
}

} // namespace

Bytes readFile(const std::string &path)
{
    File file(std::fopen(path.c_str(), "rb"));
    if (!file)
        failWith(path, "cannot be opened");
    Bytes bytes;
    uint8_t buffer[1 << 16];
    while (size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
        bytes.insert(bytes.end(), buffer, buffer + count);
    if (std::ferror(file.get()))
        failWith(path, "cannot be read");
    return bytes;
}

void writeFile(const std::string &path, const void *bytes, size_t size)
{
    File file(std::fopen(path.c_str(), "wb"));
    if (!file)
        failWith(path, "cannot be written");
    if (std::fwrite(bytes, 1, size, file.get()) != size || std::fflush(file.get()) != 0)
        failWith(path, "cannot be written");
}

} // namespace macho
