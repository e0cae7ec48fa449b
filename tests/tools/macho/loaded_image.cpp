#include "tests/tools/macho/loaded_image.h"

#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {

static_assert(sizeof(void *) == 4, "the code under test is 32-bit code");

LoadedImage::LoadedImage(const DylibFile &file, const DylibFixups &fixups, const std::map<std::string, void *> &imports)
    : dylib(file), size(file.segments.back().address + file.segments.back().memorySize)
{
    void *memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        std::abort();
    base = static_cast<uint8_t *>(memory);
    Bytes bytes = loadedMemory(dylib, fixups, reinterpret_cast<uintptr_t>(base), [&](const DylibBind &bind) {
        auto import = imports.find(bind.symbol);
        return import == imports.end() ? 0 : static_cast<uint32_t>(reinterpret_cast<uintptr_t>(import->second));
    });
    std::memcpy(base, bytes.data(), bytes.size());
    for (const DylibSegment &segment : dylib.segments) {
        int protection = (segment.protection & format::VM_PROT_READ ? PROT_READ : 0) |
                         (segment.protection & format::VM_PROT_WRITE ? PROT_WRITE : 0) |
                         (segment.protection & format::VM_PROT_EXECUTE ? PROT_EXEC : 0);
        if (segment.memorySize != 0 && mprotect(base + segment.address, segment.memorySize, protection) != 0)
            std::abort();
    }
}

LoadedImage::~LoadedImage()
{
    munmap(base, size);
}

uint32_t LoadedImage::addressOfSymbol(const std::string &name) const
{
    return addressOf(dylib, name);
}

} // namespace macho::test
