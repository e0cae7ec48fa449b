#include "tools/macho/export_trie.h"

#include <gtest/gtest.h>

#include "tools/macho/dylib_fixups.h"

namespace macho {
namespace {

std::map<std::string, uint32_t> readBack(const Bytes &trie)
{
    DylibFile file;
    file.bytes = trie;
    readExportTrie(file, 0, static_cast<uint32_t>(trie.size()));
    return file.exportTrie;
}

TEST(ExportTrie, OneNameIsOneEdge)
{
    EXPECT_EQ(exportTrie({{"_main", 0x1234}}),
              (Bytes{0x00, 0x01, '_', 'm', 'a', 'i', 'n', 0x00, 0x09, 0x03, 0x00, 0xb4, 0x24, 0x00}));
}

TEST(ExportTrie, NamesComeBack)
{
    std::map<std::string_view, uint32_t> exports = {{"_a", 1},      {"_ab", 0x80},      {"_abc", 0x12345},
                                                    {"_abd", 4},    {"_b", 0x7fffffff}, {"b", 6},
                                                    {"_abcdef", 7}, {"__ZN3fooEv", 8}};
    std::map<std::string, uint32_t> expected(exports.begin(), exports.end());
    EXPECT_EQ(readBack(exportTrie(exports)), expected);
}

TEST(ExportTrie, ManyNestedNamesComeBack)
{
    std::vector<std::string> names;
    std::map<std::string_view, uint32_t> exports;
    for (int length = 1; length <= 600; length++)
        names.push_back(std::string(length, 'x'));
    for (uint32_t index = 0; index < names.size(); index++)
        exports[names[index]] = index * 1000;
    std::map<std::string, uint32_t> expected(exports.begin(), exports.end());
    EXPECT_EQ(readBack(exportTrie(exports)), expected);
}

} // namespace
} // namespace macho
