// A Mach-O file in memory, read into lists and checked: whoever uses these lists needs no bounds checks of the file.
#pragma once

#include "tools/macho/format.h"
#include "tools/machorun/byte_reader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace machorun {

using namespace macho::format;

struct Segment {
    std::string name;
    uint32_t address, size, fileOffset, fileSize, protection;

    bool isWritable() const { return protection & VM_PROT_WRITE; }
};

struct Section {
    std::string segment, name;
    uint32_t address, size, type;
    uint32_t firstIndirectSymbol; // of a section of symbol pointers
};

struct Symbol {
    std::string name;
    uint32_t address;
    bool isWeakImport;
};

struct ClassicFixups {
    std::vector<relocation_info> local, external;
    std::vector<uint32_t> indirectSymbols;
};

// A part of the file: the bytes of one kind of compressed information.
struct FileRange {
    uint32_t offset, size;
};

struct CompressedFixups {
    FileRange rebase, bind, lazyBind, exports;
};

class ImageFile {
public:
    // Throws BadImage.
    explicit ImageFile(const std::string &path);
    ImageFile(const uint8_t *bytes, size_t size);

    const std::vector<Segment> &segments() const { return segments_; }
    const std::vector<Section> &sections() const { return sections_; }
    const std::vector<Symbol> &symbols() const { return symbols_; }
    const std::vector<Symbol> &exportedSymbols() const { return exported_; }
    const std::optional<ClassicFixups> &classicFixups() const { return classic_; }
    const std::optional<CompressedFixups> &compressedFixups() const { return compressed_; }

    // Null when the file has no such section.
    const Section *findSection(const char *segment, const char *name) const;

    const uint8_t *bytesOf(const Segment &segment) const { return contents_.data() + segment.fileOffset; }
    ByteReader readerOf(const FileRange &range, const char *what) const
    {
        return ByteReader(contents_.data() + range.offset, range.size, what);
    }

private:
    void parse();
    void parseSegment(ByteReader &command);
    void parseSymbols(const symtab_command &table);
    void parseDynamicSymbols(const dysymtab_command &table);
    void parseCompressed(const dyld_info_command &info);
    FileRange checkedRange(uint32_t offset, uint32_t size, const char *what) const;
    template <class Record>
    std::vector<Record> readTable(uint32_t offset, uint32_t count, const char *what) const;

    std::vector<uint8_t> contents_;
    std::vector<Segment> segments_;
    std::vector<Section> sections_;
    std::vector<Symbol> symbols_, exported_;
    std::optional<ClassicFixups> classic_;
    std::optional<CompressedFixups> compressed_;
};

} // namespace machorun
