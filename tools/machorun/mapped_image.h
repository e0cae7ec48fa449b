// The library's segments at their place in memory.
#pragma once

#include "tools/macho/dylib_file.h"
#include "tools/machorun/bad_image.h"

#include <cstdint>

namespace machorun {

class MappedImage {
public:
    // Takes memory for the segments, wherever there is room; fill() puts them there with their fix-ups made, and
    // protect() gives them the rights that the file asks for.
    explicit MappedImage(const macho::DylibFile &file);
    // Only for an image that nothing in the process knows of yet: Objective-C code cannot be taken away.
    ~MappedImage();
    MappedImage(const MappedImage &) = delete;
    MappedImage &operator=(const MappedImage &) = delete;

    void fill(const macho::DylibFixups &fixups, const macho::SymbolAddress &addressOf) const;
    void protect() const;

    // Addresses of the file count from its first segment. One out of a damaged file may lead anywhere.
    uint8_t *at(uint32_t fileAddress) const
    {
        return reinterpret_cast<uint8_t *>(reinterpret_cast<uint32_t>(base_) + fileAddress);
    }

    // Throws when a fix-up would change what is outside the writable segments: the text of a plug-in is never changed,
    // and a system that shares it between processes would fault.
    void requireWritable(uint32_t fileAddress) const;

    bool contains(const void *address, uint32_t size = 1) const;
    bool isExecutable(uint32_t address) const;

    // Throws when a file exports something that is not in it.
    void *exportAt(uint32_t fileAddress) const
    {
        if (!contains(at(fileAddress))) {
            throw BadImage("exports an address outside it: " + macho::hex(fileAddress));
        }
        return at(fileAddress);
    }

    // For pointers met inside the image (`what` says in errors to which): the records behind one, which must lie in the
    // image completely, or the text, which must end in it.
    template <class Record>
    Record *recordsAt(uint32_t address, uint32_t count, const char *what) const
    {
        if (address % 4 || count > size_ / sizeof(Record) || !contains(asPointer(address), count * sizeof(Record))) {
            throw BadImage(std::string("has a pointer that leads outside it: ") + what);
        }
        return static_cast<Record *>(asPointer(address));
    }
    const char *textAt(uint32_t address, const char *what) const;

private:
    static void *asPointer(uint32_t address) { return reinterpret_cast<void *>(address); }

    uint8_t *end() const { return base_ + size_; }

    const macho::DylibFile &file_;
    uint32_t size_;
    uint8_t *base_;
};

} // namespace machorun
