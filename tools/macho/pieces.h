// Which pieces of the objects' sections are in the library. A section is one piece, unless a part of it is left out: a
// weak definition that lost against another of its name, together with its call frames, and a literal or a reference
// that says the same as an earlier one.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/macho/call_frames.h"
#include "tools/macho/symbols.h"

namespace macho {

struct Piece {
    uint32_t address, size; // in the object
    uint32_t alignment;
    bool kept = true;
    std::optional<Place> twin = {}; // where the equal piece starts that is kept in this one's place
};

class Pieces {
public:
    Pieces(const std::vector<ObjectFile> &objects, const Symbols &symbols, const CallFrameTables &callFrames);

    const std::vector<Piece> &of(uint32_t object, uint32_t section) const { return pieces[object][section]; }
    // The piece that contains a place; for the end of a section, its last one. Null if there is none.
    const Piece *at(const Place &place) const;
    bool isKept(const Place &place) const;

private:
    // A piece among those that it may be equal to.
    struct Kept {
        Place place;
        Piece *piece;
    };
    void cut(uint32_t object, uint32_t section, const std::vector<uint32_t> &starts);
    void dropReplaced(uint32_t object);
    void dropCallFrames(uint32_t object, uint32_t section, const CallFrameTable &table);
    void mergeEqual(uint32_t object, uint32_t section, std::map<std::string, Kept> &known);
    std::optional<std::string> contentOf(uint32_t object, const Section &section, const Piece &piece,
                                         const std::vector<const Relocation *> &relocations) const;
    std::optional<Place> placeAt(uint32_t object, uint32_t address) const;

    const std::vector<ObjectFile> &objects;
    const Symbols &symbols;
    std::vector<std::vector<std::vector<Piece>>> pieces; // by object and section
};

} // namespace macho
