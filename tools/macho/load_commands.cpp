#include "tools/macho/load_commands.h"

#include <cstring>

#include "tools/macho/export_trie.h"

namespace macho {

using namespace format;

namespace {

// A loader takes the time stamps for a sign of prebinding. These are the ones that say nothing.
constexpr uint32_t ownTimeStamp = 1, loadedTimeStamp = 2;

class Maker {
public:
    Maker(const Layout &layout, const LinkEdit &linkEdit, const SymbolTable &symbols, const LinkOptions &options)
        : layout(layout), linkEdit(linkEdit), symbols(symbols), options(options)
    {
    }
    LoadCommands make(const std::vector<LoadedLibrary> &libraries);

private:
    void begin(uint32_t command, size_t size);
    void range(const LinkEdit::Range &part) { words({part.offset, part.size}); }
    void counted(const LinkEdit::Range &part, uint32_t recordSize) { words({part.offset, part.size / recordSize}); }
    void words(std::initializer_list<uint32_t> values);
    void segment(const OutputSegment &segment);
    void section(const OutputSection &section);
    void linkEditSegment();
    void library(uint32_t command, uint32_t timeStamp, const Library &library);
    void compressedFixups();
    void symbolTables();

    const Layout &layout;
    const LinkEdit &linkEdit;
    const SymbolTable &symbols;
    const LinkOptions &options;
    ByteWriter out;
    uint32_t count = 0;
};

LoadCommands Maker::make(const std::vector<LoadedLibrary> &libraries)
{
    out.bytes.resize(sizeof(mach_header));
    for (const OutputSegment &each : layout.segments)
        segment(each);
    linkEditSegment();
    library(LC_ID_DYLIB, ownTimeStamp, {options.installName, options.currentVersion, options.compatibilityVersion});
    if (options.fixups != FixupForm::Classic)
        compressedFixups();
    symbolTables();
    begin(LC_UUID, sizeof(uuid_command));
    auto uuidOffset = static_cast<uint32_t>(out.size());
    words({0, 0, 0, 0});
    begin(LC_VERSION_MIN_MACOSX, sizeof(version_min_command));
    words({options.minimumSystem, options.minimumSystem}); // the least system, and the one whose behaviour is meant
    begin(LC_FUNCTION_STARTS, sizeof(linkedit_data_command));
    range(linkEdit.functionStarts);
    for (const LoadedLibrary &loaded : libraries)
        library(loaded.weak ? LC_LOAD_WEAK_DYLIB : LC_LOAD_DYLIB, loadedTimeStamp, *loaded.library);

    mach_header header = {MH_MAGIC,
                          CPU_TYPE_I386,
                          CPU_SUBTYPE_I386_ALL,
                          MH_DYLIB,
                          count,
                          static_cast<uint32_t>(out.size() - sizeof header),
                          MH_NOUNDEFS | MH_DYLDLINK | MH_TWOLEVEL | MH_NO_REEXPORTED_DYLIBS};
    std::memcpy(out.bytes.data(), &header, sizeof header);
    return {std::move(out.bytes), uuidOffset};
}

void Maker::begin(uint32_t command, size_t size)
{
    count++;
    words({command, static_cast<uint32_t>(size)});
}

void Maker::words(std::initializer_list<uint32_t> values)
{
    for (uint32_t value : values)
        out.u32(value);
}

void Maker::segment(const OutputSegment &segment)
{
    auto sections = static_cast<uint32_t>(segment.sections.size());
    begin(LC_SEGMENT, sizeof(segment_command) + sections * sizeof(struct section));
    out.paddedText(segment.name, 16);
    words({segment.address, segment.memorySize, segment.fileOffset, segment.fileSize, segment.maximumProtection,
           segment.protection, sections, 0});
    for (const OutputSection &each : segment.sections)
        section(each);
}

void Maker::section(const OutputSection &section)
{
    uint32_t power = 0;
    while (1u << power < section.alignment)
        power++;
    out.paddedText(section.name, 16);
    out.paddedText(section.segment, 16);
    words({section.address, section.size, section.fileOffset, power, 0, 0, section.flags, section.firstIndirect,
           section.stubSize});
}

void Maker::linkEditSegment()
{
    begin(LC_SEGMENT, sizeof(segment_command));
    out.paddedText("__LINKEDIT", 16);
    auto size = static_cast<uint32_t>(linkEdit.bytes.size());
    words({layout.endAddress(), static_cast<uint32_t>(alignUp(size, Layout::pageSize)), linkEdit.offset, size,
           VM_PROT_ALL, VM_PROT_READ, 0, 0});
}

void Maker::library(uint32_t command, uint32_t timeStamp, const Library &library)
{
    size_t nameSize = alignUp(library.installName.size() + 1, pointerSize);
    begin(command, sizeof(dylib_command) + nameSize);
    words({sizeof(dylib_command), timeStamp, library.currentVersion, library.compatibilityVersion});
    out.paddedText(library.installName, nameSize);
}

void Maker::compressedFixups()
{
    // With the classic form beside it, a loader that does not know the command may go on without it.
    begin(options.fixups == FixupForm::Both ? LC_DYLD_INFO : LC_DYLD_INFO_ONLY, sizeof(dyld_info_command));
    range(linkEdit.rebases);
    range(linkEdit.binds);
    words({0, 0, 0, 0}); // nothing is bound weakly, nothing lazily
    range(linkEdit.exports);
}

void Maker::symbolTables()
{
    begin(LC_SYMTAB, sizeof(symtab_command));
    counted(linkEdit.symbols, sizeof(nlist));
    range(linkEdit.names);

    begin(LC_DYSYMTAB, sizeof(dysymtab_command));
    words({0, symbols.localCount, symbols.localCount, symbols.exportCount, symbols.firstImport(), symbols.importCount});
    words({0, 0, 0, 0, 0, 0}); // no table of contents, no modules, no references
    counted(linkEdit.indirect, pointerSize);
    counted(linkEdit.externalRelocations, sizeof(relocation_info));
    counted(linkEdit.localRelocations, sizeof(relocation_info));
}

} // namespace

LinkEdit makeLinkEdit(uint32_t offset, const SymbolTable &symbols, const ClassicFixups &classic,
                      const CompressedFixups &compressed, FixupForm form)
{
    LinkEdit linkEdit;
    linkEdit.offset = offset;
    ByteWriter out;
    auto place = [&](const Bytes &part) {
        if (part.empty())
            return LinkEdit::Range{};
        LinkEdit::Range range{offset + static_cast<uint32_t>(out.size()), 0};
        out.append(part);
        out.alignTo(pointerSize);
        range.size = offset + static_cast<uint32_t>(out.size()) - range.offset;
        return range;
    };
    // This order is the one that Apple's tools insist on when they change a library.
    if (form != FixupForm::Classic) {
        linkEdit.rebases = place(compressed.rebases);
        linkEdit.binds = place(compressed.binds);
        linkEdit.exports = place(exportTrie(symbols.exports));
    }
    if (form != FixupForm::Compressed)
        linkEdit.localRelocations = place(classic.local);
    linkEdit.functionStarts = place(symbols.functionStarts);
    linkEdit.symbols = place(symbols.records);
    if (form != FixupForm::Compressed)
        linkEdit.externalRelocations = place(classic.external);
    linkEdit.indirect = place(symbols.indirect);
    linkEdit.names = place(symbols.names);
    linkEdit.bytes = std::move(out.bytes);
    return linkEdit;
}

LoadCommands makeLoadCommands(const Layout &layout, const LinkEdit &linkEdit, const SymbolTable &symbols,
                              const std::vector<LoadedLibrary> &libraries, const LinkOptions &options)
{
    return Maker(layout, linkEdit, symbols, options).make(libraries);
}

} // namespace macho
