#include "tools/macho/dylib_fixups.h"

#include <algorithm>

namespace macho {

using namespace format;

namespace {

ByteView fileOf(const DylibFile &dylib)
{
    return ByteView(dylib.name, dylib.bytes.data(), dylib.bytes.size());
}

[[noreturn]] void refuse(const DylibFile &dylib, const std::string &reason)
{
    fail(printable(dylib.name), ": ", reason);
}

void checkWord(const DylibFile &dylib, uint32_t address)
{
    const DylibSegment *segment = dylib.segmentAt(address);
    if (!segment || address - segment->address + uint64_t{pointerSize} > segment->memorySize)
        refuse(dylib, "a fix-up at " + hex(address) + ", which no segment contains");
}

DylibBind bindOf(const DylibFile &dylib, uint32_t address, uint32_t symbolNumber, bool replaces)
{
    if (symbolNumber >= dylib.symbols.size() || !dylib.symbols[symbolNumber].isImport())
        refuse(dylib,
               "the word at " + hex(address) + " is bound to symbol " + hex(symbolNumber) + ", which is no import");
    const DylibSymbol &symbol = dylib.symbols[symbolNumber];
    checkWord(dylib, address);
    return {address, symbol.name, symbol.libraryOrdinal(), symbol.isWeakImport(), 0, replaces};
}

// The byte code that describes fix-ups: an operation and a small number in each byte, other operands behind it.
class Interpreter {
public:
    Interpreter(const DylibFile &dylib, uint32_t offset, uint32_t size)
        : dylib(dylib), code(fileOf(dylib).slice(offset, size, what))
    {
    }
    std::vector<uint32_t> rebases();
    void addBinds(std::vector<DylibBind> &list, bool lazy);

private:
    static constexpr const char *what = "the compressed fix-ups";
    uint32_t number() { return code.uleb(at, what); }
    void setPlace(uint8_t segment);
    // Calls `body` with the address of each of so many words, so far apart.
    template <class Body>
    void forEachWord(uint32_t count, uint32_t skipped, Body body);

