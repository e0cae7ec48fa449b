#include <cstdio>
#include <filesystem>
#include <new>

#include "tools/macho/files.h"
#include "tools/macho/link.h"
#include "tools/macho/options.h"

namespace {

using namespace macho;

template <class Value>
Value orFail(Result<Value> result)
{
    if (!result)
        throw Failure(result.error().message);
    return std::move(result.value());
}

void run(CommandLine &line)
{
    std::vector<ObjectFile> objects;
    for (const std::string &path : line.objects)
        objects.push_back(orFail(parseObject(path, readFile(path))));
    Bytes tableText = readFile(line.symbolTable);
    ImportTable table = orFail(parseImportTable(line.symbolTable, textOf(tableText)));
    for (const std::string &path : line.exportLists) {
        Bytes list = readFile(path);
        for (std::string &name : parseExportList(textOf(list)))
            line.link.exports.push_back(std::move(name));
        if (line.link.exports.empty())
            fail(printable(path), ": the list of exports is empty");
    }
    LinkedLibrary library = orFail(link(objects, table, line.link));
    writeFile(line.output, library.bytes.data(), library.bytes.size());
    if (!line.map.empty())
        writeFile(line.map, library.map.data(), library.map.size());
}

// A build must not go on with the files of an earlier link.
void removeOutput(const std::string &path)
{
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored))
        std::filesystem::remove(path, ignored);
}

} // namespace

int main(int count, char **arguments)
{
    auto line = parseCommandLine(std::vector<std::string>(arguments + 1, arguments + count));
    if (!line) {
        std::fprintf(stderr, "macho_ld: %s\n", line.error().message.c_str());
        return 1;
    }
    if (line.value().help) {
        std::fputs(usage, stdout);
        return 0;
    }
    std::string problem;
    try {
        run(line.value());
        return 0;
    } catch (const Failure &failure) {
        problem = failure.error.message;
    } catch (const std::bad_alloc &) {
        problem = "out of memory";
    }
    std::fprintf(stderr, "macho_ld: %s\n", problem.c_str());
    removeOutput(line.value().output);
    removeOutput(line.value().map);
    return 1;
}
