#include "tools/macho/dylib_file.h"

#include <algorithm>

#include "tools/macho/dylib_fixups.h"

namespace macho {

using namespace format;

namespace {

struct Reader {
    DylibFile &dylib;
    ByteView file;
    DylibRange local, external, indirect, rebases, binds, trie, symbols, names, functions;
    bool hasCompressed = false;

    [[noreturn]] void refuse(const std::string &reason) const { fail(printable(dylib.name), ": ", reason); }
    uint32_t word(uint64_t offset) const { return file.u32(offset, "a load command"); }
    DylibRange range(uint64_t offset) const { return {word(offset), word(offset + 4)}; }
    void read();
    void readCommand(uint32_t command, uint64_t at, uint32_t size);
    void readSegment(uint64_t at, uint32_t size);
    Library readLibrary(uint64_t at, uint32_t size) const;
    void readSymbols();
    void readFunctionStarts();
};

void Reader::read()
{
    if (file.size() < sizeof(mach_header) || file.u32(0, "the header") != MH_MAGIC)
        refuse("is not a 32-bit Mach-O file");
    dylib.processor = word(4);
    dylib.processorSubtype = word(8);
    dylib.fileType = word(12);
    dylib.flags = word(24);
    uint64_t at = sizeof(mach_header), end = sizeof(mach_header) + uint64_t{word(20)};
    for (uint32_t index = 0, count = word(16); index < count; index++) {
        uint32_t size = word(at + 4);
        if (size < 8 || at + size > end || at + size > file.size())
            refuse("load command " + std::to_string(index) + " has the impossible size " + std::to_string(size));
        dylib.commands.push_back(word(at));
        readCommand(word(at), at, size);
        at += size;
    }
    uint32_t firstSection = static_cast<uint32_t>(file.size());
    for (const DylibSection &section : dylib.sections)
        if (section.type() != S_ZEROFILL)
            firstSection = std::min(firstSection, section.fileOffset);
    dylib.commandRoom = firstSection < at ? 0 : firstSection - static_cast<uint32_t>(at);
    readSymbols();
    readFunctionStarts();
    readClassicFixups(dylib, local, external);
    if (hasCompressed) {
        readCompressedFixups(dylib, rebases, binds);
        readExportTrie(dylib, trie);
    }
    // A library with the newer form only has no relocations: its pointer sections alone would not do.
    dylib.classic.present =
        std::find(dylib.commands.begin(), dylib.commands.end(), LC_DYLD_INFO_ONLY) == dylib.commands.end();
}

void Reader::readCommand(uint32_t command, uint64_t at, uint32_t size)
{
    switch (command) {
    case LC_SEGMENT:
        return readSegment(at, size);
    case LC_SYMTAB:
        symbols = range(at + 8);
        names = range(at + 16);
        return;
    case LC_DYSYMTAB: {
        indirect = range(at + 56);
        external = range(at + 64);
        local = range(at + 72);
        ByteView records = file.slice(indirect.offset, uint64_t{indirect.count} * 4, "the indirect symbols");
        for (uint32_t index = 0; index < indirect.count; index++)
            dylib.indirectSymbols.push_back(load32(records.data() + 4 * index));
        return;
    }
    case LC_ID_DYLIB:
        dylib.identity = readLibrary(at, size);
        return;
    case LC_LOAD_DYLIB:
    case LC_LOAD_WEAK_DYLIB:
        dylib.libraries.push_back({readLibrary(at, size), command == LC_LOAD_WEAK_DYLIB});
        return;
    case LC_DYLD_INFO:
    case LC_DYLD_INFO_ONLY:
        hasCompressed = true;
        rebases = range(at + 8);
        binds = range(at + 16);
        trie = range(at + 40);
        return;
    case LC_FUNCTION_STARTS:
        functions = range(at + 8);
        return;
    case LC_VERSION_MIN_MACOSX:
        dylib.minimumSystem = word(at + 8);
        return;
    case LC_UUID: {
        ByteView uuid = file.slice(at + 8, 16, "the identifier");
        dylib.uuid.assign(reinterpret_cast<const char *>(uuid.data()), uuid.size());
        return;
    }
    }
}

void Reader::readSegment(uint64_t at, uint32_t size)
{
    DylibSegment segment;
    segment.name = file.paddedText(at + 8, 16, "a segment");
    segment.address = word(at + 24);
    segment.memorySize = word(at + 28);
    segment.fileOffset = word(at + 32);
    segment.fileSize = word(at + 36);
    segment.protection = word(at + 44);
    file.slice(segment.fileOffset, segment.fileSize, "a segment");
    uint64_t previousEnd =
        dylib.segments.empty() ? 0 : uint64_t{dylib.segments.back().address} + dylib.segments.back().memorySize;
    constexpr uint64_t largestImage = 1u << 30;
    if (segment.address != previousEnd || segment.memorySize < segment.fileSize ||
        previousEnd + segment.memorySize > largestImage)
        refuse("segment " + printable(segment.name) + " does not follow the one before, or has an impossible size");
    uint32_t count = word(at + 48);
    if (sizeof(segment_command) + uint64_t{count} * sizeof(struct section) > size)
        refuse("segment " + printable(segment.name) + " has no room for its sections");
    for (uint32_t index = 0; index < count; index++) {
        uint64_t record = at + sizeof(segment_command) + uint64_t{index} * sizeof(struct section);
        DylibSection section;
        section.name = file.paddedText(record, 16, "a section");
        section.segment = file.paddedText(record + 16, 16, "a section");
        section.address = word(record + 32);
        section.size = word(record + 36);
        section.fileOffset = word(record + 40);
        section.flags = word(record + 56);
        section.firstIndirect = word(record + 60);
        section.stubSize = word(record + 64);
        if (section.address < segment.address ||
            uint64_t{section.address} + section.size > uint64_t{segment.address} + segment.memorySize)
            refuse("section " + printable(section.name) + " lies outside its segment");
        if (section.type() != S_ZEROFILL)
            file.slice(section.fileOffset, section.size, "a section");
        dylib.sections.push_back(section);
    }
    dylib.segments.push_back(segment);
}

Library Reader::readLibrary(uint64_t at, uint32_t size) const
{
    uint32_t name = word(at + 8);
    if (name >= size)
        refuse("a library's name lies outside its load command");
    return {std::string(file.text(at + name, size - name, "a library's name")), word(at + 16), word(at + 20)};
}

void Reader::readSymbols()
{
    ByteView records = file.slice(symbols.offset, uint64_t{symbols.count} * sizeof(nlist), "the symbol table");
    ByteView texts = file.slice(names.offset, names.count, "the symbol names");
    for (uint32_t index = 0; index < symbols.count; index++) {
        uint64_t at = uint64_t{index} * sizeof(nlist);
        DylibSymbol symbol;
        symbol.name = texts.text(records.u32(at, "a symbol"), 4096, "the symbol names");
        symbol.type = records.u8(at + 4, "a symbol");
        symbol.section = records.u8(at + 5, "a symbol");
        symbol.description = records.u16(at + 6, "a symbol");
        symbol.value = records.u32(at + 8, "a symbol");
        dylib.symbols.push_back(symbol);
    }
}

void Reader::readFunctionStarts()
{
    const char *what = "the function starts";
    ByteView distances = file.slice(functions.offset, functions.count, what);
    uint64_t at = 0;
    uint32_t address = 0;
    while (at < distances.size()) {
        uint32_t distance = distances.uleb(at, what);
        if (distance == 0)
            return;
        dylib.functionStarts.push_back(address += distance);
    }
}

} // namespace

const DylibSegment *DylibFile::segmentAt(uint32_t address) const
{
    for (const DylibSegment &segment : segments)
        if (segment.contains(address))
            return &segment;
    return nullptr;
}

const DylibSection *DylibFile::section(const std::string &segment, const std::string &sectionName) const
{
    for (const DylibSection &section : sections)
        if (section.segment == segment && section.name == sectionName)
            return &section;
    return nullptr;
}

ByteView DylibFile::contents(const DylibSection &section) const
{
    if (section.type() == S_ZEROFILL)
        return {};
    return ByteView(name, bytes.data() + section.fileOffset, section.size);
}

Result<DylibFile> parseDylib(std::string name, Bytes bytes)
{
    return resultOf([&] {
        DylibFile dylib;
        dylib.name = std::move(name);
        dylib.bytes = std::move(bytes);
        Reader reader{
            dylib, ByteView(dylib.name, dylib.bytes.data(), dylib.bytes.size()), {}, {}, {}, {}, {}, {}, {}, {}, {}};
        reader.read();
        return dylib;
    });
}

} // namespace macho
