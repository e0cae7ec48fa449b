#include <cstdio>
#include <filesystem>
#include <new>

#include "tools/macho/files.h"
#include "tools/macho/link.h"
#include "tools/macho/options.h"

namespace {

using namespace macho;

void run(CommandLine &line)
{
    std::vector<ObjectFile> objects;
    for (const std::string &path : line.objects)
        objects.push_back(parseObject(path, readFile(path)));
    Bytes tableText = readFile(line.symbolTable);
    ImportTable table = parseImportTable(line.symbolTable, textOf(tableText));
    for (const std::string &path : line.exportLists) {
        Bytes list = readFile(path);
        for (std::string &name : parseExportList(textOf(list)))
            line.link.exports.push_back(std::move(name));
        if (line.link.exports.empty())
            fail(printable(path), ": the list of exports is empty");
    }
    LinkedLibrary library = link(objects, table, line.link);
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
    CommandLine line;
    std::string problem;
    try {
        line = parseCommandLine(std::vector<std::string>(arguments + 1, arguments + count));
        if (line.help)
            std::fputs(usage, stdout);
        else
            run(line);
        return 0;
    } catch (const Failure &failure) {
        problem = failure.what();
    } catch (const std::bad_alloc &) {
        problem = "out of memory";
    }
    std::fprintf(stderr, "macho_ld: %s\n", problem.c_str());
    removeOutput(line.output);
    removeOutput(line.map);
    return 1;
}
