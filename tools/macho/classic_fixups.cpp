#include "tools/macho/fixups.h"

namespace macho {

using namespace format;

namespace {

constexpr uint32_t fourBytes = 2u << 25; // r_length
constexpr uint32_t externalBit = 1u << 27;

} // namespace

ClassicFixups classicFixups(const Fixups &fixups, const Layout &layout, const Bytes &image, uint32_t firstImport)
{
    ByteWriter local, external;
    // Addresses count from the library's first segment, which is linked at 0. The section that the word points into
    // must not be 0: that would declare the word absolute, and loaders would leave it alone.
    for (uint32_t address : fixups.rebases) {
        local.u32(address);
        local.u32(layout.sectionNumberAt(load32(&image[layout.fileOffsetOf(address)])) | fourBytes);
    }
    for (const Bind &bind : fixups.binds) {
        external.u32(bind.address);
        external.u32((firstImport + static_cast<uint32_t>(bind.import)) | fourBytes | externalBit);
    }
    return {std::move(local.bytes), std::move(external.bytes)};
}

} // namespace macho
