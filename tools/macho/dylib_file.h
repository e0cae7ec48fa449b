// A finished library, read back: for the checks, for tests, and for the loader that runs libraries here. It shares
// nothing with the code that writes libraries but the records of the format.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/macho/bytes.h"
#include "tools/macho/error.h"
#include "tools/macho/format.h"
#include "tools/macho/import_table.h"

namespace macho {

struct DylibSegment {
    std::string name;
    uint32_t address, memorySize, fileOffset, fileSize, protection;
    bool isWritable() const { return protection & format::VM_PROT_WRITE; }
    bool contains(uint32_t place) const { return place >= address && place - address < memorySize; }
};

struct DylibSection {
    std::string segment, name;
    uint32_t address, size, fileOffset, flags, firstIndirect, stubSize;
    uint8_t type() const { return flags & format::SECTION_TYPE; }
};

struct DylibLibrary {
    Library library;
    bool weak; // the loader may do without it
};

struct DylibSymbol {
    std::string name;
    uint8_t type, section;
    uint16_t description;
    uint32_t value;

    bool isImport() const { return (type & format::N_TYPE) == format::N_UNDF && type & format::N_EXT; }
    bool isExport() const { return (type & format::N_TYPE) != format::N_UNDF && type & format::N_EXT; }
    bool isWeakImport() const { return description & format::N_WEAK_REF; }
    uint32_t libraryOrdinal() const { return description >> 8; } // from 1
};

struct DylibBind {
    uint32_t address;
    std::string symbol;
    uint32_t libraryOrdinal;
    bool weak;
    int32_t addend; // compressed form only
    bool replaces;  // the address replaces what the word holds; in the classic form's relocations it is added
};

struct DylibFixups {
    bool present = false;
    std::vector<uint32_t> rebases;
    std::vector<DylibBind> binds;
};

struct DylibFile {
    std::string name;
    Bytes bytes;
    uint32_t processor = 0, processorSubtype = 0, fileType = 0, flags = 0;
    std::vector<uint32_t> commands; // every load command's number, in order
    uint32_t commandRoom = 0;       // bytes between the load commands and the first section
    Library identity;               // the install name and versions of the library itself
    uint32_t minimumSystem = 0;
    std::string uuid;
    std::vector<DylibLibrary> libraries;
    std::vector<DylibSegment> segments;
    std::vector<DylibSection> sections;
    std::vector<DylibSymbol> symbols;
    std::vector<uint32_t> indirectSymbols;
    std::vector<uint32_t> functionStarts; // addresses
    DylibFixups classic, compressed;
    std::map<std::string, uint32_t> exportTrie; // present with the compressed form only

    bool hasCommand(uint32_t command) const;
    const DylibSegment *segmentAt(uint32_t address) const;
    const DylibSection *section(const std::string &segment, const std::string &name) const;
    // The bytes of a section, empty for zero fill.
    ByteView contents(const DylibSection &section) const;
};

// Raises a Failure for what is damaged.
DylibFile parseDylib(std::string name, Bytes bytes);

// What the symbol of a bind is at run time; 0 for a weak import that is missing.
using SymbolAddress = std::function<uint32_t(const DylibBind &bind)>;

// The library's memory, from its first byte, as a loader leaves it that puts it at `base` and reads that form of
// fix-ups.
Bytes loadedMemory(const DylibFile &file, const DylibFixups &fixups, uint32_t base, const SymbolAddress &addressOf);

} // namespace macho
