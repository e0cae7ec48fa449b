// Pointers and stubs: code reaches a library's function through a stub and its data through a pointer, both at fixed
// distances from the code, so that the code itself never has to be changed when the library is loaded.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "tools/macho/symbols.h"

namespace macho {

// Where a reference to one entry of an object's pointer or stub section leads in the finished library.
struct Indirection {
    enum Kind {
        ImportPointer, // number: the pointer to an import, filled in by the loader
        LocalPointer,  // number: the pointer to something of this library
        Stub,          // number: the stub of an import
        Direct,        // place: a stub for something of this library is not needed
    } kind;
    uint32_t number = 0;
    Place place = {};
};

class Indirections {
public:
    Indirections(const std::vector<ObjectFile> &objects, const Symbols &symbols);

    const std::vector<ObjectFile> &objects;
    const Symbols &symbols;

    // The entry of a pointer or stub section that contains an address, and how far behind its start the address lies.
    struct Entry {
        Indirection leadsTo;
        uint32_t distance;
    };
    Entry entryAt(const Place &place) const;
    uint32_t stubOf(size_t import) const { return stubNumbers.at(import); }

    // In the order of the finished sections; imports by their number in Symbols::imports.
    const std::vector<size_t> &stubs() const { return stubList; }
    const std::vector<size_t> &importPointers() const { return importPointerList; }
    const std::vector<Target> &localPointers() const { return localPointerList; }
    uint32_t pointerOf(size_t import) const { return importPointerNumbers.at(import); }

private:
    void addEntries(uint32_t object, uint32_t section);
    Target entryTarget(uint32_t object, const Section &section, uint32_t entry) const;
    uint32_t addImportPointer(size_t import);
    uint32_t addLocalPointer(const Target &target);
    uint32_t addStub(size_t import);

    std::map<std::pair<uint32_t, uint32_t>, std::vector<Indirection>> entries; // by object and section
    std::map<size_t, uint32_t> importPointerNumbers, stubNumbers;
    std::map<std::pair<bool, Place>, uint32_t> localPointerNumbers;
    std::vector<size_t> importPointerList, stubList;
    std::vector<Target> localPointerList;
};

} // namespace macho
