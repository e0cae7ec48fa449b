#include "tools/macho/pieces.h"

#include <algorithm>

namespace macho {

using namespace format;

namespace {

// What is equal may be one: literals by their kind, references because nobody asks for their own address.
enum class Sharing { None, Literals, References };

Sharing sharingOf(const Section &section)
{
    if (section.isCallFrameTable())
        return Sharing::None;
    switch (section.type()) {
    case S_CSTRING_LITERALS:
    case S_4BYTE_LITERALS:
    case S_8BYTE_LITERALS:
    case S_16BYTE_LITERALS:
        return Sharing::Literals;
    case S_LITERAL_POINTERS:
        return Sharing::References;
    }
    return section.segment == "__DATA" && section.name == "__cfstring" ? Sharing::References : Sharing::None;
}

// Where the elements of a section of literals or references start.
std::vector<uint32_t> elementsOf(const Section &section)
{
    std::vector<uint32_t> starts;
    const uint8_t *bytes = section.contents.data();
    uint32_t width = section.type() == S_LITERAL_POINTERS || section.type() == S_4BYTE_LITERALS ? 4
                     : section.type() == S_8BYTE_LITERALS                                       ? 8
                                                                                                : 16;
    for (uint32_t offset = 0; offset < section.size; offset += width) {
        starts.push_back(section.address + offset);
        if (section.type() == S_CSTRING_LITERALS)
            width =
                static_cast<uint32_t>(strnlen(reinterpret_cast<const char *>(bytes + offset), section.size - offset)) +
                1;
    }
    return starts;
}

} // namespace

Pieces::Pieces(const std::vector<ObjectFile> &objects, const Symbols &symbols, const CallFrameTables &callFrames)
    : objects(objects), symbols(symbols), pieces(objects.size())
{
    for (uint32_t object = 0; object < objects.size(); object++)
        for (const Section &section : objects[object].sections)
            pieces[object].push_back({{section.address, section.size, section.alignment}});
    for (uint32_t object = 0; object < objects.size(); object++)
        if (objects[object].mayBeCut)
            dropReplaced(object);
    for (const auto &[place, table] : callFrames)
        dropCallFrames(place.first, place.second, table);
    // References are compared by what they refer to, so the literals come first.
    for (Sharing sharing : {Sharing::Literals, Sharing::References}) {
        std::map<std::string, Kept> known;
        for (uint32_t object = 0; object < objects.size(); object++)
            for (uint32_t section = 0; section < objects[object].sections.size(); section++)
                if (sharingOf(objects[object].sections[section]) == sharing)
                    mergeEqual(object, section, known);
    }
}

const Piece *Pieces::at(const Place &place) const
{
    const std::vector<Piece> &list = of(place.object, place.section);
    auto next = std::upper_bound(list.begin(), list.end(), place.address,
                                 [](uint32_t address, const Piece &piece) { return address < piece.address; });
    if (next == list.begin() || place.address - std::prev(next)->address > std::prev(next)->size)
        return nullptr;
    return &*std::prev(next);
}

bool Pieces::isKept(const Place &place) const
{
    const Piece *piece = at(place);
    return piece && piece->kept;
}

// A piece is as well aligned as it was in its object.
void Pieces::cut(uint32_t object, uint32_t number, const std::vector<uint32_t> &starts)
{
    const Section &section = objects[object].sections[number];
    std::vector<Piece> &list = pieces[object][number];
    for (uint32_t start : starts) {
        const Piece *known = at({object, number, start});
        if (!known || start == known->address || start == known->address + known->size)
            continue;
        Piece &first = list[known - list.data()];
        uint32_t offset = start - section.address, firstSize = start - first.address;
        Piece second{start, first.size - firstSize, std::min(section.alignment, offset & (0 - offset))};
        first.size = firstSize;
        list.insert(list.begin() + (known - list.data()) + 1, second);
    }
}

void Pieces::dropReplaced(uint32_t number)
{
    const ObjectFile &object = objects[number];
    std::map<Place, bool> isNeeded; // by the start of a definition
    for (uint32_t index = 0; index < object.symbols.size(); index++) {
        const Symbol &symbol = object.symbols[index];
        if (symbol.isInSection() && !symbol.isInsideDefinition())
            isNeeded[{number, symbol.section - 1u, symbol.value}] |= !symbols.isReplaced(number, index);
    }
    for (uint32_t section = 0; section < object.sections.size(); section++) {
        const Section &whole = object.sections[section];
        if (whole.isIndirection() || whole.isForDebugging() || whole.isCallFrameTable())
            continue;
        std::vector<uint32_t> starts;
        bool allNeeded = true;
        for (auto each = isNeeded.lower_bound({number, section, 0});
             each != isNeeded.end() && each->first.section == section; ++each) {
            starts.push_back(each->first.address);
            allNeeded &= each->second;
        }
        if (allNeeded)
            continue;
        cut(number, section, starts);
        for (Piece &piece : pieces[number][section])
            if (auto known = isNeeded.find({number, section, piece.address}); known != isNeeded.end())
                piece.kept = known->second;
    }
}

std::optional<Place> Pieces::placeAt(uint32_t object, uint32_t address) const
{
    int section = objects[object].sectionAt(address);
    return section < 0 ? std::nullopt : std::make_optional(Place{object, static_cast<uint32_t>(section), address});
}

// A record goes where its function goes, and so does the function's table of handlers.
void Pieces::dropCallFrames(uint32_t object, uint32_t number, const CallFrameTable &table)
{
    const Section &section = objects[object].sections[number];
    std::vector<Piece> &records = pieces[object][number];
    records.clear();
    std::map<Place, bool> handlerTables; // whether a function that is kept needs it
    for (const CallFrameRecord &record : table.records) {
        // Nothing may lie between the records of one table.
        records.push_back({section.address + record.start, record.size, records.empty() ? section.alignment : 1});
        for (const CallFramePointer &pointer : record.pointers) {
            auto target = placeAt(object, pointer.target);
            if (target && pointer.kind == CallFramePointer::Function)
                records.back().kept = isKept(*target);
            if (target && pointer.kind == CallFramePointer::HandlerTable)
                handlerTables[*target] |= records.back().kept;
        }
    }
    for (const auto &[place, isNeeded] : handlerTables) {
        if (objects[object].sections[place.section].name != "__gcc_except_tab")
            continue; // not cut: other things may lie behind it
        cut(object, place.section, {place.address});
        for (Piece &piece : pieces[object][place.section])
            if (piece.address == place.address)
                piece.kept = isNeeded;
    }
}

void Pieces::mergeEqual(uint32_t object, uint32_t number, std::map<std::string, Kept> &known)
{
    const Section &section = objects[object].sections[number];
    std::vector<Piece> &list = pieces[object][number];
    if (list.size() > 1)
        return; // it has weak definitions
    cut(object, number, elementsOf(section));
    std::vector<std::vector<const Relocation *>> relocations(list.size());
    for (const Relocation &relocation : section.relocations)
        relocations[at({object, number, section.address + relocation.offset}) - list.data()].push_back(&relocation);
    for (size_t index = 0; index < list.size(); index++) {
        Piece &piece = list[index];
        auto content = contentOf(object, section, piece, relocations[index]);
        if (!content)
            continue;
        auto [first, isNew] = known.try_emplace(std::move(*content), Kept{{object, number, piece.address}, &piece});
        if (isNew)
            continue;
        piece.kept = false;
        piece.twin = first->second.place;
        first->second.piece->alignment = std::max(first->second.piece->alignment, piece.alignment);
    }
}

// What a piece says, whatever object it is in; nothing if that cannot be told.
std::optional<std::string> Pieces::contentOf(uint32_t number, const Section &section, const Piece &piece,
                                             const std::vector<const Relocation *> &relocations) const
{
    const ObjectFile &object = objects[number];
    ByteWriter content;
    content.text(section.segment);
    content.text(section.name);
    size_t start = content.size();
    const uint8_t *bytes = section.contents.data() + (piece.address - section.address);
    content.bytes.insert(content.bytes.end(), bytes, bytes + piece.size);
    for (const Relocation *relocation : relocations) {
        uint32_t offset = section.address + relocation->offset - piece.address;
        if (relocation->type != GENERIC_RELOC_VANILLA || relocation->pcRelative || offset + pointerSize > piece.size)
            return std::nullopt;
        uint32_t word = load32(bytes + offset), added = word;
        Target target{Target::Defined};
        if (relocation->external) {
            target = symbols.resolve(number, relocation->target);
        } else {
            uint32_t address = relocation->scattered ? relocation->address : word;
            auto place = placeAt(number, address);
            if (!place || object.sections[place->section].isIndirection())
                return std::nullopt;
            target.place = symbols.surviving(*place);
            added = word - address;
        }
        const Place &place = target.place;
        const Piece *meant = target.kind == Target::Defined ? at(place) : nullptr;
        Place first = meant && meant->twin ? *meant->twin : place;
        uint32_t distance = meant && meant->twin ? place.address - meant->address : 0;
        store32(&content.bytes[start + offset], added + distance);
        for (uint32_t part : {offset, static_cast<uint32_t>(target.kind), static_cast<uint32_t>(target.import),
                              first.object, first.section, first.address})
            content.u32(part);
    }
    return std::string(content.bytes.begin(), content.bytes.end());
}

} // namespace macho
