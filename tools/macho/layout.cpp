#include "tools/macho/layout.h"

#include <algorithm>

namespace macho {

using namespace format;

namespace {

constexpr uint64_t largestFile = 1u << 26;
// The word behind the call frames stays zero: it ends the table for those who do not know its length.
constexpr uint32_t callFrameTerminator = 4;
// A segment is named by four bits in the compressed fix-ups.
constexpr size_t mostSegments = 15;

struct SectionName {
    std::string_view segment, name;
};

// Compilers for early systems put what may occur in several objects into sections of its own; the library has one
// section for each purpose.
SectionName finishedName(const Section &section)
{
    static const struct {
        SectionName from, to;
    } renamed[] = {
        {{"__TEXT", "__textcoal_nt"}, {"__TEXT", "__text"}},
        {{"__TEXT", "__const_coal"}, {"__TEXT", "__const"}},
        {{"__DATA", "__const_coal"}, {"__DATA", "__const"}},
        {{"__DATA", "__datacoal_nt"}, {"__DATA", "__data"}},
    };
    for (const auto &row : renamed)
        if (row.from.segment == section.segment && row.from.name == section.name)
            return row.to;
    return {section.segment, section.name};
}

uint32_t finishedFlags(const Section &section)
{
    uint32_t flags = section.flags & ~uint32_t{S_ATTR_LOC_RELOC | S_ATTR_EXT_RELOC};
    if (section.type() == S_COALESCED && !section.isCallFrameTable())
        flags = (flags & ~SECTION_TYPE) | S_REGULAR;
    return flags;
}

bool isSupported(uint8_t type)
{
    switch (type) {
    case S_REGULAR:
    case S_ZEROFILL:
    case S_CSTRING_LITERALS:
    case S_4BYTE_LITERALS:
    case S_8BYTE_LITERALS:
    case S_16BYTE_LITERALS:
    case S_LITERAL_POINTERS:
    case S_MOD_INIT_FUNC_POINTERS:
    case S_MOD_TERM_FUNC_POINTERS:
    case S_COALESCED:
        return true;
    }
    return false;
}

int segmentRank(const std::string &name)
{
    return name == "__TEXT" ? 0 : name == "__DATA" ? 1 : name == "__OBJC" ? 2 : 3;
}

// Code first, what is filled with zeros last, and the call frames at the very end of __TEXT, where zeros follow.
int sectionRank(const OutputSection &section)
{
    if (section.isZeroFill())
        return 4;
    if (section.segment != "__TEXT")
        return 2;
    return section.name == "__text" ? 0 : section.name == Layout::stubsName ? 1 : section.name == "__eh_frame" ? 3 : 2;
}

} // namespace

Layout::Layout(const Pieces &pieces, const Indirections &indirections)
    : objects(indirections.objects), symbols(indirections.symbols), indirections(indirections), pieces(pieces)
{
    section("__TEXT", "__text", S_REGULAR | S_ATTR_PURE_INSTRUCTIONS | S_ATTR_SOME_INSTRUCTIONS);
    for (uint32_t object = 0; object < objects.size(); object++) {
        for (uint32_t number = 0; number < objects[object].sections.size(); number++) {
            const Section &whole = objects[object].sections[number];
            if (whole.isIndirection() || whole.isForDebugging())
                continue;
            for (const Piece &piece : pieces.of(object, number))
                if (piece.kept)
                    addPart(objects[object], {object, number, piece.address}, piece);
        }
    }
    addMade("__TEXT", stubsName, S_SYMBOL_STUBS | S_ATTR_PURE_INSTRUCTIONS | S_ATTR_SOME_INSTRUCTIONS,
            indirections.stubs().size(), stubSize, 0);
    addMade("__DATA", localPointersName, S_REGULAR, indirections.localPointers().size(), pointerSize, 0);
    addMade("__DATA", importPointersName, S_NON_LAZY_SYMBOL_POINTERS, indirections.importPointers().size(), pointerSize,
            indirections.stubs().size());
    sortSections();
}

OutputSection &Layout::section(std::string_view segmentName, std::string_view name, uint32_t flags)
{
    auto segment = std::find_if(segments.begin(), segments.end(),
                                [&](const OutputSegment &candidate) { return candidate.name == segmentName; });
    if (segment == segments.end()) {
        segment = segments.insert(segments.end(), OutputSegment{});
        segment->name = segmentName;
    }
    for (OutputSection &candidate : segment->sections)
        if (candidate.name == name)
            return candidate;
    OutputSection made;
    made.segment = segmentName;
    made.name = name;
    made.flags = flags;
    segment->sections.push_back(made);
    return segment->sections.back();
}

void Layout::addPart(const ObjectFile &object, const Place &place, const Piece &piece)
{
    const Section &part = object.sections[place.section];
    auto refuse = [&](const auto &...reason) { fail(object.describe(part), ": ", reason...); };
    if (!isSupported(part.type()))
        refuse("section type ", hex(part.type()), " is not supported");
    if (part.segment.empty() || part.name.empty())
        refuse("damaged: the section has no full name");
    auto [segment, name] = finishedName(part);
    if (segment == "__LINKEDIT" || (segment == "__TEXT" && name == stubsName) ||
        (segment == "__DATA" && (name == importPointersName || name == localPointersName)))
        refuse("the linker itself makes a section of this name");
    if (piece.size == 0 && !find(segment, name))
        return;
    OutputSection &whole = section(segment, name, finishedFlags(part));
    if (whole.type() != (finishedFlags(part) & SECTION_TYPE))
        refuse("its type is ", hex(part.type()), ", but ", hex(whole.type()), " in another object");
    whole.flags |= finishedFlags(part);
    // The runtime reads one image info; what it says is put together from all of them.
    if (segment == "__OBJC" && name == "__image_info" && !whole.parts.empty())
        return;
    whole.alignment = std::max(whole.alignment, piece.alignment);
    uint64_t offset = alignUp(whole.size, piece.alignment);
    if (offset + piece.size > largestImage)
        refuse("the library would be larger than 1 GB");
    whole.parts.push_back({place, piece.size, static_cast<uint32_t>(offset)});
    whole.size = static_cast<uint32_t>(offset) + piece.size;
}

void Layout::addMade(const char *segment, const char *name, uint32_t flags, size_t entries, uint32_t entrySize,
                     size_t firstIndirect)
{
    if (entries == 0)
        return;
    OutputSection &made = section(segment, name, flags);
    made.alignment = 4;
    made.size = static_cast<uint32_t>(entries) * entrySize;
    made.firstIndirect = static_cast<uint32_t>(firstIndirect);
    made.stubSize = made.type() == S_SYMBOL_STUBS ? entrySize : 0;
}

void Layout::sortSections()
{
    std::stable_sort(segments.begin(), segments.end(), [](const OutputSegment &left, const OutputSegment &right) {
        return std::make_pair(segmentRank(left.name), left.name) < std::make_pair(segmentRank(right.name), right.name);
    });
    size_t sections = 0;
    for (OutputSegment &segment : segments) {
        std::stable_sort(segment.sections.begin(), segment.sections.end(),
                         [](const OutputSection &left, const OutputSection &right) {
                             return sectionRank(left) < sectionRank(right);
                         });
        bool isText = segment.name == "__TEXT";
        segment.maximumProtection = VM_PROT_ALL;
        segment.protection = VM_PROT_READ | (isText ? VM_PROT_EXECUTE : VM_PROT_WRITE);
        sections += segment.sections.size();
    }
    if (segments.size() > mostSegments || sections > MAX_SECT)
        fail("the objects have more differently named segments or sections than a library can hold");
}

void Layout::assignAddresses(uint32_t headerSize)
{
    uint64_t address = 0, fileOffset = 0;
    for (OutputSegment &segment : segments) {
        if (segment.name == "__TEXT") {
            // What the last page has left stands in front of the code, where it is of use.
            uint64_t start = headerSize + commandRoom, end = placeSegment(segment, address, fileOffset, start);
            uint32_t alignment = 1;
            for (const OutputSection &section : segment.sections)
                alignment = std::max(alignment, section.alignment);
            placeSegment(segment, address, fileOffset, start + (segment.fileSize - end) / alignment * alignment);
        } else {
            placeSegment(segment, address, fileOffset, 0);
        }
        address += segment.memorySize;
        fileOffset += segment.fileSize;
    }
}

uint64_t Layout::placeSegment(OutputSegment &segment, uint64_t address, uint64_t fileOffset, uint64_t start)
{
    uint64_t end = start, fileEnd = start; // from the start of the segment
    for (OutputSection &section : segment.sections) {
        end = alignUp(end, section.alignment);
        section.address = static_cast<uint32_t>(address + end);
        section.fileOffset = section.isZeroFill() ? 0 : static_cast<uint32_t>(fileOffset + end);
        end += section.size;
        if (!section.isZeroFill())
            fileEnd = end;
        if (address + end > largestImage || fileOffset + fileEnd > largestFile)
            fail("the library would be larger than 1 GB in memory or 64 MB in its file");
        for (const OutputSection::Part &part : section.parts)
            addresses[part.place] = section.address + part.offset;
    }
    if (segment.name == "__TEXT") {
        fileEnd += callFrameTerminator;
        end = std::max(end, fileEnd);
    }
    segment.address = static_cast<uint32_t>(address);
    segment.fileOffset = static_cast<uint32_t>(fileOffset);
    segment.memorySize = static_cast<uint32_t>(alignUp(end, pageSize));
    segment.fileSize = static_cast<uint32_t>(alignUp(fileEnd, pageSize));
    return fileEnd;
}

const OutputSection *Layout::find(std::string_view segmentName, std::string_view name) const
{
    for (const OutputSegment &segment : segments)
        for (const OutputSection &section : segment.sections)
            if (segment.name == segmentName && section.name == name)
                return &section;
    return nullptr;
}

std::optional<uint32_t> Layout::addressOf(const Place &place) const
{
    const Piece *piece = pieces.at(place);
    if (!piece)
        return std::nullopt;
    auto known = addresses.find(piece->twin.value_or(Place{place.object, place.section, piece->address}));
    return known == addresses.end() ? std::nullopt
                                    : std::make_optional(known->second + (place.address - piece->address));
}

uint32_t Layout::roomAt(const Place &place) const
{
    return holds(place) ? pieces.at(place)->address + pieces.at(place)->size - place.address : 0;
}

bool Layout::holds(const Place &place) const
{
    const Piece *piece = pieces.at(place);
    return piece && addresses.count({place.object, place.section, piece->address});
}

bool Layout::hasPartOf(uint32_t object, uint32_t section) const
{
    auto first = addresses.lower_bound({object, section, 0});
    return first != addresses.end() && first->first.object == object && first->first.section == section;
}

uint32_t Layout::fileOffsetOf(uint32_t address) const
{
    for (const OutputSegment &segment : segments)
        if (segment.contains(address))
            return segment.fileOffset + (address - segment.address);
    return 0;
}

uint32_t Layout::sectionNumberAt(uint32_t address) const
{
    uint32_t number = 0;
    for (const OutputSegment &segment : segments)
        for (const OutputSection &section : segment.sections) {
            number++;
            if (section.contains(address))
                return number;
        }
    return 1;
}

} // namespace macho
