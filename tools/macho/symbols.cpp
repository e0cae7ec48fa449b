#include "tools/macho/symbols.h"

#include <algorithm>

namespace macho {

namespace {

// The C++ runtime's name for "this image": no object defines it, the linker does.
constexpr std::string_view imageHeaderName = "___dso_handle";

// "a.o: __TEXT,__text: " for the first section that refers to a symbol, or "a.o: ".
std::string firstReference(const ObjectFile &object, uint32_t symbol)
{
    for (const Section &section : object.sections)
        for (const Relocation &relocation : section.relocations)
            if (relocation.external && relocation.target == symbol)
                return object.describe(section) + ": ";
    for (const Section &section : object.sections)
        if (section.isIndirection())
            for (uint32_t entry = 0; entry < section.size / section.entrySize(); entry++)
                if (object.indirectSymbols[section.firstIndirect + entry] == symbol)
                    return object.describe(section) + ": ";
    return printable(object.name) + ": ";
}

} // namespace

Symbols::Symbols(const std::vector<ObjectFile> &objects, const ImportTable &table) : objects(objects)
{
    auto forEachSymbol = [&](auto body) {
        for (uint32_t object = 0; object < objects.size(); object++)
            for (uint32_t symbol = 0; symbol < objects[object].symbols.size(); symbol++)
                body(Reference{object, symbol}, objects[object].symbols[symbol]);
    };
    forEachSymbol([&](Reference reference, const Symbol &symbol) {
        if ((symbol.isInSection() || symbol.isAbsolute()) && symbol.isGlobal())
            addDefinition(reference);
    });
    forEachSymbol([&](Reference reference, const Symbol &symbol) {
        if (symbol.isUndefined() && !definitions.count(symbol.name) && symbol.name != imageHeaderName)
            addImport(reference, table);
    });
    std::sort(importList.begin(), importList.end(),
              [](const Import &left, const Import &right) { return left.name < right.name; });
}

void Symbols::addDefinition(Reference reference)
{
    const Symbol &symbol = symbolOf(reference);
    auto [known, isNew] = definitions.try_emplace(symbol.name, reference);
    if (isNew)
        return;
    const Symbol &first = symbolOf(known->second);
    bool bothInSections = symbol.isInSection() && first.isInSection();
    if (!bothInSections || (!symbol.isWeakDefinition() && !first.isWeakDefinition())) {
        const ObjectFile &object = objects[reference.object];
        fail(symbol.isInSection() ? object.describe(object.sections[symbol.section - 1]) : printable(object.name),
             ": duplicate symbol ", printable(symbol.name), ": it is already defined in ",
             printable(objects[known->second.object].name));
    }
    Reference loser = reference;
    if (!symbol.isWeakDefinition())
        std::swap(loser, known->second);
    replacements.try_emplace(placeOf(loser), loser);
}

void Symbols::addImport(Reference reference, const ImportTable &table)
{
    const Symbol &symbol = symbolOf(reference);
    const ImportRow *row = table.find(symbol.name);
    if (!row)
        fail(firstReference(objects[reference.object], reference.symbol), "undefined symbol ", printable(symbol.name),
             ": no object defines it and the symbol table names no library for it");
    auto known = std::find_if(importList.begin(), importList.end(),
                              [&](const Import &import) { return import.name == symbol.name; });
    if (known == importList.end())
        importList.push_back({symbol.name, row->library, row->weak || symbol.isWeakReference()});
    else // one reference that needs the symbol is enough to need it
        known->weak = row->weak || (known->weak && symbol.isWeakReference());
}

Place Symbols::placeOf(Reference reference) const
{
    const Symbol &symbol = symbolOf(reference);
    return {reference.object, symbol.section - 1u, symbol.value};
}

std::optional<Target> Symbols::definition(std::string_view name) const
{
    auto known = definitions.find(name);
    if (known == definitions.end())
        return std::nullopt;
    if (symbolOf(known->second).isAbsolute())
        return Target{Target::Absolute};
    return Target{Target::Defined, placeOf(known->second)};
}

Target Symbols::resolve(uint32_t object, uint32_t index) const
{
    const Symbol &symbol = objects[object].symbols[index];
    if (symbol.isGlobal() || symbol.isUndefined()) {
        if (auto target = definition(symbol.name))
            return *target;
        if (symbol.name == imageHeaderName)
            return Target{Target::ImageHeader};
        auto import = std::lower_bound(importList.begin(), importList.end(), symbol.name,
                                       [](const Import &left, std::string_view name) { return left.name < name; });
        if (import != importList.end() && import->name == symbol.name)
            return Target{Target::Imported, {}, static_cast<size_t>(import - importList.begin())};
    }
    if (symbol.isInSection())
        return Target{Target::Defined, placeOf({object, index})};
    if (symbol.isAbsolute())
        return Target{Target::Absolute};
    fail(printable(objects[object].name), ": damaged: symbol ", printable(symbol.name), " is only for debugging");
}

Place Symbols::surviving(const Place &place) const
{
    auto replaced = replacements.find(place);
    if (replaced == replacements.end())
        return place;
    return placeOf(definitions.at(symbolOf(replaced->second).name));
}

bool Symbols::isReplaced(uint32_t object, uint32_t index) const
{
    const Symbol &symbol = objects[object].symbols[index];
    auto known = definitions.find(symbol.name);
    return symbol.isGlobal() && known != definitions.end() &&
           (known->second.object != object || known->second.symbol != index);
}

} // namespace macho
