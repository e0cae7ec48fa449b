#include "tools/macho/dylib_file.h"

#include <algorithm>

#include "tools/macho/dylib_fixups.h"

namespace macho {

using namespace format;

namespace {

struct Reader {
    DylibFile &dylib;
    ByteView file;
    symtab_command symbols = {};
    dysymtab_command dynamic = {};
    dyld_info_command compressed = {};
    linkedit_data_command functions = {};

    [[noreturn]] void refuse(const std::string &reason) const { fail(printable(dylib.name), ": ", reason); }
    template <class Command>
    Command command(uint64_t at) const
    {
        return file.record<Command>(at, "a load command");
    }
    void read();
    void readCommand(uint64_t at, const load_command &header);
    void readSegment(uint64_t at, uint32_t size);
    Library readLibrary(uint64_t at, uint32_t size) const;
    void readSymbols();
    void readFunctionStarts();
};

void Reader::read()
{
    if (file.size() >= 4 && file.u32(0, "the header") == FAT_CIGAM)
        refuse("is a universal file: take its i386 part out first");
    if (file.size() < sizeof(mach_header) || file.u32(0, "the header") != MH_MAGIC)
        refuse("is not a 32-bit Mach-O file");
    auto header = file.record<mach_header>(0, "the header");
    dylib.processor = header.cputype;
    dylib.processorSubtype = header.cpusubtype;
    dylib.fileType = header.filetype;
    dylib.flags = header.flags;
    uint64_t at = sizeof header, end = sizeof header + uint64_t{header.sizeofcmds};
    for (uint32_t index = 0; index < header.ncmds; index++) {
        auto next = command<load_command>(at);
        if (next.cmdsize < sizeof next || at + next.cmdsize > end || at + next.cmdsize > file.size())
            refuse("load command " + std::to_string(index) + " has the impossible size " +
                   std::to_string(next.cmdsize));
        dylib.commands.push_back(next.cmd);
        readCommand(at, next);
        at += next.cmdsize;
    }
    if (dylib.segments.empty())
        refuse("has no segments");
    if (symbols.cmd == 0 || dynamic.cmd == 0)
        refuse("has no symbol table");
    uint32_t firstSection = static_cast<uint32_t>(file.size());
    for (const DylibSection &section : dylib.sections)
        if (section.type() != S_ZEROFILL)
            firstSection = std::min(firstSection, section.fileOffset);
    dylib.commandRoom = firstSection < at ? 0 : firstSection - static_cast<uint32_t>(at);
    readSymbols();
    readFunctionStarts();
    readClassicFixups(dylib, dynamic);
    if (compressed.cmd != 0) {
        readCompressedFixups(dylib, compressed);
        readExportTrie(dylib, compressed.export_off, compressed.export_size);
    }
    // A library with the newer form only has no relocations: its pointer sections alone would not do.
    dylib.classic.present = !dylib.hasCommand(LC_DYLD_INFO_ONLY);
}

void Reader::readCommand(uint64_t at, const load_command &header)
{
    switch (header.cmd) {
    case LC_SEGMENT:
        return readSegment(at, header.cmdsize);
    case LC_SYMTAB:
        symbols = command<symtab_command>(at);
        return;
    case LC_DYSYMTAB:
        dynamic = command<dysymtab_command>(at);
        dylib.indirectSymbols =
            file.records<uint32_t>(dynamic.indirectsymoff, dynamic.nindirectsyms, "the indirect symbols");
        return;
    case LC_ID_DYLIB:
        dylib.identity = readLibrary(at, header.cmdsize);
        return;
    case LC_LOAD_DYLIB:
    case LC_LOAD_WEAK_DYLIB:
        dylib.libraries.push_back({readLibrary(at, header.cmdsize), header.cmd == LC_LOAD_WEAK_DYLIB});
        return;
    case LC_DYLD_INFO:
    case LC_DYLD_INFO_ONLY:
        compressed = command<dyld_info_command>(at);
        return;
    case LC_FUNCTION_STARTS:
        functions = command<linkedit_data_command>(at);
        return;
    case LC_VERSION_MIN_MACOSX:
        dylib.minimumSystem = command<version_min_command>(at).version;
        return;
    case LC_UUID: {
        auto identifier = command<uuid_command>(at);
        dylib.uuid.assign(std::begin(identifier.uuid), std::end(identifier.uuid));
        return;
    }
    }
}

void Reader::readSegment(uint64_t at, uint32_t size)
{
    auto record = command<segment_command>(at);
    DylibSegment segment{std::string(file.paddedText(at + offsetof(segment_command, segname), 16, "a segment")),
                         record.vmaddr,
                         record.vmsize,
                         record.fileoff,
                         record.filesize,
                         record.initprot};
    file.slice(segment.fileOffset, segment.fileSize, "a segment");
    uint64_t previousEnd =
        dylib.segments.empty() ? 0 : uint64_t{dylib.segments.back().address} + dylib.segments.back().memorySize;
    constexpr uint64_t largestImage = 1u << 30;
    if (segment.address != previousEnd || segment.memorySize < segment.fileSize ||
        previousEnd + segment.memorySize > largestImage)
        refuse("segment " + printable(segment.name) + " does not follow the one before, or has an impossible size");
    if (sizeof record + uint64_t{record.nsects} * sizeof(struct section) > size)
        refuse("segment " + printable(segment.name) + " has no room for its sections");
    for (uint32_t index = 0; index < record.nsects; index++) {
        uint64_t start = at + sizeof record + uint64_t{index} * sizeof(struct section);
        auto raw = file.record<struct section>(start, "a section");
        DylibSection section{std::string(file.paddedText(start + offsetof(struct section, segname), 16, "a section")),
                             std::string(file.paddedText(start, 16, "a section")),
                             raw.addr,
                             raw.size,
                             raw.offset,
                             raw.flags,
                             raw.reserved1,
                             raw.reserved2};
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
    auto library = command<dylib_command>(at);
    if (library.name >= size)
        refuse("a library's name lies outside its load command");
    return {std::string(file.text(at + library.name, size - library.name, "a library's name")), library.current_version,
            library.compatibility_version};
}

void Reader::readSymbols()
{
    ByteView names = file.slice(symbols.stroff, symbols.strsize, "the symbol names");
    for (const nlist &symbol : file.records<nlist>(symbols.symoff, symbols.nsyms, "the symbol table"))
        dylib.symbols.push_back({std::string(names.text(symbol.n_strx, 4096, "the symbol names")), symbol.n_type,
                                 symbol.n_sect, symbol.n_desc, symbol.n_value});
}

void Reader::readFunctionStarts()
{
    const char *what = "the function starts";
    ByteView distances = file.slice(functions.dataoff, functions.datasize, what);
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

bool DylibFile::hasCommand(uint32_t command) const
{
    return std::find(commands.begin(), commands.end(), command) != commands.end();
}

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

DylibFile parseDylib(std::string name, Bytes bytes)
{
    DylibFile dylib;
    dylib.name = std::move(name);
    dylib.bytes = std::move(bytes);
    Reader{dylib, ByteView(dylib.name, dylib.bytes.data(), dylib.bytes.size())}.read();
    return dylib;
}

} // namespace macho
