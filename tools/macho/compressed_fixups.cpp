#include <algorithm>

#include "tools/macho/fixups.h"

namespace macho {

using namespace format;

namespace {

struct SegmentOffset {
    uint32_t segment, offset;
};

SegmentOffset segmentOffset(const Layout &layout, uint32_t address)
{
    uint32_t number = 0;
    while (!layout.segments[number].contains(address))
        number++;
    return {number, address - layout.segments[number].address};
}

// Runs of neighbouring words take one operation each.
Bytes rebaseCode(const std::vector<uint32_t> &rebases, const Layout &layout)
{
    ByteWriter code;
    code.u8(REBASE_OPCODE_SET_TYPE_IMM | fixupTypePointer);
    for (size_t first = 0, next; first < rebases.size(); first = next) {
        auto [segment, offset] = segmentOffset(layout, rebases[first]);
        next = first + 1;
        while (next < rebases.size() && rebases[next] == rebases[next - 1] + pointerSize &&
               layout.segments[segment].contains(rebases[next]))
            next++;
        auto count = static_cast<uint32_t>(next - first);
        code.u8(REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB | segment);
        code.uleb(offset);
        if (count <= immediateMask) {
            code.u8(REBASE_OPCODE_DO_REBASE_IMM_TIMES | count);
        } else {
            code.u8(REBASE_OPCODE_DO_REBASE_ULEB_TIMES);
            code.uleb(count);
        }
    }
    code.u8(REBASE_OPCODE_DONE);
    return std::move(code.bytes);
}

Bytes bindCode(std::vector<Bind> binds, const Layout &layout, const std::vector<Import> &imports,
               const std::vector<uint32_t> &ordinals)
{
    std::sort(binds.begin(), binds.end(), [](const Bind &left, const Bind &right) {
        return std::tie(left.import, left.address) < std::tie(right.import, right.address);
    });
    ByteWriter code;
    code.u8(BIND_OPCODE_SET_TYPE_IMM | fixupTypePointer);
    int32_t addend = 0;
    for (size_t index = 0; index < binds.size(); index++) {
        const Bind &bind = binds[index];
        if (index == 0 || bind.import != binds[index - 1].import) {
            uint32_t ordinal = ordinals[bind.import];
            if (ordinal <= immediateMask) {
                code.u8(BIND_OPCODE_SET_DYLIB_ORDINAL_IMM | ordinal);
            } else {
                code.u8(BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB);
                code.uleb(ordinal);
            }
            const Import &import = imports[bind.import];
            code.u8(BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM | (import.weak ? bindFlagWeakImport : 0));
            code.text(import.name);
        }
        if (bind.addend != addend) {
            addend = bind.addend;
            code.u8(BIND_OPCODE_SET_ADDEND_SLEB);
            code.sleb(addend);
        }
        auto [segment, offset] = segmentOffset(layout, bind.address);
        code.u8(BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB | segment);
        code.uleb(offset);
        code.u8(BIND_OPCODE_DO_BIND);
    }
    code.u8(BIND_OPCODE_DONE);
    return std::move(code.bytes);
}

} // namespace

CompressedFixups compressedFixups(const Fixups &fixups, const Layout &layout, const std::vector<Import> &imports,
                                  const std::vector<uint32_t> &ordinals)
{
    std::vector<Bind> binds = fixups.binds;
    binds.insert(binds.end(), fixups.pointerBinds.begin(), fixups.pointerBinds.end());
    return {rebaseCode(fixups.rebases, layout), bindCode(std::move(binds), layout, imports, ordinals)};
}

} // namespace macho
