// check_dylib: is a finished library what macOS, from the first supported system on, can load and use safely?
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "tools/macho/dylib_checks.h"
#include "tools/macho/files.h"

namespace {

using namespace macho;

const char usage[] =
    "check_dylib -symbols TABLE -export NAME [-llvm-suffix SUFFIX] LIBRARY\n"
    "\n"
    "Checks an i386 macOS library: its kind and load commands, its one export, its imports against the\n"
    "table, that no code is changed when it is loaded, that both forms of fix-ups agree, what other\n"
    "tools and early loaders want of its versions, room, literals, relocations and symbols, and that\n"
    "llvm-objdump, -readobj, -nm and -otool (names with SUFFIX, default -14) read it without complaint.\n"
    "One line per check; status 1 if one fails.\n";

struct Arguments {
    std::string table, exported, library, suffix = "-14";
};

Arguments parseArguments(const std::vector<std::string> &words)
{
    Arguments arguments;
    for (size_t index = 0; index < words.size(); index++) {
        std::string *value = words[index] == "-symbols"       ? &arguments.table
                             : words[index] == "-export"      ? &arguments.exported
                             : words[index] == "-llvm-suffix" ? &arguments.suffix
                                                              : nullptr;
        if (!value && arguments.library.empty() && words[index][0] != '-')
            arguments.library = words[index];
        else if (!value || ++index == words.size())
            fail("unexpected or incomplete: ", printable(words[std::min(index, words.size() - 1)]));
        else
            *value = words[index];
    }
    if (arguments.table.empty() || arguments.exported.empty() || arguments.library.empty())
        fail("-symbols, -export and a library are needed");
    return arguments;
}

// Complaints go to stderr, which takes stdout's place; stdout itself is not looked at.
std::string complaintOf(const std::string &command, const Arguments &arguments)
{
    std::string quoted = "'";
    for (char character : arguments.library)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    std::string line = command;
    line.replace(line.find(" @"), 2, arguments.suffix);
    line += " " + quoted + "' 2>&1 >/dev/null";
    FILE *pipe = popen(line.c_str(), "r");
    if (!pipe)
        return "it cannot be started";
    std::string complaint;
    for (int character; (character = std::fgetc(pipe)) != EOF;)
        complaint += static_cast<char>(character);
    int status = pclose(pipe);
    if (!complaint.empty())
        return printable(complaint.substr(0, complaint.find('\n')));
    return status == 0 ? "" : "it ends with status " + std::to_string(status);
}

bool report(const DylibCheck &check)
{
    bool good = check.problem.empty();
    std::printf("%s  %s%s%s\n", good ? "ok    " : "FAILED", check.what.c_str(), good ? "" : ": ",
                check.problem.c_str());
    return good;
}

bool run(const Arguments &arguments, const DylibFile &file, const ImportTable &table)
{
    bool good = true;
    for (const DylibCheck &check : checkDylib(file, table, arguments.exported))
        good &= report(check);
    for (std::string command : {"llvm-objdump @ --macho --private-headers --disassemble --rebase --bind --exports-trie",
                                "llvm-readobj @ --file-headers --sections --symbols --relocations", "llvm-nm @ -m",
                                "llvm-otool @ -l -I -v -t -d"})
        good &= report(
            {command.substr(0, command.find(' ')) + arguments.suffix + " reads it", complaintOf(command, arguments)});
    std::printf("%s: %zu bytes\n", file.name.c_str(), file.bytes.size());
    return good;
}

} // namespace

int main(int count, char **words)
{
    try {
        Arguments arguments = parseArguments(std::vector<std::string>(words + 1, words + count));
        DylibFile file = parseDylib(arguments.library, readFile(arguments.library));
        Bytes table = readFile(arguments.table);
        return run(arguments, file, parseImportTable(arguments.table, textOf(table))) ? 0 : 1;
    } catch (const Failure &failure) {
        std::fprintf(stderr, "check_dylib: %s\n", failure.what());
        if (count == 1)
            std::fputs(usage, stderr);
        return 1;
    }
}
