#include "tools/macho/options.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

#include "tools/macho/version.h"

namespace macho {

const char usage[] =
    "macho_ld links i386 Mach-O object files into a dynamic library for macOS.\n"
    "\n"
    "  macho_ld -o LIBRARY -symbols TABLE [options] OBJECT...\n"
    "\n"
    "  -o FILE                         the library to write\n"
    "  -symbols FILE                   what may be imported, and from which library\n"
    "  -export NAME                    a symbol to export; may be repeated. Without this and the next option every\n"
    "  -exported_symbols_list FILE     global symbol is exported. The list holds one name per line, '#' a comment\n"
    "  -install_name NAME              the library's name for those who link to it (default: the output's file name)\n"
    "  -current_version X[.Y[.Z]]      (default 1.0.0)\n"
    "  -compatibility_version X[.Y[.Z]] (default: the current version up to its first number\n"
    "                                  that is not 0, then zeros)\n"
    "  -macosx_version_min X.Y         the least system (default 10.4; 10.6 with -fixups compressed)\n"
    "  -fixups classic|compressed|both how the loader is told what to change in memory (default both)\n"
    "  -strip                          leave out local symbols\n"
    "  -map FILE                       also write a list of sections and symbols\n"
    "  -help                           show this text\n";

namespace {

constexpr uint32_t firstSystem = 10 << 16 | 4 << 8, firstCompressedSystem = 10 << 16 | 6 << 8;

struct Reader {
    const std::vector<std::string> &arguments;
    size_t next = 0;
    std::string option = {};
    CommandLine line = {};
    std::optional<uint32_t> minimumSystem = {}, compatibilityVersion = {};

    void read();
    void check();

    const std::string &value()
    {
        if (next == arguments.size())
            fail("option ", option, " needs a value");
        return arguments[next++];
    }
    uint32_t version()
    {
        const std::string &text = value();
        auto version = parseVersion(text);
        if (!version)
            fail("option ", option, ": ", printable(text), " is not a version: X, X.Y or X.Y.Z is expected");
        return *version;
    }
    FixupForm fixups()
    {
        static const std::map<std::string, FixupForm> forms = {
            {"classic", FixupForm::Classic}, {"compressed", FixupForm::Compressed}, {"both", FixupForm::Both}};
        const std::string &name = value();
        auto form = forms.find(name);
        if (form == forms.end())
            fail("option -fixups: ", printable(name), " is none of classic, compressed and both");
        return form->second;
    }
};

void Reader::read()
{
    const std::map<std::string, std::function<void()>> options = {
        {"-o", [&] { line.output = value(); }},
        {"-symbols", [&] { line.symbolTable = value(); }},
        {"-export", [&] { line.link.exports.push_back(value()); }},
        {"-exported_symbols_list", [&] { line.exportLists.push_back(value()); }},
        {"-install_name", [&] { line.link.installName = value(); }},
        {"-current_version", [&] { line.link.currentVersion = version(); }},
        {"-compatibility_version", [&] { compatibilityVersion = version(); }},
        {"-macosx_version_min", [&] { minimumSystem = version(); }},
        {"-fixups", [&] { line.link.fixups = fixups(); }},
        {"-strip", [&] { line.link.strip = true; }},
        {"-map", [&] { line.map = value(); }},
        {"-help", [&] { line.help = true; }},
        {"--help", [&] { line.help = true; }},
    };
    while (next < arguments.size()) {
        option = arguments[next++];
        if (auto known = options.find(option); known != options.end())
            known->second();
        else if (!option.empty() && option[0] == '-')
            fail("unknown option ", printable(option), "; -help shows them all");
        else
            line.objects.push_back(option);
    }
}

void Reader::check()
{
    if (line.output.empty())
        fail("option -o is missing");
    if (line.symbolTable.empty())
        fail("option -symbols is missing");
    if (line.objects.empty())
        fail("no object files to link");
    if (std::count(line.objects.begin(), line.objects.end(), line.output))
        fail(printable(line.output), ": the output would overwrite an object file");
    if (line.link.installName.empty())
        line.link.installName = line.output.substr(line.output.find_last_of('/') + 1);
    line.link.compatibilityVersion = compatibilityVersion.value_or(compatibilityVersionOf(line.link.currentVersion));
    bool compressedOnly = line.link.fixups == FixupForm::Compressed;
    line.link.minimumSystem = minimumSystem.value_or(compressedOnly ? firstCompressedSystem : firstSystem);
    if (compressedOnly && line.link.minimumSystem < firstCompressedSystem)
        fail("systems before 10.6 cannot read compressed fix-ups: -fixups both serves them, and newer ones too");
    if (line.link.minimumSystem < firstSystem)
        fail("systems before 10.4 are not supported");
}

} // namespace

CommandLine parseCommandLine(const std::vector<std::string> &arguments)
{
    Reader reader{arguments};
    reader.read();
    if (!reader.line.help)
        reader.check();
    return reader.line;
}

std::vector<std::string> parseExportList(std::string_view text)
{
    std::vector<std::string> names;
    while (!text.empty()) {
        size_t end = text.find('\n');
        std::string_view name = text.substr(0, end);
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
        name = name.substr(0, name.find('#'));
        size_t first = name.find_first_not_of(" \t\r");
        if (first != name.npos)
            names.emplace_back(name.substr(first, name.find_last_not_of(" \t\r") + 1 - first));
    }
    return names;
}

} // namespace macho
