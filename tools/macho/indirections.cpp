#include "tools/macho/indirections.h"

namespace macho {

using namespace format;

Indirections::Indirections(const std::vector<ObjectFile> &objects, const Symbols &symbols)
    : objects(objects), symbols(symbols)
{
    for (uint32_t number = 0; number < objects.size(); number++) {
        const ObjectFile &object = objects[number];
        for (uint32_t section = 0; section < object.sections.size(); section++) {
            if (object.sections[section].isIndirection())
                addEntries(number, section);
            if (object.sections[section].isForDebugging())
                continue;
            for (const Relocation &relocation : object.sections[section].relocations) {
                if (!relocation.external || !relocation.pcRelative)
                    continue;
                Target target = symbols.resolve(number, relocation.target);
                if (target.kind == Target::Imported)
                    addStub(target.import);
            }
        }
    }
}

void Indirections::addEntries(uint32_t object, uint32_t number)
{
    const Section &section = objects[object].sections[number];
    std::vector<Indirection> &list = entries[{object, number}];
    for (uint32_t entry = 0; entry < section.size / section.entrySize(); entry++) {
        Target target = entryTarget(object, section, entry);
        if (target.kind == Target::Absolute || (target.kind == Target::ImageHeader && section.holdsStubs()))
            fail(objects[object].describe(section), ": entry ", std::to_string(entry),
                 " leads to an absolute address, which is not supported");
        if (target.kind == Target::Imported && section.holdsStubs())
            list.push_back({Indirection::Stub, addStub(target.import), {}});
        else if (target.kind == Target::Imported)
            list.push_back({Indirection::ImportPointer, addImportPointer(target.import), {}});
        else if (section.holdsStubs())
            list.push_back({Indirection::Direct, 0, target.place});
        else
            list.push_back({Indirection::LocalPointer, addLocalPointer(target), {}});
    }
}

Target Indirections::entryTarget(uint32_t number, const Section &section, uint32_t entry) const
{
    const ObjectFile &object = objects[number];
    uint32_t index = object.indirectSymbols[section.firstIndirect + entry];
    if (index != INDIRECT_SYMBOL_LOCAL)
        return symbols.resolve(number, index);
    // The compiler wrote the address itself into the pointer.
    uint32_t address = load32(section.contents.data() + pointerSize * entry);
    int target = object.sectionAt(address);
    if (target < 0 || object.sections[target].isIndirection())
        fail(object.describe(section), ": damaged: entry ", std::to_string(entry), " leads to ", hex(address),
             ", which no section contains");
    return Target{Target::Defined, symbols.surviving({number, static_cast<uint32_t>(target), address})};
}

uint32_t Indirections::addImportPointer(size_t import)
{
    auto [known, isNew] = importPointerNumbers.try_emplace(import, static_cast<uint32_t>(importPointerList.size()));
    if (isNew)
        importPointerList.push_back(import);
    return known->second;
}

uint32_t Indirections::addLocalPointer(const Target &target)
{
    auto [known, isNew] = localPointerNumbers.try_emplace({target.kind == Target::ImageHeader, target.place},
                                                          static_cast<uint32_t>(localPointerList.size()));
    if (isNew)
        localPointerList.push_back(target);
    return known->second;
}

uint32_t Indirections::addStub(size_t import)
{
    addImportPointer(import); // which the stub jumps through
    auto [known, isNew] = stubNumbers.try_emplace(import, static_cast<uint32_t>(stubList.size()));
    if (isNew)
        stubList.push_back(import);
    return known->second;
}

Indirections::Entry Indirections::entryAt(const Place &place) const
{
    const ObjectFile &object = objects[place.object];
    const Section &section = object.sections[place.section];
    const std::vector<Indirection> &list = entries.at({place.object, place.section});
    uint32_t distance = place.address - section.address;
    if (distance / section.entrySize() >= list.size())
        fail(object.describe(section), ": damaged: a reference past its last entry");
    return {list[distance / section.entrySize()], distance % section.entrySize()};
}

} // namespace macho
