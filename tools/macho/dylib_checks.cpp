#include "tools/macho/dylib_checks.h"

#include <algorithm>
#include <set>

#include "tools/macho/version.h"

namespace macho {

using namespace format;

namespace {

using Problem = std::string;
constexpr uint32_t neededRoom = 1024;

Problem kind(const DylibFile &file)
{
    if (file.processor != CPU_TYPE_I386 || file.fileType != MH_DYLIB)
        return "processor " + std::to_string(file.processor) + ", file type " + std::to_string(file.fileType);
    constexpr uint32_t needed = MH_NOUNDEFS | MH_DYLDLINK | MH_TWOLEVEL;
    return (file.flags & needed) == needed ? "" : "flags " + hex(file.flags);
}

// A loader refuses a command that it does not know if the command says that it must be understood.
Problem loadCommands(const DylibFile &file)
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

Problem oneExport(const DylibFile &file, const std::string &exported)
{
    Problem others;
    bool found = false;
    for (const DylibSymbol &symbol : file.symbols) {
        if (!symbol.isExport())
            continue;
        if (symbol.name == exported)
            found = true;
        else
            others += " " + printable(symbol.name);
    }
    if (!others.empty())
        return "there is more:" + others;
    if (!found)
        return "it is missing";
    if (file.compressed.present && (file.exportTrie.size() != 1 || !file.exportTrie.count(exported)))
        return "the export tree says otherwise";
    return "";
}

Problem imports(const DylibFile &file, const ImportTable &table)
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

Problem importedLibraries(const DylibFile &file, const ImportTable &table)
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

Problem versions(const DylibFile &file)
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

Problem room(const DylibFile &file)
{
    return file.commandRoom >= neededRoom ? "" : "there is room for " + std::to_string(file.commandRoom);
}

Problem literalsOnce(const DylibFile &file)
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

Problem wordsOnce(const DylibFile &file)
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

Problem firstSymbol(const DylibFile &file)
{
    return std::count(file.indirectSymbols.begin(), file.indirectSymbols.end(), 0u) ? "one is" : "";
}

Problem codeUnchanged(const DylibFile &file)
{
    auto isWritable = [&](uint32_t address) { return file.segmentAt(address)->isWritable(); };
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

Problem formsAgree(const DylibFile &file)
{
    if (!file.classic.present || !file.compressed.present)
        return "";
    auto addressOf = [](const DylibBind &bind) {
        return static_cast<uint32_t>(std::hash<std::string>()(bind.symbol) * 31 + bind.libraryOrdinal);
    };
    constexpr uint32_t base = 0x12345000;
    if (loadedMemory(file, file.classic, base, addressOf) != loadedMemory(file, file.compressed, base, addressOf))
        return "they do not";
    return "";
}

} // namespace

std::vector<DylibCheck> checkDylib(const DylibFile &file, const ImportTable &table, const std::string &exported)
{
    return {
        {"a 32-bit Intel dynamic library with two-level names", kind(file)},
        {"load commands that systems from " + versionText(file.minimumSystem) + " on accept", loadCommands(file)},
        {"one export, " + exported, oneExport(file, exported)},
        {"imports are in the table, from the right libraries", imports(file, table)},
        {"libraries as the table names them", importedLibraries(file, table)},
        {"no library claims to be compatible with more than it is", versions(file)},
        {"room for " + std::to_string(neededRoom) + " bytes of further load commands", room(file)},
        {"every literal and reference is there once", literalsOnce(file)},
        {"relocations are in order, and each is for a word of its own", wordsOnce(file)},
        {"no import is the first symbol, which an early loader misreads", firstSymbol(file)},
        {"no code is changed when it is loaded", codeUnchanged(file)},
        {"both forms of fix-ups give the same memory", formsAgree(file)},
    };
}

} // namespace macho
