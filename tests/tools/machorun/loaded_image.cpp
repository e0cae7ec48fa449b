#include "tests/tools/machorun/loaded_image.h"

#include <ostream>

using machorun::Fixups;

std::string imagePath(const std::string &name)
{
    return std::string(IMAGE_DIR "/") + name + ".dylib";
}

std::string nameOf(const ImageVariant &variant)
{
    return std::string(variant.level) + (variant.fixups == Fixups::Classic ? "Classic" : "Compressed");
}

void PrintTo(const ImageVariant &variant, std::ostream *stream)
{
    *stream << nameOf(variant);
}

std::vector<ImageVariant> everyImage()
{
    std::vector<ImageVariant> variants;
    for (const char *level : {"O0", "O1", "O2", "O3"}) {
        for (Fixups fixups : {Fixups::Classic, Fixups::Compressed})
            variants.push_back({level, fixups});
    }
    return variants;
}

void LoadedImage::load(machorun::Options options)
{
    std::string error;
    options.fixups = GetParam().fixups;
    library = machorun::Load(imagePath(GetParam().level), error, options);
    if (!library) {
        ADD_FAILURE() << error;
        abort();
    }
}
