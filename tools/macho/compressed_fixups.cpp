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

// Words at one distance from each other take one operation together. After each operation but the last of a segment,
// the loader stands at the next word.
class RebaseCode {
public:
    RebaseCode(const std::vector<uint32_t> &words, const Layout &layout) : words(words), layout(layout) {}
    Bytes make();

private:
    void addSegment(size_t first, size_t end);
    // How many words from `first` on, but for the last, have the same distance to the next as the first has.
    size_t stepsFrom(size_t first, size_t end) const;
    uint32_t distanceAt(size_t index) const { return words[index + 1] - words[index]; }
    void operation(uint32_t opcode, std::initializer_list<uint32_t> operands);

    const std::vector<uint32_t> &words;
    const Layout &layout;
    ByteWriter code;
};

Bytes RebaseCode::make()
{
    operation(REBASE_OPCODE_SET_TYPE_IMM | FIXUP_TYPE_POINTER, {});
    for (size_t first = 0, end; first < words.size(); first = end) {
        auto [segment, offset] = segmentOffset(layout, words[first]);
        end = first + 1;
        while (end < words.size() && layout.segments[segment].contains(words[end]))
            end++;
        operation(REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB | segment, {offset});
        addSegment(first, end);
    }
    operation(REBASE_OPCODE_DONE, {});
    return std::move(code.bytes);
}

void RebaseCode::addSegment(size_t first, size_t end)
{
    while (first < end) {
        size_t steps = stepsFrom(first, end);
        auto count = static_cast<uint32_t>(steps);
        uint32_t skipped = steps == 0 ? 0 : distanceAt(first) - pointerSize;
        if (steps == 0 || skipped == 0) {
            count++; // the last word of a run of neighbours belongs to it
            if (count <= IMMEDIATE_MASK)
                operation(REBASE_OPCODE_DO_REBASE_IMM_TIMES | count, {});
            else
                operation(REBASE_OPCODE_DO_REBASE_ULEB_TIMES, {count});
            first += count;
            if (first == end)
                return;
            uint32_t gap = words[first] - words[first - 1] - pointerSize;
            if (gap % pointerSize == 0 && gap / pointerSize <= IMMEDIATE_MASK)
                operation(REBASE_OPCODE_ADD_ADDR_IMM_SCALED | gap / pointerSize, {});
            else
                operation(REBASE_OPCODE_ADD_ADDR_ULEB, {gap});
        } else {
            if (steps == 1)
                operation(REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB, {skipped});
            else
                operation(REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB, {count, skipped});
            first += steps;
        }
    }
}

size_t RebaseCode::stepsFrom(size_t first, size_t end) const
{
    size_t next = first;
    while (next + 1 < end && distanceAt(next) == distanceAt(first))
        next++;
    return next - first;
}

void RebaseCode::operation(uint32_t opcode, std::initializer_list<uint32_t> operands)
{
    code.u8(opcode);
    for (uint32_t operand : operands)
        code.uleb(operand);
}

Bytes bindCode(std::vector<Bind> binds, const Layout &layout, const std::vector<uint32_t> &ordinals)
{
    std::sort(binds.begin(), binds.end(), [](const Bind &left, const Bind &right) {
        return std::tie(left.import, left.address) < std::tie(right.import, right.address);
    });
    ByteWriter code;
    code.u8(BIND_OPCODE_SET_TYPE_IMM | FIXUP_TYPE_POINTER);
    int32_t addend = 0;
    for (size_t index = 0; index < binds.size(); index++) {
        const Bind &bind = binds[index];
        if (index == 0 || bind.import != binds[index - 1].import) {
            uint32_t ordinal = ordinals[bind.import];
            if (ordinal <= IMMEDIATE_MASK) {
                code.u8(BIND_OPCODE_SET_DYLIB_ORDINAL_IMM | ordinal);
            } else {
                code.u8(BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB);
                code.uleb(ordinal);
            }
            const Import &import = layout.symbols.imports()[bind.import];
            code.u8(BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM | (import.weak ? BIND_SYMBOL_FLAGS_WEAK_IMPORT : 0));
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

CompressedFixups compressedFixups(const Fixups &fixups, const Layout &layout, const std::vector<uint32_t> &ordinals)
{
    std::vector<Bind> binds = fixups.binds;
    binds.insert(binds.end(), fixups.pointerBinds.begin(), fixups.pointerBinds.end());
    return {RebaseCode(fixups.rebases, layout).make(), bindCode(std::move(binds), layout, ordinals)};
}

} // namespace macho
