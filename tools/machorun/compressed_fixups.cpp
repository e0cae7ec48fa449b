#include "tools/machorun/fixups.h"

namespace machorun {

namespace {

// The place that a stream of operations moves along.
class Cursor {
public:
    Cursor(const ImageFile &file, const MappedImage &image) : file_(file), image_(image) {}

    void setSegment(uint32_t index, uint32_t offset)
    {
        if (index >= file_.segments().size()) {
            throw BadImage("has a fix-up in a segment that it does not have: " + Hex(index));
        }
        address_ = file_.segments()[index].address + offset;
        hasSegment_ = true;
    }

    void advance(uint32_t distance) { address_ += distance; }

    // A damaged count must not keep the loader busy: no operation has more pointers than the image has room for.
    uint32_t checkedCount(uint32_t count) const
    {
        if (count > static_cast<uint32_t>(image_.end() - image_.begin()) / pointerSize) {
            throw BadImage("has more fix-ups in one place than pointers");
        }
        return count;
    }

    uint32_t *slot() const
    {
        if (!hasSegment_) {
            throw BadImage("has a fix-up without a segment");
        }
        return image_.fixupSlot(address_);
    }

private:
    const ImageFile &file_;
    const MappedImage &image_;
    uint32_t address_ = 0;
    bool hasSegment_ = false;
};

[[noreturn]] void refuse(const char *what, uint8_t operation)
{
    throw BadImage(std::string("has an unknown ") + what + ": " + Hex(operation));
}

void rebase(const ImageFile &file, const MappedImage &image)
{
    ByteReader operations = file.readerOf(file.compressedFixups()->rebase, "rebase operations");
    Cursor cursor(file, image);
    auto moveNext = [&](uint32_t times, uint32_t skipped) {
        for (uint32_t count = cursor.checkedCount(times); count; count--) {
            *cursor.slot() += image.slide();
            cursor.advance(pointerSize + skipped);
        }
    };
    while (!operations.atEnd()) {
        auto byte = operations.read<uint8_t>();
        uint8_t immediate = byte & IMMEDIATE_MASK;
        switch (byte & OPCODE_MASK) {
        case REBASE_OPCODE_DONE:
            return;
        case REBASE_OPCODE_SET_TYPE_IMM:
            if (immediate != FIXUP_TYPE_POINTER) {
                refuse("kind of rebase", immediate);
            }
            break;
        case REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
            cursor.setSegment(immediate, operations.readUleb());
            break;
        case REBASE_OPCODE_ADD_ADDR_ULEB:
            cursor.advance(operations.readUleb());
            break;
        case REBASE_OPCODE_ADD_ADDR_IMM_SCALED:
            cursor.advance(immediate * pointerSize);
            break;
        case REBASE_OPCODE_DO_REBASE_IMM_TIMES:
            moveNext(immediate, 0);
            break;
        case REBASE_OPCODE_DO_REBASE_ULEB_TIMES:
            moveNext(operations.readUleb(), 0);
            break;
        case REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB:
            moveNext(1, operations.readUleb());
            break;
        case REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB: {
            uint32_t count = operations.readUleb();
            moveNext(count, operations.readUleb());
            break;
        }
        default:
            refuse("rebase operation", byte);
        }
    }
}

// Lazy binding has the same operations, but each of its symbols ends with DONE. They are bound at once, as a system
// does when it is asked to.
void bind(const ImageFile &file, const MappedImage &image, const Imports &imports, const FileRange &range, bool isLazy)
{
    ByteReader operations = file.readerOf(range, "bind operations");
    Cursor cursor(file, image);
    std::string symbol;
    bool isWeak = false;
    int32_t addend = 0;
    auto bindNext = [&](uint32_t times, uint32_t skipped) {
        for (uint32_t count = cursor.checkedCount(times); count; count--) {
            auto address = reinterpret_cast<uint32_t>(imports.addressOf(symbol, isWeak));
            *cursor.slot() = address + addend;
            cursor.advance(pointerSize + skipped);
        }
    };
    while (!operations.atEnd()) {
        auto byte = operations.read<uint8_t>();
        uint8_t immediate = byte & IMMEDIATE_MASK;
        switch (byte & OPCODE_MASK) {
        case BIND_OPCODE_DONE:
            if (!isLazy) {
                return;
            }
            break;
        case BIND_OPCODE_SET_DYLIB_ORDINAL_IMM:
        case BIND_OPCODE_SET_DYLIB_SPECIAL_IMM:
            break; // which library a symbol comes from: the import table knows them all by name
        case BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB:
            operations.readUleb();
            break;
        case BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM:
            isWeak = immediate & BIND_SYMBOL_FLAGS_WEAK_IMPORT;
            symbol = operations.readString();
            break;
        case BIND_OPCODE_SET_TYPE_IMM:
            if (immediate != FIXUP_TYPE_POINTER) {
                refuse("kind of binding", immediate);
            }
            break;
        case BIND_OPCODE_SET_ADDEND_SLEB:
            addend = operations.readSleb();
            break;
        case BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
            cursor.setSegment(immediate, operations.readUleb());
            break;
        case BIND_OPCODE_ADD_ADDR_ULEB:
            cursor.advance(operations.readUleb());
            break;
        case BIND_OPCODE_DO_BIND:
            bindNext(1, 0);
            break;
        case BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB:
            bindNext(1, operations.readUleb());
            break;
        case BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED:
            bindNext(1, immediate * pointerSize);
            break;
        case BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB: {
            uint32_t count = operations.readUleb();
            bindNext(count, operations.readUleb());
            break;
        }
        default:
            refuse("bind operation", byte);
        }
    }
}

} // namespace

void ApplyCompressedFixups(const ImageFile &file, const MappedImage &image, const Imports &imports)
{
    rebase(file, image);
    bind(file, image, imports, file.compressedFixups()->bind, false);
    bind(file, image, imports, file.compressedFixups()->lazyBind, true);
}

// The tree spells each exported name along its edges; a node with a value ends one.
void *FindCompressedExport(const ImageFile &file, const MappedImage &image, const std::string &symbol)
{
    const FileRange &range = file.compressedFixups()->exports;
    if (!range.size) {
        return nullptr;
    }
    ByteReader tree = file.readerOf(range, "export tree");
    size_t matched = 0;
    // Every step but the first consumes a letter, unless the tree is damaged and runs in a circle.
    for (size_t step = 0; step <= symbol.size(); step++) {
        uint32_t valueSize = tree.readUleb();
        uint32_t children = tree.position() + valueSize;
        if (matched == symbol.size()) {
            if (!valueSize || tree.readUleb() != 0) {
                return nullptr; // not an export, or not one of the plain kind
            }
            return image.exportAt(file.segments().front().address + tree.readUleb());
        }
        tree.seek(children);
        uint32_t next = 0;
        for (auto count = tree.read<uint8_t>(); count && !next; count--) {
            std::string edge = tree.readString();
            uint32_t child = tree.readUleb();
            if (!edge.empty() && symbol.compare(matched, edge.size(), edge) == 0) {
                matched += edge.size();
                next = child;
            }
        }
        if (!next) {
            return nullptr;
        }
        tree.seek(next);
    }
    return nullptr;
}

} // namespace machorun
