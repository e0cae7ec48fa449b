// From an address in an object to the address in the finished library.
#pragma once

#include <cstdint>
#include <string>

#include "tools/macho/layout.h"

namespace macho {

class Addresses {
public:
    explicit Addresses(const Layout &layout) : layout(layout) {}

    const Layout &layout;

    // `where` is for the message if there is no such address. Of a weak definition defined several times: the winner's.
    uint32_t of(const Place &place, const std::string &where) const;
    // The same, but of a weak definition always this object's copy.
    uint32_t ofOwnCopy(const Place &place, const std::string &where) const;
    // Of anything but an import.
    uint32_t of(const Target &target, const std::string &where) const;
    uint32_t ofPointer(size_t import) const;
    uint32_t ofStub(size_t import) const;
    // The place that an address of an object means.
    Place placeAt(uint32_t object, uint32_t address, const std::string &where) const;

private:
    uint32_t ofEntry(const Place &place, const std::string &where) const;
};

} // namespace macho
