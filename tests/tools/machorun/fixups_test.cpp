// The two encodings of a file's fix-ups give the same memory.
#include "tests/tools/machorun/loaded_image.h"
#include "tools/machorun/fixups.h"

using namespace machorun;

namespace {

// What is in memory after the fix-ups, pointers into the image counted from its start.
std::vector<uint32_t> memoryAfter(void (*apply)(const ImageFile &, const MappedImage &, const Imports &),
                                  const ImageFile &file)
{
    MappedImage image(file);
    apply(file, image, Imports({}));
    std::vector<uint32_t> words;
    for (const Segment &segment : file.segments()) {
        if (segment.name == "__LINKEDIT")
            continue; // read by loaders only, and different by its nature
        auto *start = reinterpret_cast<const uint32_t *>(image.at(segment.address));
        for (uint32_t index = 0; index < segment.size / sizeof(uint32_t); index++) {
            bool isInside = image.contains(reinterpret_cast<const void *>(start[index]));
            words.push_back(isInside ? start[index] - image.slide() : start[index]);
        }
    }
    return words;
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
    ImageFile file(GetParam());
    EXPECT_EQ(memoryAfter(ApplyClassicFixups, file), memoryAfter(ApplyCompressedFixups, file));
}

TEST_P(BothEncodings, GiveTheSameExports)
{
    ImageFile file(GetParam());
    MappedImage image(file);
    ASSERT_FALSE(file.exportedSymbols().empty());
    for (const Symbol &symbol : file.exportedSymbols()) {
        EXPECT_EQ(FindCompressedExport(file, image, symbol.name), FindClassicExport(file, image, symbol.name))
            << symbol.name;
        EXPECT_NE(FindClassicExport(file, image, symbol.name), nullptr);
    }
}
