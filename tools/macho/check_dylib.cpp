// check_dylib: is a finished library what macOS, from the first supported system on, can load and use safely?
#include <algorithm>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "tools/macho/dylib_file.h"
#include "tools/macho/files.h"
#include "tools/macho/version.h"

namespace {

using namespace macho;
using namespace macho::format;

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

class Checker {
public:
    Checker(const Arguments &arguments, const DylibFile &file, const ImportTable &table)
        : arguments(arguments), file(file), table(table)
    {
    }
    bool run();

private:
    using Problem = std::string; // empty: the check holds
    static constexpr uint32_t neededRoom = 1024;
    void report(const std::string &what, const Problem &problem);
    Problem kind() const;
    Problem loadCommands() const;
    Problem oneExport() const;
    Problem imports() const;
    Problem importedLibraries() const;
    Problem versions() const;
    Problem room() const;
    Problem literalsOnce() const;
    Problem wordsOnce() const;
    Problem firstSymbol() const;
    Problem codeUnchanged() const;
    Problem formsAgree() const;
    Problem readBy(const std::string &command) const;

    const Arguments &arguments;
    const DylibFile &file;
    const ImportTable &table;
    bool good = true;
};

bool Checker::run()
{
    report("a 32-bit Intel dynamic library with two-level names", kind());
    report("load commands that systems from " + versionText(file.minimumSystem) + " on accept", loadCommands());
    report("one export, " + arguments.exported, oneExport());
    report("imports are in the table, from the right libraries", imports());
    report("libraries as the table names them", importedLibraries());
    report("no library claims to be compatible with more than it is", versions());
    report("room for " + std::to_string(neededRoom) + " bytes of further load commands", room());
    report("every literal and reference is there once", literalsOnce());
    report("relocations are in order, and each is for a word of its own", wordsOnce());
    report("no import is the first symbol, which an early loader misreads", firstSymbol());
    report("no code is changed when it is loaded", codeUnchanged());
    report("both forms of fix-ups give the same memory", formsAgree());
    for (const char *command : {"llvm-objdump @ --macho --private-headers --disassemble --rebase --bind --exports-trie",
                                "llvm-readobj @ --file-headers --sections --symbols --relocations", "llvm-nm @ -m",
                                "llvm-otool @ -l -I -v -t -d"})
        report(std::string(command, std::string(command).find(' ')) + arguments.suffix + " reads it", readBy(command));
    std::printf("%s: %zu bytes\n", file.name.c_str(), file.bytes.size());
    return good;
}

void Checker::report(const std::string &what, const Problem &problem)
{
    if (problem.empty()) {
        std::printf("ok      %s\n", what.c_str());
        return;
    }
    std::printf("FAILED  %s: %s\n", what.c_str(), problem.c_str());
    good = false;
}

Checker::Problem Checker::kind() const
{
    if (file.processor != CPU_TYPE_I386 || file.fileType != MH_DYLIB)
        return "processor " + std::to_string(file.processor) + ", file type " + std::to_string(file.fileType);
    constexpr uint32_t needed = MH_NOUNDEFS | MH_DYLDLINK | MH_TWOLEVEL;
    return (file.flags & needed) == needed ? "" : "flags " + hex(file.flags);
}

// A loader refuses a command that it does not know if the command says that it must be understood.
Checker::Problem Checker::loadCommands() const
{
    constexpr uint32_t firstCompressedSystem = 10 << 16 | 6 << 8;
    for (uint32_t command : file.commands) {
        bool known = command == LC_LOAD_WEAK_DYLIB ||
                     (command == LC_DYLD_INFO_ONLY && file.minimumSystem >= firstCompressedSystem);
        if (command & LC_REQ_DYLD && !known)
            return "command " + hex(command) + " is newer";
    }
    for (const DylibSegment &segment : file.segments)
        if (segment.address % 4096 || segment.fileOffset % 4096 || segment.memorySize % 4096)
            return "segment " + segment.name + " does not lie on page boundaries";
    return file.minimumSystem ? "" : "no minimum system is named";
}

Checker::Problem Checker::oneExport() const
{
    Problem others;
    bool found = false;
    for (const DylibSymbol &symbol : file.symbols) {
        if (!symbol.isExport())
            continue;
        if (symbol.name == arguments.exported)
            found = true;
        else
            others += " " + printable(symbol.name);
    }
    if (!others.empty())
        return "there is more:" + others;
    if (!found)
        return "it is missing";
    if (file.compressed.present && (file.exportTrie.size() != 1 || !file.exportTrie.count(arguments.exported)))
        return "the export tree says otherwise";
    return "";
}

Checker::Problem Checker::imports() const
{
    for (const DylibSymbol &symbol : file.symbols) {
        if (!symbol.isImport())
            continue;
        const ImportRow *row = table.find(symbol.name);
        if (!row)
            return printable(symbol.name) + " is not in the table";
        uint32_t ordinal = symbol.libraryOrdinal();
        const std::string &expected = table.libraries[row->library].installName;
        if (ordinal == 0 || ordinal > file.libraries.size())
            return printable(symbol.name) + " comes from library " + std::to_string(ordinal) + ", which is not loaded";
        const std::string &actual = file.libraries[ordinal - 1].library.installName;
        if (actual != expected)
            return printable(symbol.name) + " comes from " + printable(actual) + " instead of " + expected;
        if (row->weak && !symbol.isWeakImport())
            return printable(symbol.name) + " may be missing, but is imported as if it could not";
    }
    return "";
}

Checker::Problem Checker::importedLibraries() const
{
    for (const DylibLibrary &loaded : file.libraries) {
        auto known = std::find_if(table.libraries.begin(), table.libraries.end(), [&](const Library &library) {
            return library.installName == loaded.library.installName;
        });
        if (known == table.libraries.end())
            return printable(loaded.library.installName) + " is not in the table";
        if (known->compatibilityVersion != loaded.library.compatibilityVersion)
            return printable(loaded.library.installName) + " is needed in version " +
                   versionText(loaded.library.compatibilityVersion);
    }
    return "";
}

Checker::Problem Checker::versions() const
{
    Problem problem;
    auto look = [&](const Library &library) {
        if (library.compatibilityVersion > library.currentVersion)
            problem = printable(library.installName) + " has version " + versionText(library.currentVersion) +
                      " and compatibility version " + versionText(library.compatibilityVersion);
    };
    look(file.identity);
    for (const DylibLibrary &loaded : file.libraries)
        look(loaded.library);
    return problem;
}

Checker::Problem Checker::room() const
{
    return file.commandRoom >= neededRoom ? "" : "there is room for " + std::to_string(file.commandRoom);
}

Checker::Problem Checker::literalsOnce() const
{
    for (const DylibSection &section : file.sections) {
        uint32_t width = section.type() == S_4BYTE_LITERALS || section.type() == S_LITERAL_POINTERS ? 4
                         : section.type() == S_8BYTE_LITERALS                                       ? 8
                         : section.type() == S_16BYTE_LITERALS || section.name == "__cfstring"      ? 16
                                                                                                    : 0;
        if (width == 0 && section.type() != S_CSTRING_LITERALS)
            continue;
        ByteView bytes = file.contents(section);
        std::set<std::string_view> known;
        for (uint64_t offset = 0; offset < bytes.size();) {
            std::string_view one = width == 0 ? bytes.text(offset, bytes.size(), "a literal")
                                              : std::string_view(reinterpret_cast<const char *>(bytes.data()) + offset,
                                                                 std::min<uint64_t>(width, bytes.size() - offset));
            if (!known.insert(one).second)
                return printable(section.name) + " repeats itself at " + hex(section.address + uint32_t(offset));
            offset += width == 0 ? one.size() + 1 : width;
        }
    }
    return "";
}

Checker::Problem Checker::wordsOnce() const
{
    std::vector<uint32_t> local = file.classic.rebases, external, all = local;
    for (const DylibBind &bind : file.classic.binds) {
        all.push_back(bind.address);
        if (!bind.replaces) // of the relocations, not of a section of pointers
            external.push_back(bind.address);
    }
    if (!std::is_sorted(local.begin(), local.end()) || !std::is_sorted(external.begin(), external.end()))
        return "they are not in order";
    std::sort(all.begin(), all.end());
    auto twice = std::adjacent_find(all.begin(), all.end());
    return twice == all.end() ? "" : "the word at " + hex(*twice) + " is changed twice";
}

Checker::Problem Checker::firstSymbol() const
{
    return std::count(file.indirectSymbols.begin(), file.indirectSymbols.end(), 0u) ? "one is" : "";
}

Checker::Problem Checker::codeUnchanged() const
{
    auto isWritable = [&](uint32_t address) { return file.segmentAt(address)->protection & VM_PROT_WRITE; };
    for (const DylibFixups *fixups : {&file.classic, &file.compressed}) {
        for (uint32_t address : fixups->rebases)
            if (!isWritable(address))
                return "the word at " + hex(address) + " is moved";
        for (const DylibBind &bind : fixups->binds)
            if (!isWritable(bind.address))
                return "the word at " + hex(bind.address) + " is bound to " + printable(bind.symbol);
    }
    return "";
}

Checker::Problem Checker::formsAgree() const
{
    if (!file.classic.present || !file.compressed.present)
        return "";
    auto addressOf = [](uint32_t ordinal, const std::string &symbol) {
        return static_cast<uint32_t>(std::hash<std::string>()(symbol) * 31 + ordinal);
    };
    constexpr uint32_t base = 0x12345000;
    if (loadedMemory(file, file.classic, base, addressOf) != loadedMemory(file, file.compressed, base, addressOf))
        return "they do not";
    return "";
}

// Complaints go to stderr, which takes stdout's place; stdout itself is not looked at.
Checker::Problem Checker::readBy(const std::string &command) const
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

} // namespace

int main(int count, char **words)
{
    try {
        Arguments arguments = parseArguments(std::vector<std::string>(words + 1, words + count));
        auto file = parseDylib(arguments.library, readFile(arguments.library));
        Bytes text = readFile(arguments.table);
        auto table = parseImportTable(arguments.table, textOf(text));
        if (!file || !table)
            throw Failure(file ? table.error().message : file.error().message);
        return Checker(arguments, file.value(), table.value()).run() ? 0 : 1;
    } catch (const Failure &failure) {
        std::fprintf(stderr, "check_dylib: %s\n", failure.what());
        if (count == 1)
            std::fputs(usage, stderr);
        return 1;
    }
}
