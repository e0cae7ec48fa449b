// The library's segments at their place in memory.
#pragma once

#include "tools/machorun/image_file.h"

#include <cstdint>

namespace machorun {

class MappedImage {
public:
    // Maps every segment writable, wherever there is room; protect() gives them the rights that the file asks for.
    explicit MappedImage(const ImageFile &file);
    // Only for an image that nothing in the process knows of yet: Objective-C code cannot be taken away.
    ~MappedImage();
    MappedImage(const MappedImage &) = delete;
    MappedImage &operator=(const MappedImage &) = delete;

    void protect() const;

    // What is added to every address of the file.
    uint32_t slide() const { return slide_; }
    uint8_t *begin() const { return base_; }
    uint8_t *end() const { return base_ + size_; }

    uint8_t *at(uint32_t fileAddress) const { return reinterpret_cast<uint8_t *>(fileAddress + slide_); }
    uint8_t *startOf(const Section &section) const { return at(section.address); }

    // The word at an address of the file that a fix-up may change. Throws when it is outside the writable segments: the
    // text of a plug-in is never changed, and a system that shares it between processes would fault.
    uint32_t *fixupSlot(uint32_t fileAddress) const;

    bool contains(const void *address, uint32_t size = 1) const;
    bool isExecutable(uint32_t address) const;

    // Throws when a file exports something that is not in it.
    void *exportAt(uint32_t fileAddress) const
    {
        if (!contains(at(fileAddress))) {
            throw BadImage("exports an address outside it: " + Hex(fileAddress));
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

    const ImageFile &file_;
    uint8_t *base_;
    uint32_t size_;
    uint32_t slide_;
};

} // namespace machorun
