#include "tools/machorun/mapped_image.h"

#include <cerrno>
#include <cstring>
#include <sys/mman.h>

// There under LeakSanitizer, which looks for pointers in what the system's own loader has mapped, and must be told of
// other places.
extern "C" void __lsan_register_root_region(const void *begin, size_t size) __attribute__((weak));
extern "C" void __lsan_unregister_root_region(const void *begin, size_t size) __attribute__((weak));

namespace machorun {

using namespace macho;

MappedImage::MappedImage(const DylibFile &file)
    : file_(file), size_(file.segments.back().address + file.segments.back().memorySize)
{
    void *memory = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw BadImage(std::string("cannot be mapped: ") + std::strerror(errno));
    }
    base_ = static_cast<uint8_t *>(memory);
    if (__lsan_register_root_region) {
        __lsan_register_root_region(base_, size_);
    }
}

MappedImage::~MappedImage()
{
    if (__lsan_unregister_root_region) {
        __lsan_unregister_root_region(base_, size_);
    }
    munmap(base_, size_);
}

void MappedImage::fill(const DylibFixups &fixups, const SymbolAddress &addressOf) const
{
    for (uint32_t address : fixups.rebases) {
        requireWritable(address);
    }
    for (const DylibBind &bind : fixups.binds) {
        requireWritable(bind.address);
    }
    Bytes memory = loadedMemory(file_, fixups, reinterpret_cast<uint32_t>(base_), addressOf);
    std::memcpy(base_, memory.data(), size_);
}

void MappedImage::protect() const
{
    for (const DylibSegment &segment : file_.segments) {
        int protection = (segment.protection & format::VM_PROT_READ ? PROT_READ : 0) |
                         (segment.protection & format::VM_PROT_WRITE ? PROT_WRITE : 0) |
                         (segment.protection & format::VM_PROT_EXECUTE ? PROT_EXEC : 0);
        if (segment.memorySize && mprotect(at(segment.address), segment.memorySize, protection) != 0) {
            throw BadImage("cannot be protected: " + segment.name + ": " + std::strerror(errno));
        }
    }
}

void MappedImage::requireWritable(uint32_t fileAddress) const
{
    const DylibSegment *segment = file_.segmentAt(fileAddress);
    if (!segment || !segment->isWritable()) {
        throw BadImage("needs a fix-up outside its writable segments, at " + hex(fileAddress));
    }
}

bool MappedImage::contains(const void *address, uint32_t size) const
{
    auto *start = static_cast<const uint8_t *>(address);
    return start >= base_ && start < end() && size <= static_cast<uint32_t>(end() - start);
}

bool MappedImage::isExecutable(uint32_t address) const
{
    const DylibSegment *segment = file_.segmentAt(address - reinterpret_cast<uint32_t>(base_));
    return segment && segment->protection & format::VM_PROT_EXECUTE;
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
