// One compiled file (MH_OBJECT, 32-bit Intel), read and checked: whatever is reachable from an ObjectFile is in bounds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/macho/bytes.h"
#include "tools/macho/error.h"
#include "tools/macho/format.h"

namespace macho {

struct Relocation {
    uint32_t offset; // of the four bytes to change, from the start of the section
    format::RelocationType type;
    bool pcRelative;
    bool external;  // `target` counts symbols; otherwise it counts sections from 1
    bool scattered; // `address` names the target, and `target` is unused
    uint32_t target;
    uint32_t address;
    uint32_t subtrahend; // the second address of a difference
};

struct Section {
    std::string_view segment, name;
    uint32_t address, size; // as the compiler laid the object out
    uint32_t alignment;     // a power of two
    uint32_t flags;
    uint32_t firstIndirect; // pointers and stubs: where their symbols start among the indirect symbols
    uint32_t stubSize;
    ByteView contents; // empty for zero fill
    std::vector<Relocation> relocations;

    uint8_t type() const { return flags & format::SECTION_TYPE; }
    bool holdsPointers() const
    {
        return type() == format::S_NON_LAZY_SYMBOL_POINTERS || type() == format::S_LAZY_SYMBOL_POINTERS;
    }
    bool holdsStubs() const { return type() == format::S_SYMBOL_STUBS; }
    // Pointers and stubs are made by the linker: what the object holds of them only says which symbols they are for.
    bool isIndirection() const { return holdsPointers() || holdsStubs(); }
    uint32_t entrySize() const { return holdsStubs() ? stubSize : format::pointerSize; }
    bool isCallFrameTable() const { return segment == "__TEXT" && name == "__eh_frame"; }
    // Debugging sections are read by debuggers from the object files; no part of them is in a library.
    bool isForDebugging() const { return segment == "__DWARF" || segment == "__LD" || flags & format::S_ATTR_DEBUG; }
    bool contains(uint32_t place) const { return place >= address && place - address < size; }
};

struct Symbol {
    std::string_view name;
    uint8_t type;
    uint8_t section; // from 1; 0 is none
    uint16_t description;
    uint32_t value;

    bool isDebugging() const { return type & format::N_STAB; }
    uint8_t kind() const { return type & format::N_TYPE; }
    bool isUndefined() const { return !isDebugging() && kind() == format::N_UNDF; }
    bool isAbsolute() const { return !isDebugging() && kind() == format::N_ABS; }
    bool isInSection() const { return !isDebugging() && kind() == format::N_SECT; }
    bool isGlobal() const { return type & format::N_EXT; }
    bool isPrivate() const { return type & format::N_PEXT; }
    bool isWeakDefinition() const { return description & format::N_WEAK_DEF; }
    bool isInsideDefinition() const { return description & format::N_ALT_ENTRY; } // it starts none of its own
    // Names that begin with L or l are the compiler's own.
    bool isForReaders() const { return isInSection() && !name.empty() && name[0] != 'L' && name[0] != 'l'; }
    bool isWeakReference() const { return description & format::N_WEAK_REF; }
};

struct ObjectFile {
    ObjectFile() = default;
    ObjectFile(ObjectFile &&) = default; // sections and symbols point into `bytes`, which moves along
    ObjectFile &operator=(ObjectFile &&) = default;

    std::string name;
    Bytes bytes;
    bool mayBeCut = false; // every definition can stand without its neighbours
    std::vector<Section> sections;
    std::vector<Symbol> symbols;
    std::vector<uint32_t> indirectSymbols;

    // The section that an address of the object lies in: the one that contains it, or else ends there; -1 if none does.
    int sectionAt(uint32_t address) const;
    // "a.o: __TEXT,__text"
    std::string describe(const Section &section) const;
};

// `name` is the file's name for messages. The Failure for what is damaged or not supported names it, and the section or
// symbol where one is the matter.
ObjectFile parseObject(std::string name, Bytes bytes);

} // namespace macho
