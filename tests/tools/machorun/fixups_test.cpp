// The two encodings of a file's fix-ups give the same memory.
#include "tests/tools/machorun/loaded_image.h"
#include "tools/macho/files.h"
#include "tools/machorun/imports.h"
#include "tools/machorun/loadable_file.h"

using namespace machorun;

namespace {

macho::DylibFile fileAt(const std::string &path)
{
    return LoadableFile(path, macho::readFile(path));
}

class BothEncodings : public ::testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Of, BothEncodings,
                         ::testing::Values(PRODUCT_DYLIB, imagePath("O0"), imagePath("O1"), imagePath("O2"),
                                           imagePath("O3")),
                         [](const auto &test) {
                             return std::string(test.param == PRODUCT_DYLIB ? "ThePlugin" : "TheImageAt") +
                                    (test.param == PRODUCT_DYLIB ? "" : test.param.substr(test.param.size() - 8, 2));
                         });

} // namespace

TEST_P(BothEncodings, GiveTheSameMemory)
{
    macho::DylibFile file = fileAt(GetParam());
    EXPECT_EQ(loadedMemory(file, file.classic, 0x12345000, ImportsWithout({})),
              loadedMemory(file, file.compressed, 0x12345000, ImportsWithout({})));
}

TEST_P(BothEncodings, GiveTheSameExports)
{
    macho::DylibFile file = fileAt(GetParam());
    std::map<std::string, uint32_t> exports;
    for (const macho::DylibSymbol &symbol : file.symbols) {
        if (symbol.isExport())
            exports[symbol.name] = symbol.value;
    }
    EXPECT_FALSE(exports.empty());
    EXPECT_EQ(file.exportTrie, exports);
}
