#include "tools/macho/object_file.h"

#include <algorithm>
#include <optional>

namespace macho {

using namespace format;

namespace {

constexpr size_t longestSymbolName = 4096;
constexpr uint32_t largestAlignment = 12; // segments start at pages: nothing can be aligned to more

struct Parser {
    ObjectFile &object;
    ByteView file;
    std::optional<uint64_t> segment, symtab, dysymtab; // offsets of the load commands

    template <class... Parts>
    [[noreturn]] void refuse(const Parts &...parts) const
    {
        fail(printable(object.name), ": ", parts...);
    }

    void parse();
    void checkHeader() const;
    void findLoadCommands();
    void readSections();
    void readSymbols();
    void readIndirectSymbols();
    void readRelocations(Section &section, uint32_t offset, uint32_t count);
    void checkIndirections(const Section &section) const;
    void checkRelocation(const Section &section, const Relocation &relocation) const;
};

// What the first bytes say a file is, if it is not ours.
const char *otherKindOfFile(const ByteView &file)
{
    static const struct {
        uint8_t bytes[4];
        const char *what;
    } kinds[] = {
        {{0xcf, 0xfa, 0xed, 0xfe}, "is a 64-bit Mach-O file; a 32-bit Intel object is needed"},
        {{0xfe, 0xed, 0xfa, 0xce}, "is a big-endian Mach-O file; a 32-bit Intel object is needed"},
        {{0xfe, 0xed, 0xfa, 0xcf}, "is a big-endian Mach-O file; a 32-bit Intel object is needed"},
        {{0xca, 0xfe, 0xba, 0xbe}, "is a universal file; a 32-bit Intel object is needed"},
        {{0x7f, 'E', 'L', 'F'}, "is an ELF file; a Mach-O object is needed"},
        {{'!', '<', 'a', 'r'}, "is an archive; name its object files instead"},
        {{'B', 'C', 0xc0, 0xde}, "holds LLVM bitcode; a Mach-O object is needed"},
    };
    for (const auto &kind : kinds)
        if (file.size() >= 4 && std::equal(kind.bytes, kind.bytes + 4, file.data()))
            return kind.what;
    return "is not a Mach-O object file";
}

void Parser::parse()
{
    checkHeader();
    findLoadCommands();
    if (symtab)
        readSymbols();
    if (dysymtab)
        readIndirectSymbols();
    if (segment)
        readSections();
    for (const Symbol &symbol : object.symbols) {
        if (symbol.isDebugging() || symbol.isUndefined() || symbol.isAbsolute())
            continue;
        if (!symbol.isInSection())
            refuse("symbol ", printable(symbol.name), " is of a kind that is not supported (type ", hex(symbol.type),
                   ")");
        if (symbol.section == 0 || symbol.section > object.sections.size())
            refuse("damaged: symbol ", printable(symbol.name), " is in section ", std::to_string(symbol.section),
                   " of ", std::to_string(object.sections.size()));
        const Section &section = object.sections[symbol.section - 1];
        if (symbol.value < section.address || symbol.value - section.address > section.size)
            fail(object.describe(section), ": damaged: symbol ", printable(symbol.name), " lies outside its section");
    }
}

void Parser::checkHeader() const
{
    if (file.size() < 4 || file.u32(0, "the header") != MH_MAGIC)
        refuse(otherKindOfFile(file));
    auto header = file.record<mach_header>(0, "the header");
    if (header.cputype != CPU_TYPE_I386)
        refuse("is built for processor ", std::to_string(header.cputype), "; 32-bit Intel (7) is needed");
    if (header.filetype != MH_OBJECT)
        refuse("is a Mach-O file of type ", std::to_string(header.filetype), "; an object file (1) is needed");
    object.mayBeCut = header.flags & MH_SUBSECTIONS_VIA_SYMBOLS;
}

void Parser::findLoadCommands()
{
    static constexpr struct {
        uint32_t number, size;
        std::optional<uint64_t> Parser::*place;
    } needed[] = {{LC_SEGMENT, sizeof(segment_command), &Parser::segment},
                  {LC_SYMTAB, sizeof(symtab_command), &Parser::symtab},
                  {LC_DYSYMTAB, sizeof(dysymtab_command), &Parser::dysymtab}};
    auto header = file.record<mach_header>(0, "the header");
    uint64_t offset = sizeof header, end = sizeof header + uint64_t{header.sizeofcmds};
    for (uint32_t index = 0; index < header.ncmds; index++) {
        auto [number, size] = file.record<load_command>(offset, "the load commands");
        auto row = std::find_if(std::begin(needed), std::end(needed),
                                [number = number](const auto &each) { return each.number == number; });
        bool isNeeded = row != std::end(needed);
        if (size < (isNeeded ? row->size : sizeof(load_command)) || offset + size > end || offset + size > file.size())
            refuse("damaged: load command ", std::to_string(index), " has the impossible size ", std::to_string(size));
        if (number == LC_SEGMENT_64 || (isNeeded && this->*row->place))
            refuse("damaged: load command ", std::to_string(index), " (", hex(number), ") does not belong there");
        if (isNeeded)
            this->*row->place = offset;
        else if (number & LC_REQ_DYLD)
            refuse("load command ", std::to_string(index), " (", hex(number), ") is not supported");
        offset += size;
    }
}

void Parser::readSections()
{
    auto command = file.record<segment_command>(*segment, "the segment command");
    uint32_t count = command.nsects;
    if (count > MAX_SECT || sizeof command + uint64_t{count} * sizeof(struct section) > command.cmdsize)
        refuse("damaged: the segment command has no room for ", std::to_string(count), " sections");
    object.sections.resize(count);
    uint64_t start = *segment + sizeof command;
    const char *what = "a section record";
    auto records = file.records<struct section>(start, count, what);
    for (uint32_t index = 0; index < count; index++) {
        const auto &record = records[index];
        Section &section = object.sections[index];
        uint64_t at = start + index * sizeof record;
        section.name = file.paddedText(at, 16, what);
        section.segment = file.paddedText(at + 16, 16, what);
        section.address = record.addr;
        section.size = record.size;
        uint32_t offset = record.offset, power = record.align;
        section.flags = record.flags;
        section.firstIndirect = record.reserved1;
        section.stubSize = record.reserved2;
        if (power > largestAlignment)
            fail(object.describe(section), ": the alignment 2^", std::to_string(power), " cannot be kept; 2^",
                 std::to_string(largestAlignment), " is the largest");
        section.alignment = 1u << power;
        if (uint64_t{section.address} + section.size > UINT32_MAX)
            fail(object.describe(section), ": damaged: the section reaches past the end of memory");
        if (section.type() != S_ZEROFILL) {
            if (uint64_t{offset} + section.size > file.size())
                fail(object.describe(section), ": the file is cut off or damaged: the section reaches past its end");
            section.contents = ByteView({}, file.data() + offset, section.size);
        }
    }
    // Relocations name sections, so all of these are read first.
    for (uint32_t index = 0; index < count; index++) {
        Section &section = object.sections[index];
        if (section.isIndirection())
            checkIndirections(section);
        readRelocations(section, records[index].reloff, records[index].nreloc);
    }
}

void Parser::readSymbols()
{
    auto table = file.record<symtab_command>(*symtab, "the symbol command");
    auto records = file.records<nlist>(table.symoff, table.nsyms, "the symbol table");
    ByteView names = file.slice(table.stroff, table.strsize, "the table of symbol names");
    for (uint32_t index = 0; index < table.nsyms; index++) {
        const nlist &record = records[index];
        Symbol symbol{{}, record.n_type, record.n_sect, record.n_desc, record.n_value};
        if (record.n_strx != 0)
            symbol.name = names.text(record.n_strx, longestSymbolName, "the table of symbol names");
        if (symbol.isUndefined() && symbol.value != 0)
            refuse("common symbol ", printable(symbol.name), " is not supported: compile with -fno-common");
        if (symbol.name.empty() && symbol.isGlobal() && !symbol.isDebugging())
            refuse("damaged: global symbol ", std::to_string(index), " has no name");
        object.symbols.push_back(symbol);
    }
}

void Parser::readIndirectSymbols()
{
    auto table = file.record<dysymtab_command>(*dysymtab, "the dynamic symbol command");
    object.indirectSymbols =
        file.records<uint32_t>(table.indirectsymoff, table.nindirectsyms, "the table of indirect symbols");
}

void Parser::checkIndirections(const Section &section) const
{
    if (section.entrySize() == 0 || section.size % section.entrySize() != 0)
        fail(object.describe(section), ": damaged: ", std::to_string(section.size),
             " bytes are no whole number of entries");
    uint32_t count = section.size / section.entrySize();
    if (uint64_t{section.firstIndirect} + count > object.indirectSymbols.size())
        fail(object.describe(section), ": damaged: it has more entries than there are indirect symbols");
    for (uint32_t entry = 0; entry < count; entry++) {
        uint32_t index = object.indirectSymbols[section.firstIndirect + entry];
        bool local = index == INDIRECT_SYMBOL_LOCAL && section.holdsPointers();
        if (!local && index >= object.symbols.size())
            fail(object.describe(section), ": damaged: entry ", std::to_string(entry), " is for symbol ", hex(index),
                 ", which does not exist");
    }
}

void Parser::readRelocations(Section &section, uint32_t offset, uint32_t count)
{
    if (offset + uint64_t{count} * sizeof(relocation_info) > file.size())
        fail(object.describe(section), ": the file is cut off or damaged: its relocations reach past the end");
    for (uint32_t index = 0; index < count; index++) {
        const uint8_t *record = file.data() + offset + index * sizeof(relocation_info);
        uint32_t first = load32(record), second = load32(record + 4);
        Relocation relocation = {};
        uint32_t length;
        if (first & R_SCATTERED) {
            relocation.scattered = true;
            relocation.offset = first & 0xffffff;
            relocation.type = static_cast<RelocationType>(first >> 24 & 0xf);
            length = first >> 28 & 3;
            relocation.pcRelative = first >> 30 & 1;
            relocation.address = second;
        } else {
            relocation.offset = first;
            relocation.target = second & 0xffffff;
            relocation.pcRelative = second >> 24 & 1;
            length = second >> 25 & 3;
            relocation.external = second >> 27 & 1;
            relocation.type = static_cast<RelocationType>(second >> 28);
        }
        bool difference = relocation.type == GENERIC_RELOC_SECTDIFF || relocation.type == GENERIC_RELOC_LOCAL_SECTDIFF;
        std::string where = object.describe(section) + "+" + hex(relocation.offset);
        if ((relocation.type != GENERIC_RELOC_VANILLA && !difference) || (difference && relocation.pcRelative))
            fail(where, ": relocation type ", std::to_string(relocation.type), " is not supported");
        if (length != 2)
            fail(where, ": a relocation of ", std::to_string(1 << length), " bytes is not supported");
        if (difference) {
            if (!relocation.scattered || ++index == count ||
                (load32(record + 8) & (R_SCATTERED | 0x0f000000)) != (R_SCATTERED | GENERIC_RELOC_PAIR << 24))
                fail(where, ": damaged: a difference relocation without its second half");
            relocation.subtrahend = load32(record + 12);
        }
        checkRelocation(section, relocation);
        section.relocations.push_back(relocation);
    }
}

void Parser::checkRelocation(const Section &section, const Relocation &relocation) const
{
    std::string where = object.describe(section) + "+" + hex(relocation.offset);
    if (section.contents.size() < 4 || relocation.offset > section.contents.size() - 4)
        fail(where, ": damaged: a relocation outside its section");
    if (relocation.scattered)
        return;
    if (relocation.external && relocation.target >= object.symbols.size())
        fail(where, ": damaged: a relocation for symbol ", std::to_string(relocation.target), " of ",
             std::to_string(object.symbols.size()));
    if (!relocation.external && (relocation.target == 0 || relocation.target > object.sections.size()))
        fail(where, ": a relocation for section ", std::to_string(relocation.target), " of ",
             std::to_string(object.sections.size()), " is not supported");
}

} // namespace

int ObjectFile::sectionAt(uint32_t address) const
{
    int ending = -1;
    for (size_t index = 0; index < sections.size(); index++) {
        if (sections[index].contains(address))
            return static_cast<int>(index);
        if (address == sections[index].address + sections[index].size && ending < 0)
            ending = static_cast<int>(index);
    }
    return ending;
}

std::string ObjectFile::describe(const Section &section) const
{
    return printable(name) + ": " + printable(section.segment) + "," + printable(section.name);
}

ObjectFile parseObject(std::string name, Bytes bytes)
{
    ObjectFile object;
    object.name = std::move(name);
    object.bytes = std::move(bytes);
    Parser{object, ByteView(object.name, object.bytes.data(), object.bytes.size()), {}, {}, {}}.parse();
    return object;
}

} // namespace macho
