#include "host/plughost/files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

#include "host/plughost/errors.h"

namespace plughost {

// More than any property list is; devices and pipes may have no end.
static const size_t kMostBytes = size_t(64) << 20;

static std::string readAll(std::istream &stream, const std::string &name)
{
    std::string content;
    std::vector<char> piece(1 << 16);
    do {
        stream.read(piece.data(), std::streamsize(piece.size()));
        content.append(piece.data(), size_t(stream.gcount()));
        if (content.size() > kMostBytes)
            throw InputError("cannot read " + name + ": it has more than 64 MB");
    } while (stream);
    return content;
}

std::string nameOfFile(const std::string &path)
{
    return path == "-" ? "standard input" : path;
}

std::string readFile(const std::string &path)
{
    if (path == "-")
        return readAll(std::cin, nameOfFile(path));
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, ignored))
        throw InputError("cannot read \"" + path + "\": " + strerror(file ? EISDIR : errno));
    return readAll(file, "\"" + path + "\"");
}

} // namespace plughost
