#include "tools/macho/image_info.h"

namespace macho {

namespace {

// Code is made for a garbage collector or is not: objects of both kinds cannot be in one library.
constexpr uint32_t garbageCollectionFlags = 0x2 | 0x4;

} // namespace

ImageInfo mergeImageInfo(const std::vector<ObjectFile> &objects)
{
    ImageInfo merged;
    bool found = false;
    for (const ObjectFile &object : objects) {
        for (const Section &section : object.sections) {
            if (section.segment != "__OBJC" || section.name != "__image_info" || section.contents.size() == 0)
                continue;
            if (section.contents.size() != ImageInfo::size)
                fail(object.describe(section), ": damaged: it has ", std::to_string(section.contents.size()),
                     " bytes instead of 8");
            ImageInfo info{load32(section.contents.data()), load32(section.contents.data() + 4)};
            if (found && (info.version != merged.version || ((info.flags ^ merged.flags) & garbageCollectionFlags)))
                fail(object.describe(section), ": version ", std::to_string(info.version), " and flags ",
                     hex(info.flags), " do not go together with those of the objects before (",
                     std::to_string(merged.version), ", ", hex(merged.flags), ")");
            // Any other flag promises something about all the code.
            merged = {info.version, found ? info.flags & merged.flags : info.flags};
            found = true;
        }
    }
    return merged;
}

} // namespace macho
