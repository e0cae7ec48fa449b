#include "tools/macho/contents.h"

#include <algorithm>

#include "tools/macho/image_info.h"
#include "tools/macho/relocations.h"

namespace macho {

using namespace format;

namespace {

constexpr uint8_t noOperation = 0x90; // fills the gaps between functions

class Maker {
public:
    Maker(const Layout &layout, const CallFrameTables &callFrames)
        : layout(layout), callFrames(callFrames), addresses(layout)
    {
    }
    Contents make();

private:
    void copySection(const OutputSection &section);
    void aimCallFrames(uint32_t object, uint32_t section, const CallFrameTable &table);
    void requireSeparateWords() const;
    void writeStubs();
    void writeLocalPointers();
    void writeImageInfo();
    uint8_t *at(const OutputSection &section, uint32_t offset) { return &contents.image[section.fileOffset + offset]; }

    const Layout &layout;
    const CallFrameTables &callFrames;
    Addresses addresses;
    Contents contents;
};

Contents Maker::make()
{
    contents.image.resize(layout.endFileOffset());
    for (const OutputSegment &segment : layout.segments)
        for (const OutputSection &section : segment.sections)
            if (!section.isZeroFill() && section.size != 0)
                copySection(section);
    for (uint32_t object = 0; object < layout.objects.size(); object++)
        for (uint32_t section = 0; section < layout.objects[object].sections.size(); section++)
            if (auto frames = callFrames.find({object, section}); frames != callFrames.end())
                aimCallFrames(object, section, frames->second);
            else
                settleRelocations(object, section, addresses, contents.image, contents.fixups);
    writeStubs();
    writeLocalPointers();
    writeImageInfo();
    for (size_t import : layout.indirections.importPointers())
        contents.fixups.pointerBinds.push_back({addresses.ofPointer(import), import, 0});

    Fixups &fixups = contents.fixups;
    std::sort(fixups.rebases.begin(), fixups.rebases.end());
    std::sort(fixups.binds.begin(), fixups.binds.end(),
              [](const Bind &left, const Bind &right) { return left.address < right.address; });
    requireSeparateWords();
    return std::move(contents);
}

// A word that the loader changes twice would come out wrong, each loader having an order of its own.
void Maker::requireSeparateWords() const
{
    std::vector<uint32_t> words = contents.fixups.rebases;
    for (const Bind &bind : contents.fixups.binds)
        words.push_back(bind.address);
    std::sort(words.begin(), words.end());
    for (size_t index = 1; index < words.size(); index++)
        if (words[index] - words[index - 1] < pointerSize)
            fail("damaged: two relocations change the word at ", hex(words[index]), " of the library");
}

void Maker::copySection(const OutputSection &section)
{
    if (section.segment == "__TEXT" && section.name == "__text")
        std::fill_n(at(section, 0), section.size, noOperation);
    for (const OutputSection::Part &part : section.parts) {
        const Section &source = layout.objects[part.place.object].sections[part.place.section];
        if (source.contents.size() != 0)
            std::copy_n(source.contents.data() + (part.place.address - source.address), part.size,
                        at(section, part.offset));
    }
}

void Maker::aimCallFrames(uint32_t number, uint32_t section, const CallFrameTable &table)
{
    const ObjectFile &object = layout.objects[number];
    uint32_t start = object.sections[section].address;
    for (const CallFrameRecord &record : table.records) {
        if (layout.roomAt({number, section, start + record.start}) == 0)
            continue;
        uint32_t address = *layout.addressOf({number, section, start + record.start});
        uint8_t *bytes = &contents.image[layout.fileOffsetOf(address)];
        if (record.common != record.start)
            store32(bytes + 4, address + 4 - *layout.addressOf({number, section, start + record.common}));
        for (const CallFramePointer &pointer : record.pointers) {
            std::string where = object.describe(object.sections[section]) + "+" + hex(pointer.offset);
            Place target = addresses.placeAt(number, pointer.target, where);
            uint32_t aim = pointer.kind == CallFramePointer::Handler ? addresses.of(target, where)
                                                                     : addresses.ofOwnCopy(target, where);
            uint32_t offset = pointer.offset - record.start;
            store32(bytes + offset, aim - (address + offset));
        }
    }
}

// A stub finds its pointer from its own address: call the next instruction, take the return address, and jump through
// the pointer that lies at a known distance from it. Register ecx holds nothing across a call.
void Maker::writeStubs()
{
    static constexpr uint8_t code[Layout::stubSize - pointerSize] = {
        0xe8, 0,    0, 0, 0, // call next
        0x59,                // next: popl %ecx
        0xff, 0xa1,          // jmpl *distance(%ecx)
    };
    constexpr uint32_t next = 5;
    for (size_t import : layout.indirections.stubs()) {
        uint32_t address = addresses.ofStub(import);
        uint8_t *stub = at(*layout.stubs(), address - layout.stubs()->address);
        std::copy(std::begin(code), std::end(code), stub);
        store32(stub + sizeof code, addresses.ofPointer(import) - (address + next));
    }
}

void Maker::writeLocalPointers()
{
    for (uint32_t number = 0; number < layout.indirections.localPointers().size(); number++) {
        const OutputSection &section = *layout.localPointers();
        uint32_t offset = number * pointerSize;
        store32(at(section, offset),
                addresses.of(layout.indirections.localPointers()[number], "a pointer to the library itself"));
        contents.fixups.rebases.push_back(section.address + offset);
    }
}

void Maker::writeImageInfo()
{
    const OutputSection *section = layout.find("__OBJC", "__image_info");
    if (!section || section->isZeroFill())
        return;
    ImageInfo info = mergeImageInfo(layout.objects); // which has checked that there are eight bytes
    store32(&contents.image[section->fileOffset], info.version);
    store32(&contents.image[section->fileOffset + 4], info.flags);
}

} // namespace

Contents makeContents(const Layout &layout, const CallFrameTables &callFrames)
{
    return Maker(layout, callFrames).make();
}

} // namespace macho
