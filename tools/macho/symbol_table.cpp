#include "tools/macho/symbol_table.h"

#include <algorithm>
#include <set>

namespace macho {

using namespace format;

namespace {

class Maker {
public:
    Maker(const Layout &layout, const std::vector<uint32_t> &ordinals, const LinkOptions &options)
        : layout(layout), ordinals(ordinals), options(options)
    {
        names.u8(0);
    }
    SymbolTable make();

private:
    void collectExports();
    void addExport(std::string_view name, const Target &target);
    void addLocals(uint32_t object);
    Bytes functionStarts() const;
    void addRecord(std::string_view name, uint32_t type, uint32_t section, uint32_t description, uint32_t value);

    const Layout &layout;
    const std::vector<uint32_t> &ordinals;
    const LinkOptions &options;
    SymbolTable table;
    ByteWriter records, names;
    std::map<std::string_view, uint32_t> nameOffsets;
};

SymbolTable Maker::make()
{
    collectExports();
    table.functionStarts = functionStarts();
    if (!options.strip)
        for (uint32_t object = 0; object < layout.objects.size(); object++)
            addLocals(object);
    // An early loader misreads number 0 among the indirect symbols, so no import may be the first symbol.
    if (records.size() == 0 && table.exports.empty() && !layout.symbols.imports().empty())
        addRecord("no import", N_ABS, 0, 0, 0);
    table.localCount = static_cast<uint32_t>(records.size() / sizeof(nlist));
    for (const auto &[name, address] : table.exports) // sorted: old loaders search them by halves
        addRecord(name, N_SECT | N_EXT, layout.sectionNumberAt(address), 0, address);
    table.exportCount = static_cast<uint32_t>(table.exports.size());
    for (size_t index = 0; index < layout.symbols.imports().size(); index++) {
        const Import &import = layout.symbols.imports()[index];
        addRecord(import.name, N_UNDF | N_EXT, 0, ordinals[index] << 8 | (import.weak ? N_WEAK_REF : 0), 0);
    }
    table.importCount = static_cast<uint32_t>(layout.symbols.imports().size());

    ByteWriter indirect;
    for (const std::vector<size_t> *list : {&layout.indirections.stubs(), &layout.indirections.importPointers()})
        for (size_t import : *list)
            indirect.u32(table.firstImport() + static_cast<uint32_t>(import));
    names.alignTo(pointerSize);
    table.records = std::move(records.bytes);
    table.names = std::move(names.bytes);
    table.indirect = std::move(indirect.bytes);
    return std::move(table);
}

void Maker::collectExports()
{
    for (const std::string &name : options.exports) {
        auto target = layout.symbols.definition(name);
        if (!target || target->kind != Target::Defined)
            fail("exported symbol ", printable(name), " is not defined in any object");
        addExport(name, *target);
    }
    if (!options.exports.empty())
        return;
    for (const ObjectFile &object : layout.objects)
        for (const Symbol &symbol : object.symbols)
            if (symbol.isInSection() && symbol.isGlobal() && !symbol.isPrivate())
                addExport(symbol.name, *layout.symbols.definition(symbol.name));
}

void Maker::addExport(std::string_view name, const Target &target)
{
    const ObjectFile &object = layout.objects[target.place.object];
    const Section &section = object.sections[target.place.section];
    auto address = layout.addressOf(target.place);
    if (!address)
        fail(object.describe(section), ": exported symbol ", printable(name),
             " is in a section no part of which is in the library");
    table.exports[name] = *address;
}

void Maker::addLocals(uint32_t number)
{
    const ObjectFile &object = layout.objects[number];
    for (uint32_t index = 0; index < object.symbols.size(); index++) {
        const Symbol &symbol = object.symbols[index];
        Place place{number, symbol.section - 1u, symbol.value};
        if (!symbol.isForReaders() || !layout.holds(place) || layout.symbols.isReplaced(number, index) ||
            (symbol.isGlobal() && table.exports.count(symbol.name)))
            continue;
        // Nobody looks for the names of call frame records.
        if (object.sections[place.section].isCallFrameTable())
            continue;
        uint32_t address = *layout.addressOf(place);
        addRecord(symbol.name, N_SECT, layout.sectionNumberAt(address), 0, address);
    }
}

Bytes Maker::functionStarts() const
{
    std::set<uint32_t> starts;
    for (uint32_t number = 0; number < layout.objects.size(); number++)
        for (const Symbol &symbol : layout.objects[number].symbols) {
            Place place{number, symbol.section - 1u, symbol.value};
            if (symbol.isForReaders() && !symbol.isInsideDefinition() && layout.roomAt(place) > 0 &&
                layout.objects[number].sections[place.section].flags & S_ATTR_PURE_INSTRUCTIONS)
                starts.insert(*layout.addressOf(place));
        }
    ByteWriter distances;
    uint32_t last = 0;
    for (uint32_t start : starts) {
        distances.uleb(start - last);
        last = start;
    }
    distances.u8(0);
    return std::move(distances.bytes);
}

void Maker::addRecord(std::string_view name, uint32_t type, uint32_t section, uint32_t description, uint32_t value)
{
    constexpr size_t largestTable = 1u << 26;
    auto [known, isNew] = nameOffsets.try_emplace(name, static_cast<uint32_t>(names.size()));
    if (isNew)
        names.text(name);
    if (names.size() > largestTable)
        fail("the names of all symbols together are larger than 64 MB");
    records.u32(known->second);
    records.u8(type);
    records.u8(section);
    records.u16(description);
    records.u32(value);
}

} // namespace

LoadedLibraries loadedLibraries(const std::vector<Import> &imports, const ImportTable &table)
{
    LoadedLibraries loaded;
    std::vector<uint32_t> ordinalOf(table.libraries.size());
    for (size_t library = 0; library < table.libraries.size(); library++) {
        bool used = false, weak = true;
        for (const Import &import : imports) {
            used |= import.library == library;
            weak &= import.library != library || import.weak;
        }
        if (!used)
            continue;
        loaded.list.push_back({&table.libraries[library], weak});
        ordinalOf[library] = static_cast<uint32_t>(loaded.list.size());
    }
    constexpr size_t mostLibraries = 253; // an import names its library in one byte, of which two values are taken
    if (loaded.list.size() > mostLibraries)
        fail("imports come from more libraries than a library can name");
    for (const Import &import : imports)
        loaded.ordinals.push_back(ordinalOf[import.library]);
    return loaded;
}

SymbolTable makeSymbolTable(const Layout &layout, const std::vector<uint32_t> &ordinals, const LinkOptions &options)
{
    return Maker(layout, ordinals, options).make();
}

} // namespace macho
