#include "tools/macho/import_table.h"

#include "tools/macho/version.h"

namespace macho {

namespace {

std::vector<std::string_view> wordsOf(std::string_view line)
{
    std::vector<std::string_view> words;
    line = line.substr(0, line.find('#'));
    constexpr std::string_view blanks = " \t\r";
    for (size_t start = line.find_first_not_of(blanks); start != line.npos;) {
        size_t end = line.find_first_of(blanks, start);
        words.push_back(line.substr(start, end - start));
        start = end == line.npos ? end : line.find_first_not_of(blanks, end);
    }
    return words;
}

void addLine(ImportTable &table, const std::vector<std::string_view> &words, const std::string &where)
{
    if (words[0] == "library") {
        auto current = words.size() == 4 ? parseVersion(words[2]) : std::nullopt;
        auto compatibility = words.size() == 4 ? parseVersion(words[3]) : std::nullopt;
        if (!current || !compatibility)
            fail(where, "expected: library INSTALL_NAME CURRENT_VERSION COMPATIBILITY_VERSION");
        requireOrderedVersions(where, *current, *compatibility);
        table.libraries.push_back({std::string(words[1]), *current, *compatibility});
        return;
    }
    bool weak = words.size() == 2 && words[1] == "weak";
    if (words.size() > 1 && !weak)
        fail(where, "expected: SYMBOL or SYMBOL weak");
    if (table.libraries.empty())
        fail(where, "symbol ", printable(words[0]), " stands before the first library");
    if (!table.rows.try_emplace(std::string(words[0]), ImportRow{table.libraries.size() - 1, weak}).second)
        fail(where, "symbol ", printable(words[0]), " is listed twice");
}

} // namespace

ImportTable parseImportTable(std::string_view fileName, std::string_view text)
{
    ImportTable table;
    for (size_t number = 1; !text.empty(); number++) {
        size_t end = text.find('\n');
        auto words = wordsOf(text.substr(0, end));
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
        if (!words.empty())
            addLine(table, words, printable(fileName) + ":" + std::to_string(number) + ": ");
    }
    return table;
}

} // namespace macho
