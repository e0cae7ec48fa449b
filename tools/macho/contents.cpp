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
    Maker(const std::vector<ObjectFile> &objects, const Symbols &symbols, const Indirections &indirections,
          const CallFrameTables &callFrames, const Layout &layout)
        : objects(objects), indirections(indirections), symbols(symbols), callFrames(callFrames), layout(layout),
          addresses(objects, symbols, indirections, layout)
    {
    }
    Contents make();

private:
    void copySection(const OutputSection &section);
    void copyPart(const OutputSection &section, const OutputSection::Part &part);
    void aimCallFrames(const CallFrameTable &table, const SectionCopy &copy);
    void writeStubs();
    void writeLocalPointers();
    void writeImageInfo();
    uint8_t *at(const OutputSection &section, uint32_t offset) { return &contents.image[section.fileOffset + offset]; }

    const std::vector<ObjectFile> &objects;
    const Indirections &indirections;
    const Symbols &symbols;
    const CallFrameTables &callFrames;
    const Layout &layout;
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
    writeStubs();
    writeLocalPointers();
    writeImageInfo();
    for (size_t import : indirections.importPointers())
        contents.fixups.pointerBinds.push_back({addresses.ofPointer(import), import, 0});

    Fixups &fixups = contents.fixups;
    std::sort(fixups.rebases.begin(), fixups.rebases.end());
    std::sort(fixups.binds.begin(), fixups.binds.end(),
              [](const Bind &left, const Bind &right) { return left.address < right.address; });
    return std::move(contents);
}

void Maker::copySection(const OutputSection &section)
{
    if (section.segment == "__TEXT" && section.name == "__text")
        std::fill_n(at(section, 0), section.size, noOperation);
    for (const OutputSection::Part &part : section.parts)
        copyPart(section, part);
}

void Maker::copyPart(const OutputSection &section, const OutputSection::Part &part)
{
    const Section &source = objects[part.object].sections[part.section];
    auto frames = callFrames.find({part.object, part.section});
    size_t size = frames == callFrames.end() ? source.contents.size() : frames->second.size;
    if (size == 0)
        return;
    SectionCopy copy{part.object, part.section, at(section, part.offset), section.address + part.offset};
    std::copy_n(source.contents.data(), size, copy.bytes);
    if (frames == callFrames.end())
        settleRelocations(copy, objects, symbols, addresses, contents.fixups);
    else
        aimCallFrames(frames->second, copy);
}

void Maker::aimCallFrames(const CallFrameTable &table, const SectionCopy &copy)
{
    const ObjectFile &object = objects[copy.object];
    for (const CallFramePointer &pointer : table.pointers) {
        std::string where = object.describe(object.sections[copy.section]) + "+" + hex(pointer.offset);
        Place target = addresses.placeAt(copy.object, pointer.target, where);
        uint32_t address =
            pointer.kind == CallFramePointer::Code ? addresses.ofOwnCopy(target, where) : addresses.of(target, where);
        store32(copy.bytes + pointer.offset, address - (copy.address + pointer.offset));
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
    for (size_t import : indirections.stubs()) {
        uint32_t address = addresses.ofStub(import);
        uint8_t *stub = at(*layout.stubs(), address - layout.stubs()->address);
        std::copy(std::begin(code), std::end(code), stub);
        store32(stub + sizeof code, addresses.ofPointer(import) - (address + next));
    }
}

void Maker::writeLocalPointers()
{
    for (uint32_t number = 0; number < indirections.localPointers().size(); number++) {
        const OutputSection &section = *layout.localPointers();
        uint32_t offset = number * pointerSize;
        store32(at(section, offset),
                addresses.of(indirections.localPointers()[number], "a pointer to the library itself"));
        contents.fixups.rebases.push_back(section.address + offset);
    }
}

void Maker::writeImageInfo()
{
    const OutputSection *section = layout.find("__OBJC", "__image_info");
    if (!section || section->isZeroFill())
        return;
    ImageInfo info = mergeImageInfo(objects); // which has checked that there are eight bytes
    store32(&contents.image[section->fileOffset], info.version);
    store32(&contents.image[section->fileOffset + 4], info.flags);
}

} // namespace

Contents makeContents(const std::vector<ObjectFile> &objects, const Symbols &symbols, const Indirections &indirections,
                      const CallFrameTables &callFrames, const Layout &layout)
{
    return Maker(objects, symbols, indirections, callFrames, layout).make();
}

} // namespace macho
