#include "tools/macho/relocations.h"

namespace macho {

using namespace format;

namespace {

class Settler {
public:
    Settler(uint32_t number, uint32_t section, const Addresses &addresses, Fixups &fixups)
        : number(number), object(addresses.layout.objects[number]), section(object.sections[section]),
          addresses(addresses), fixups(fixups)
    {
    }

    // Of the four bytes of `copy`, which lie at `address` in the library.
    void settle(const Relocation &relocation, uint8_t *copy, uint32_t address);

private:
    // What the loader must not change, be it code or constants beside it.
    bool isCode() const { return section.segment == "__TEXT"; }
    uint32_t addressOf(const Place &place) const { return addresses.of(place, where); }
    void settleDifference(const Relocation &relocation);
    void settleInside(const Relocation &relocation, const Place &target);
    void settleSymbol(const Relocation &relocation);
    std::string_view nameAt(const Place &place) const;
    [[noreturn]] void refuseInCode(std::string_view symbol) const;

    uint32_t number;
    const ObjectFile &object;
    const Section &section;
    const Addresses &addresses;
    Fixups &fixups;
    std::string where; // "a.o: __TEXT,__text+0x10"
    uint8_t *word = nullptr;
    uint32_t oldAddress = 0, newAddress = 0; // of the word
};

void Settler::settle(const Relocation &relocation, uint8_t *copy, uint32_t address)
{
    where = object.describe(section) + "+" + hex(relocation.offset);
    word = copy;
    oldAddress = section.address + relocation.offset;
    newAddress = address;
    if (relocation.type != GENERIC_RELOC_VANILLA)
        settleDifference(relocation);
    else if (relocation.scattered)
        settleInside(relocation, addresses.placeAt(number, relocation.address, where));
    else if (relocation.external)
        settleSymbol(relocation);
    else
        settleInside(relocation, {number, relocation.target - 1,
                                  load32(word) + (relocation.pcRelative ? oldAddress + pointerSize : 0)});
}

// The word holds the distance of two addresses: both may have moved.
void Settler::settleDifference(const Relocation &relocation)
{
    Place minuend = addresses.placeAt(number, relocation.address, where);
    Place subtrahend = addresses.placeAt(number, relocation.subtrahend, where);
    uint32_t moved = (addressOf(minuend) - relocation.address) - (addressOf(subtrahend) - relocation.subtrahend);
    store32(word, load32(word) + moved);
}

// The word leads to a place of the same object: it moves with that place.
void Settler::settleInside(const Relocation &relocation, const Place &target)
{
    uint32_t moved = addressOf(target) - target.address;
    if (relocation.pcRelative) {
        store32(word, load32(word) + moved - (newAddress - oldAddress));
        return;
    }
    if (isCode())
        refuseInCode(nameAt(target));
    store32(word, load32(word) + moved);
    fixups.rebases.push_back(newAddress);
}

// The word leads to whatever a symbol stands for; what it holds is added to that.
void Settler::settleSymbol(const Relocation &relocation)
{
    const Symbol &symbol = object.symbols[relocation.target];
    Target target = addresses.layout.symbols.resolve(number, relocation.target);
    bool imported = target.kind == Target::Imported;
    if (relocation.pcRelative) {
        uint32_t address = imported ? addresses.ofStub(target.import) : addresses.of(target, where);
        store32(word, load32(word) + address - (newAddress - oldAddress));
        return;
    }
    if (isCode())
        refuseInCode(symbol.name);
    if (imported) {
        fixups.binds.push_back({newAddress, target.import, static_cast<int32_t>(load32(word))});
    } else {
        store32(word, load32(word) + addresses.of(target, where));
        fixups.rebases.push_back(newAddress);
    }
}

// The symbol that a place of this object is for, or nothing.
std::string_view Settler::nameAt(const Place &place) const
{
    const Section &target = object.sections[place.section];
    if (target.isIndirection() && target.contains(place.address)) {
        uint32_t entry = (place.address - target.address) / target.entrySize();
        uint32_t index = object.indirectSymbols[target.firstIndirect + entry];
        return index < object.symbols.size() ? object.symbols[index].name : std::string_view{};
    }
    for (const Symbol &symbol : object.symbols)
        if (symbol.isInSection() && symbol.section == place.section + 1 && symbol.value == place.address)
            return symbol.name;
    return {};
}

void Settler::refuseInCode(std::string_view symbol) const
{
    fail(where, ": a text relocation would be needed", symbol.empty() ? "" : " for symbol " + printable(symbol),
         ": compile with -fPIC, and keep addresses out of __TEXT");
}

} // namespace

void settleRelocations(uint32_t object, uint32_t number, const Addresses &addresses, Bytes &image, Fixups &fixups)
{
    const Layout &layout = addresses.layout;
    const Section &section = layout.objects[object].sections[number];
    Settler settler(object, number, addresses, fixups);
    for (const Relocation &relocation : section.relocations) {
        Place place{object, number, section.address + relocation.offset};
        uint32_t room = layout.roomAt(place);
        if (room == 0)
            continue;
        if (room < pointerSize)
            fail(layout.objects[object].describe(section), "+", hex(relocation.offset),
                 ": damaged: a relocation across the end of a definition or a literal");
        uint32_t address = *layout.addressOf(place);
        settler.settle(relocation, &image[layout.fileOffsetOf(address)], address);
    }
}

} // namespace macho
