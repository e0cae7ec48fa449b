#include "tools/macho/layout.h"

#include <algorithm>

namespace macho {

using namespace format;

namespace {

constexpr uint64_t largestFile = 1u << 26;
// Room behind the load commands, for tools that change an install name in place.
constexpr uint32_t headerPadding = 64;
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
        flags = (flags & ~sectionTypeMask) | S_REGULAR;
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

Layout::Layout(const std::vector<ObjectFile> &objects, const CallFrameTables &callFrames,
               const Indirections &indirections)
{
    section("__TEXT", "__text", S_REGULAR | S_ATTR_PURE_INSTRUCTIONS | S_ATTR_SOME_INSTRUCTIONS);
    for (uint32_t object = 0; object < objects.size(); object++) {
        for (uint32_t number = 0; number < objects[object].sections.size(); number++) {
            const Section &part = objects[object].sections[number];
            auto frames = callFrames.find({object, number});
            if (!part.isIndirection() && !part.isForDebugging())
                addPart(objects, object, number, frames == callFrames.end() ? part.size : frames->second.size);
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

void Layout::addPart(const std::vector<ObjectFile> &objects, uint32_t object, uint32_t number, uint32_t size)
{
    const Section &part = objects[object].sections[number];
    auto refuse = [&](const auto &...reason) { fail(objects[object].describe(part), ": ", reason...); };
    if (!isSupported(part.type()))
        refuse("section type ", hex(part.type()), " is not supported");
    if (part.segment.empty() || part.name.empty())
        refuse("damaged: the section has no full name");
    auto [segment, name] = finishedName(part);
    if (segment == "__LINKEDIT" || (segment == "__TEXT" && name == stubsName) ||
        (segment == "__DATA" && (name == importPointersName || name == localPointersName)))
        refuse("the linker itself makes a section of this name");
    bool known = find(segment, name);
    if (!known && size == 0)
        return;
    OutputSection &whole = section(segment, name, finishedFlags(part));
    if (whole.type() != (finishedFlags(part) & sectionTypeMask))
        refuse("its type is ", hex(part.type()), ", but ", hex(whole.type()), " in another object");
    whole.flags |= finishedFlags(part);
    // The runtime reads one image info; what it says is put together from all of them.
    if (segment == "__OBJC" && name == "__image_info" && !whole.parts.empty())
        return;
    whole.alignment = std::max(whole.alignment, part.alignment);
    uint64_t offset = alignUp(whole.size, part.alignment);
    if (offset + size > largestImage)
        refuse("the library would be larger than 1 GB");
    whole.parts.push_back({object, number, static_cast<uint32_t>(offset)});
    whole.size = static_cast<uint32_t>(offset) + size;
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
    if (segments.size() > mostSegments || sections > maximumSections)
        fail("the objects have more differently named segments or sections than a library can hold");
}

void Layout::assignAddresses(uint32_t headerSize)
{
    addresses.clear();
    uint64_t segmentAddress = 0, segmentOffset = 0;
    for (OutputSegment &segment : segments) {
        uint64_t end = segment.name == "__TEXT" ? headerSize + headerPadding : 0; // from the start of the segment
        uint64_t fileEnd = end;
        for (OutputSection &section : segment.sections) {
            end = alignUp(end, section.alignment);
            section.address = static_cast<uint32_t>(segmentAddress + end);
            section.fileOffset = section.isZeroFill() ? 0 : static_cast<uint32_t>(segmentOffset + end);
            end += section.size;
            if (!section.isZeroFill())
                fileEnd = end;
            if (segmentAddress + end > largestImage || segmentOffset + fileEnd > largestFile)
                fail("the library would be larger than 1 GB in memory or 64 MB in its file");
            for (const OutputSection::Part &part : section.parts)
                addresses[{part.object, part.section}] = section.address + part.offset;
        }
        if (segment.name == "__TEXT") {
            fileEnd += callFrameTerminator;
            end = std::max(end, fileEnd);
        }
        segment.address = static_cast<uint32_t>(segmentAddress);
        segment.fileOffset = static_cast<uint32_t>(segmentOffset);
        segment.memorySize = static_cast<uint32_t>(alignUp(end, pageSize));
        segment.fileSize = static_cast<uint32_t>(alignUp(fileEnd, pageSize));
        segmentAddress += segment.memorySize;
        segmentOffset += segment.fileSize;
    }
}

const OutputSection *Layout::find(std::string_view segmentName, std::string_view name) const
{
    for (const OutputSegment &segment : segments)
        for (const OutputSection &section : segment.sections)
            if (segment.name == segmentName && section.name == name)
                return &section;
    return nullptr;
}

std::optional<uint32_t> Layout::addressOf(uint32_t object, uint32_t section) const
{
    auto known = addresses.find({object, section});
    return known == addresses.end() ? std::nullopt : std::make_optional(known->second);
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