    const DylibFile &dylib;
    ByteView code;
    uint64_t at = 0;
    uint32_t address = 0;
};

void Interpreter::setPlace(uint8_t segment)
{
    if (segment >= dylib.segments.size())
        refuse(dylib, "a fix-up in segment " + std::to_string(segment) + ", which does not exist");
    address = dylib.segments[segment].address + number();
}

template <class Body>
void Interpreter::forEachWord(uint32_t count, uint32_t skipped, Body body)
{
    // A damaged count must not keep a loader busy.
    if (count > (dylib.segments.back().address + dylib.segments.back().memorySize) / pointerSize)
        refuse(dylib, "more fix-ups in one place than words");
    for (; count > 0; count--) {
        checkWord(dylib, address);
        body(address);
        address += pointerSize + skipped;
    }
}

std::vector<uint32_t> Interpreter::rebases()
{
    std::vector<uint32_t> list;
    auto rebase = [&](uint32_t count, uint32_t skipped) {
        forEachWord(count, skipped, [&](uint32_t word) { list.push_back(word); });
    };
    while (at < code.size()) {
        uint8_t byte = code.u8(at++, what), immediate = byte & IMMEDIATE_MASK;
        switch (byte & OPCODE_MASK) {
        case REBASE_OPCODE_DONE:
            return list;
        case REBASE_OPCODE_SET_TYPE_IMM:
            if (immediate != FIXUP_TYPE_POINTER)
                refuse(dylib, "a rebase of a kind that changes code");
            break;
        case REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
            setPlace(immediate);
            break;
        case REBASE_OPCODE_ADD_ADDR_ULEB:
            address += number();
            break;
        case REBASE_OPCODE_ADD_ADDR_IMM_SCALED:
            address += immediate * pointerSize;
            break;
        case REBASE_OPCODE_DO_REBASE_IMM_TIMES:
            rebase(immediate, 0);
            break;
        case REBASE_OPCODE_DO_REBASE_ULEB_TIMES:
            rebase(number(), 0);
            break;
        case REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB:
            rebase(1, number());
            break;
        case REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB: {
            uint32_t count = number();
            rebase(count, number());
            break;
        }
        default:
            refuse(dylib, "the unexpected rebase operation " + hex(byte));
        }
    }
    return list;
}

// Each symbol that is bound lazily ends with DONE, since a loader may bind it alone.
void Interpreter::addBinds(std::vector<DylibBind> &list, bool lazy)
{
    DylibBind current = {0, {}, 0, false, 0, true};
    auto bind = [&](uint32_t count, uint32_t skipped) {
        forEachWord(count, skipped, [&](uint32_t word) {
            current.address = word;
            list.push_back(current);
        });
    };
    while (at < code.size()) {
        uint8_t byte = code.u8(at++, what), immediate = byte & IMMEDIATE_MASK;
        switch (byte & OPCODE_MASK) {
        case BIND_OPCODE_DONE:
            if (!lazy)
                return;
            break;
        case BIND_OPCODE_SET_DYLIB_ORDINAL_IMM:
            current.libraryOrdinal = immediate;
            break;
        case BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB:
            current.libraryOrdinal = number();
            break;
        case BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM:
            current.weak = immediate & BIND_SYMBOL_FLAGS_WEAK_IMPORT;
            current.symbol = code.text(at, 4096, what);
            at += current.symbol.size() + 1;
            break;
        case BIND_OPCODE_SET_TYPE_IMM:
            if (immediate != FIXUP_TYPE_POINTER)
                refuse(dylib, "a bind of a kind that changes code");
            break;
        case BIND_OPCODE_SET_ADDEND_SLEB:
            current.addend = code.sleb(at, what);
            break;
        case BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
            setPlace(immediate);
            break;
        case BIND_OPCODE_ADD_ADDR_ULEB:
            address += number();
            break;
        case BIND_OPCODE_DO_BIND:
            bind(1, 0);
            break;
        case BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB:
            bind(1, number());
            break;
        case BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED:
            bind(1, immediate * pointerSize);
            break;
        case BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB: {
            uint32_t count = number();
            bind(count, number());
            break;
        }
        default:
            refuse(dylib, "the unexpected bind operation " + hex(byte));
        }
    }
}

} // namespace

void readClassicFixups(DylibFile &dylib, const dysymtab_command &tables)
{
    auto forEachRecord = [&](uint32_t offset, uint32_t count, bool external, auto body) {
        for (const auto &entry : fileOf(dylib).records<relocation_info>(offset, count, "the relocations")) {
            // A linked library has plain words to change and nothing else.
            if (entry.r_address & R_SCATTERED || entry.r_type != GENERIC_RELOC_VANILLA || entry.r_length != 2 ||
                entry.r_pcrel || entry.r_extern != external)
                refuse(dylib, "the unexpected relocation at " + hex(entry.r_address));
            checkWord(dylib, entry.r_address);
            body(entry.r_address, entry.r_symbolnum);
        }
    };
    forEachRecord(tables.locreloff, tables.nlocrel, false, [&](uint32_t address, uint32_t section) {
        if (section == 0 || section > dylib.sections.size())
            refuse(dylib, "the word at " + hex(address) + " is not moved with any section");
        dylib.classic.rebases.push_back(address);
    });
    forEachRecord(tables.extreloff, tables.nextrel, true, [&](uint32_t address, uint32_t symbol) {
        dylib.classic.binds.push_back(bindOf(dylib, address, symbol, false));
    });
    for (const DylibSection &section : dylib.sections) {
        if (section.type() != S_NON_LAZY_SYMBOL_POINTERS && section.type() != S_LAZY_SYMBOL_POINTERS)
            continue;
        for (uint32_t entry = 0; entry < section.size / pointerSize; entry++) {
            uint64_t index = uint64_t{section.firstIndirect} + entry;
            if (index >= dylib.indirectSymbols.size())
                refuse(dylib, "section " + printable(section.name) + " has more entries than indirect symbols");
            uint32_t address = section.address + entry * pointerSize;
            dylib.classic.binds.push_back(bindOf(dylib, address, dylib.indirectSymbols[index], true));
        }
    }
}

void readCompressedFixups(DylibFile &dylib, const dyld_info_command &info)
{
    if (info.weak_bind_size != 0)
        refuse(dylib, "has symbols to be shared with other libraries, which a plug-in should not have");
    dylib.compressed.present = true;
    dylib.compressed.rebases = Interpreter(dylib, info.rebase_off, info.rebase_size).rebases();
    Interpreter(dylib, info.bind_off, info.bind_size).addBinds(dylib.compressed.binds, false);
    Interpreter(dylib, info.lazy_bind_off, info.lazy_bind_size).addBinds(dylib.compressed.binds, true);
}

void readExportTrie(DylibFile &dylib, uint32_t offset, uint32_t size)
{
    const char *what = "the export tree";
    ByteView trie = fileOf(dylib).slice(offset, size, what);
    struct Node {
        uint64_t offset;
        std::string name;
    };
    std::vector<Node> open;
    if (trie.size() > 0)
        open.push_back({0, {}});
    for (size_t visited = 0; !open.empty(); visited++) {
        if (visited > trie.size())
            refuse(dylib, "the export tree leads in a circle");
        Node node = open.back();
        open.pop_back();
        uint32_t symbolSize = trie.uleb(node.offset, what);
        uint64_t children = node.offset + symbolSize;
        if (symbolSize > 0) {
            if (trie.uleb(node.offset, what) != 0)
                refuse(dylib, "export " + printable(node.name) + " is no ordinary symbol");
            dylib.exportTrie[node.name] = trie.uleb(node.offset, what);
        }
        uint8_t count = trie.u8(children++, what);
        for (; count > 0; count--) {
            std::string_view edge = trie.text(children, 4096, what);
            children += edge.size() + 1;
            open.push_back({trie.uleb(children, what), node.name + std::string(edge)});
        }
    }
}

Bytes loadedMemory(const DylibFile &dylib, const DylibFixups &fixups, uint32_t base, const SymbolAddress &addressOf)
{
    const DylibSegment &last = dylib.segments.back();
    Bytes memory(last.address + last.memorySize);
    for (const DylibSegment &segment : dylib.segments)
        std::copy_n(dylib.bytes.begin() + segment.fileOffset, segment.fileSize, memory.begin() + segment.address);
    for (uint32_t address : fixups.rebases)
        store32(&memory[address], load32(&memory[address]) + base);
    for (const DylibBind &bind : fixups.binds) {
        uint32_t value = addressOf(bind) + static_cast<uint32_t>(bind.addend);
        store32(&memory[bind.address], bind.replaces ? value : load32(&memory[bind.address]) + value);
    }
    return memory;
}

} // namespace macho
