#include "host/plughost/files.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "host/plughost/errors.h"

namespace plughost {

static std::string readAll(std::istream &stream)
{
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string nameOfFile(const std::string &path)
{
    return path == "-" ? "standard input" : path;
}

std::string readFile(const std::string &path)
{
    if (path == "-")
        return readAll(std::cin);
    std::error_code ignored;
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, ignored))
        throw InputError("cannot read \"" + path + "\": " + strerror(file ? EISDIR : errno));
    return readAll(file);
}

} // namespace plughost
