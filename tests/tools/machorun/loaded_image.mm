#include "tests/tools/machorun/loaded_image.h"

#import <Foundation/Foundation.h>

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

// Both encodings give the same memory at every level (fixups_test.cpp), so it is enough to run one level with both.
std::vector<ImageVariant> everyImage()
{
    return {{"O0", Fixups::Compressed},
            {"O1", Fixups::Classic},
            {"O2", Fixups::Classic},
            {"O2", Fixups::Compressed},
            {"O3", Fixups::Compressed}};
}

LoadedImage::Pool::Pool() : _pool([[NSAutoreleasePool alloc] init]) {}

LoadedImage::Pool::~Pool()
{
    [static_cast<NSAutoreleasePool *>(_pool) release];
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
