#include "tools/machorun/mapped_image.h"

#include <cerrno>
#include <cstring>
#include <sys/mman.h>

// There under LeakSanitizer, which looks for pointers in what the system's own loader has mapped, and must be told of
// other places.
extern "C" void __lsan_register_root_region(const void *begin, size_t size) __attribute__((weak));
extern "C" void __lsan_unregister_root_region(const void *begin, size_t size) __attribute__((weak));

namespace machorun {

MappedImage::MappedImage(const ImageFile &file) : file_(file)
{
    const Segment &first = file.segments().front();
    const Segment &last = file.segments().back();
    size_ = last.address + last.size - first.address;
    void *memory = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw BadImage(std::string("cannot be mapped: ") + std::strerror(errno));
    }
    base_ = static_cast<uint8_t *>(memory);
    if (__lsan_register_root_region) {
        __lsan_register_root_region(base_, size_);
    }
    slide_ = reinterpret_cast<uint32_t>(base_) - first.address;
    for (const Segment &segment : file.segments()) {
        std::memcpy(at(segment.address), file.bytesOf(segment), segment.fileSize);
    }
}

MappedImage::~MappedImage()
{
    if (__lsan_unregister_root_region) {
        __lsan_unregister_root_region(base_, size_);
    }
    munmap(base_, size_);
}

void MappedImage::protect() const
{
    for (const Segment &segment : file_.segments()) {
        int protection = (segment.protection & VM_PROT_READ ? PROT_READ : 0) |
                         (segment.protection & VM_PROT_WRITE ? PROT_WRITE : 0) |
                         (segment.protection & VM_PROT_EXECUTE ? PROT_EXEC : 0);
        if (segment.size && mprotect(at(segment.address), segment.size, protection) != 0) {
            throw BadImage("cannot be protected: " + segment.name + ": " + std::strerror(errno));
        }
    }
}

uint32_t *MappedImage::fixupSlot(uint32_t fileAddress) const
{
    for (const Segment &segment : file_.segments()) {
        if (segment.isWritable() && fileAddress >= segment.address &&
            fileAddress - segment.address + sizeof(uint32_t) <= segment.size) {
            return reinterpret_cast<uint32_t *>(at(fileAddress));
        }
    }
    throw BadImage("needs a fix-up outside its writable segments, at " + Hex(fileAddress));
}

bool MappedImage::contains(const void *address, uint32_t size) const
{
    auto *start = static_cast<const uint8_t *>(address);
    return start >= base_ && start < end() && size <= static_cast<uint32_t>(end() - start);
}

bool MappedImage::isExecutable(uint32_t address) const
{
    for (const Segment &segment : file_.segments()) {
        if (address - slide_ - segment.address < segment.size) {
            return segment.protection & VM_PROT_EXECUTE;
        }
    }
    return false;
}

const char *MappedImage::textAt(uint32_t address, const char *what) const
{
    const void *start = asPointer(address);
    if (!contains(start) || !std::memchr(start, 0, end() - static_cast<const uint8_t *>(start))) {
        throw BadImage(std::string("has a pointer that leads outside it: ") + what);
    }
    return static_cast<const char *>(start);
}

} // namespace machorun
