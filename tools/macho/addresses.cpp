#include "tools/macho/addresses.h"

namespace macho {

uint32_t Addresses::of(const Place &place, const std::string &where) const
{
    return ofOwnCopy(layout.symbols.surviving(place), where);
}

uint32_t Addresses::ofOwnCopy(const Place &place, const std::string &where) const
{
    const Section &section = layout.objects[place.object].sections[place.section];
    if (section.isIndirection())
        return ofEntry(place, where);
    auto address = layout.addressOf(place);
    if (!address)
        fail(where, ": a reference into section ", printable(section.segment), ",", printable(section.name), " of ",
             printable(layout.objects[place.object].name),
             layout.hasPartOf(place.object, place.section) ? ", in the middle of a definition that is not used"
                                                           : ", no part of which is in the library");
    return *address;
}

uint32_t Addresses::of(const Target &target, const std::string &where) const
{
    if (target.kind == Target::Defined)
        return of(target.place, where);
    if (target.kind == Target::ImageHeader)
        return 0;
    fail(where, ": a reference to an absolute symbol is not supported");
}

uint32_t Addresses::ofPointer(size_t import) const
{
    return layout.importPointers()->address + layout.indirections.pointerOf(import) * format::pointerSize;
}

uint32_t Addresses::ofStub(size_t import) const
{
    return layout.stubs()->address + layout.indirections.stubOf(import) * Layout::stubSize;
}

Place Addresses::placeAt(uint32_t object, uint32_t address, const std::string &where) const
{
    int section = layout.objects[object].sectionAt(address);
    if (section < 0)
        fail(where, ": damaged: a reference to ", hex(address), ", which no section contains");
    return {object, static_cast<uint32_t>(section), address};
}

uint32_t Addresses::ofEntry(const Place &place, const std::string &where) const
{
    auto [leadsTo, distance] = layout.indirections.entryAt(place);
    switch (leadsTo.kind) {
    case Indirection::ImportPointer:
        return layout.importPointers()->address + leadsTo.number * format::pointerSize + distance;
    case Indirection::LocalPointer:
        return layout.localPointers()->address + leadsTo.number * format::pointerSize + distance;
    case Indirection::Stub:
    case Indirection::Direct:
        break;
    }
    if (distance != 0)
        fail(where, ": damaged: a reference into the middle of a stub");
    if (leadsTo.kind == Indirection::Stub)
        return layout.stubs()->address + leadsTo.number * Layout::stubSize;
    const ObjectFile &object = layout.objects[leadsTo.place.object];
    if (object.sections[leadsTo.place.section].isIndirection())
        fail(where, ": damaged: a stub that leads to a pointer or a stub");
    return of(leadsTo.place, where);
}

} // namespace macho
