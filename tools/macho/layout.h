// Where everything lies: the sections of all objects are put together by name, the sections into segments, and each
// gets its place in memory and in the file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/macho/indirections.h"
#include "tools/macho/object_file.h"
#include "tools/macho/pieces.h"

namespace macho {

struct OutputSection {
    struct Part {
        Place place;     // where it starts in its object
        uint32_t size;   // of it
        uint32_t offset; // from the start of the output section
    };

    std::string segment, name;
    uint32_t flags = 0;
    uint32_t alignment = 1;
    uint32_t size = 0;
    uint32_t firstIndirect = 0, stubSize = 0;
    std::vector<Part> parts;
    uint32_t address = 0, fileOffset = 0;

    uint8_t type() const { return flags & format::SECTION_TYPE; }
    bool isZeroFill() const { return type() == format::S_ZEROFILL; }
    bool contains(uint32_t place) const { return place >= address && place - address < size; }
};

struct OutputSegment {
    std::string name;
    uint32_t address = 0, memorySize = 0, fileOffset = 0, fileSize = 0;
    uint32_t maximumProtection = 0, protection = 0;
    std::vector<OutputSection> sections;

    bool contains(uint32_t place) const { return place >= address && place - address < memorySize; }
};

class Layout {
public:
    static constexpr uint32_t pageSize = 4096;
    // What the loader can be asked to hold: far more than any plug-in, far less than a 32-bit process.
    static constexpr uint64_t largestImage = 1u << 30;
    static constexpr uint32_t stubSize = 12;

    // Room behind the load commands, for tools that change a library in place: longer names, further commands.
    static constexpr uint32_t commandRoom = 1024;

    Layout(const Pieces &pieces, const Indirections &indirections);
    // `headerSize`: of the header and all load commands, which lie at the start of __TEXT.
    void assignAddresses(uint32_t headerSize);

    // What is laid out.
    const std::vector<ObjectFile> &objects;
    const Symbols &symbols;
    const Indirections &indirections;

    // __TEXT first, then __DATA and __OBJC. __LINKEDIT, which has no sections, is not among them.
    std::vector<OutputSegment> segments;

    const OutputSection *find(std::string_view segment, std::string_view name) const;
    // The table of indirect symbols holds the stubs' symbols, then the import pointers'.
    const OutputSection *stubs() const { return find("__TEXT", stubsName); }
    const OutputSection *importPointers() const { return find("__DATA", importPointersName); }
    const OutputSection *localPointers() const { return find("__DATA", localPointersName); }
    // The address of a place, or of the same place in its twin; none if neither is in the library.
    std::optional<uint32_t> addressOf(const Place &place) const;
    // Whether this very piece is in the library, and no twin of it.
    bool holds(const Place &place) const;
    // How many bytes the piece still has there that a place lies in; 0 if this very piece is not in the library.
    uint32_t roomAt(const Place &place) const;
    bool hasPartOf(uint32_t object, uint32_t section) const;
    uint32_t fileOffsetOf(uint32_t address) const;
    // The section that contains an address, counted from 1 through all segments, as symbols count them; 1 for the
    // header.
    uint32_t sectionNumberAt(uint32_t address) const;
    uint32_t endAddress() const { return segments.back().address + segments.back().memorySize; }
    uint32_t endFileOffset() const { return segments.back().fileOffset + segments.back().fileSize; }

    static constexpr const char *stubsName = "__symbol_stub";
    static constexpr const char *importPointersName = "__nl_symbol_ptr";
    static constexpr const char *localPointersName = "__local_ptr";

private:
    OutputSection &section(std::string_view segment, std::string_view name, uint32_t flags);
    void addPart(const ObjectFile &object, const Place &place, const Piece &piece);
    void addMade(const char *segment, const char *name, uint32_t flags, size_t entries, uint32_t entrySize,
                 size_t firstIndirect);
    void sortSections();
    // Its first section at `start` or behind it; answers where the part ends that is in the file.
    uint64_t placeSegment(OutputSegment &segment, uint64_t address, uint64_t fileOffset, uint64_t start);

    const Pieces &pieces;
    std::map<Place, uint32_t> addresses; // of the pieces that are in the library
};

} // namespace macho
