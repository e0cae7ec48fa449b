#include "tools/machorun/image_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace machorun {

namespace {

constexpr uint32_t kPageSize = 4096;
// Far above any plug-in: a damaged size must not eat the address space of the process.
constexpr uint32_t kLargestImage = 64 << 20;

std::vector<uint8_t> contentsOf(const std::string &path)
{
    std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file)
        throw BadImage(std::string("cannot be opened: ") + std::strerror(errno));
    std::vector<uint8_t> contents;
    uint8_t buffer[65536];
    while (size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
        contents.insert(contents.end(), buffer, buffer + count);
    if (std::ferror(file.get()))
        throw BadImage(std::string("cannot be read: ") + std::strerror(errno));
    return contents;
}

// Segment and section names fill their sixteen bytes when they are that long.
std::string fixedName(const char (&name)[16])
{
    return std::string(name, strnlen(name, sizeof name));
}

bool lies(uint32_t start, uint32_t size, uint32_t outerStart, uint32_t outerSize)
{
    return start >= outerStart && start - outerStart <= outerSize && size <= outerSize - (start - outerStart);
}

} // namespace

ImageFile::ImageFile(const std::string &path) : contents_(contentsOf(path))
{
    parse();
}

ImageFile::ImageFile(const uint8_t *bytes, size_t size) : contents_(bytes, bytes + size)
{
    parse();
}

void ImageFile::parse()
{
    ByteReader file(contents_.data(), contents_.size(), "header");
    auto magic = file.read<uint32_t>();
    if (magic == FAT_CIGAM) {
        throw BadImage("is a universal file: take its i386 part out first");
    }
    if (magic != MH_MAGIC) {
        throw BadImage("is not a 32-bit Mach-O file");
    }
    auto header = file.readAt<mach_header>(0);
    if (header.cputype != CPU_TYPE_I386) {
        throw BadImage("is not made for 32-bit Intel processors");
    }
    if (header.filetype != MH_DYLIB) {
        throw BadImage("is a Mach-O file, but not a dynamic library");
    }

    std::optional<symtab_command> symbols;
    std::optional<dysymtab_command> dynamicSymbols;
    FileRange commands = checkedRange(sizeof header, header.sizeofcmds, "load commands");
    ByteReader all = readerOf(commands, "load commands");
    for (uint32_t index = 0; index < header.ncmds; index++) {
        uint32_t start = all.position();
        auto [cmd, cmdsize] = all.read<load_command>();
        all.seek(start);
        if (cmdsize < sizeof(load_command)) {
            throw BadImage("has a load command without a size");
        }
        all.skip(cmdsize);
        ByteReader command(contents_.data() + commands.offset + start, cmdsize, "load commands");
        switch (cmd) {
        case LC_SEGMENT:
            parseSegment(command);
            break;
        case LC_SYMTAB:
            symbols = command.read<symtab_command>();
            break;
        case LC_DYSYMTAB:
            dynamicSymbols = command.read<dysymtab_command>();
            break;
        case LC_DYLD_INFO:
        case LC_DYLD_INFO_ONLY:
            parseCompressed(command.read<dyld_info_command>());
            break;
        case LC_LOAD_WEAK_DYLIB:
            break; // the import table knows every symbol by its name, whatever library it is said to be in
        default:
            if (cmd & LC_REQ_DYLD) {
                throw BadImage("has a load command that must be understood and is not: " + Hex(cmd));
            }
        }
    }
    if (segments_.empty()) {
        throw BadImage("has no segments");
    }
    if (!symbols || !dynamicSymbols) {
        throw BadImage("has no symbol table");
    }
    parseSymbols(*symbols);
    parseDynamicSymbols(*dynamicSymbols);
}

void ImageFile::parseSegment(ByteReader &command)
{
    auto raw = command.read<segment_command>();
    Segment segment{fixedName(raw.segname), raw.vmaddr, raw.vmsize, raw.fileoff, raw.filesize, raw.initprot};
    checkedRange(raw.fileoff, raw.filesize, "segments");
    uint32_t expected = segments_.empty() ? segment.address : segments_.back().address + segments_.back().size;
    if (segment.address % kPageSize || segment.size % kPageSize || segment.fileSize > segment.size ||
        segment.address != expected || segment.size > kLargestImage ||
        segment.address + segment.size - (segments_.empty() ? raw.vmaddr : segments_[0].address) > kLargestImage) {
        throw BadImage("has a segment whose place or size is wrong: " + segment.name);
    }
    if (segment.isWritable() && segment.protection & VM_PROT_EXECUTE) {
        throw BadImage("has a segment that is both writable and executable: " + segment.name);
    }
    for (uint32_t index = 0; index < raw.nsects; index++) {
        auto record = command.read<section>();
        Section part{segment.name, fixedName(record.sectname), record.addr,
                     record.size,  record.flags & 0xff,        record.reserved1};
        if (!lies(part.address, part.size, segment.address, segment.size)) {
            throw BadImage("has a section outside its segment: " + part.segment + "," + part.name);
        }
        sections_.push_back(part);
    }
    segments_.push_back(segment);
}

void ImageFile::parseSymbols(const symtab_command &table)
{
    FileRange names = checkedRange(table.stroff, table.strsize, "symbol names");
    for (const nlist &entry : readTable<nlist>(table.symoff, table.nsyms, "symbol table")) {
        ByteReader name = readerOf(names, "symbol names");
        name.seek(entry.n_strx);
        symbols_.push_back({name.readString(), entry.n_value, (entry.n_desc & N_WEAK_REF) != 0});
    }
}

void ImageFile::parseDynamicSymbols(const dysymtab_command &table)
{
    if (!lies(table.iextdefsym, table.nextdefsym, 0, symbols_.size())) {
        throw BadImage("has exported symbols outside its symbol table");
    }
    auto first = symbols_.begin() + table.iextdefsym;
    exported_.assign(first, first + table.nextdefsym);

    ClassicFixups classic{readTable<relocation_info>(table.locreloff, table.nlocrel, "relocation entries"),
                          readTable<relocation_info>(table.extreloff, table.nextrel, "relocation entries"),
                          readTable<uint32_t>(table.indirectsymoff, table.nindirectsyms, "indirect symbols")};
    // A file of compressed fix-ups only has the tables too, but with nothing in them.
    if (!compressed_ || !classic.local.empty() || !classic.external.empty()) {
        classic_ = std::move(classic);
    }
}

void ImageFile::parseCompressed(const dyld_info_command &info)
{
    if (info.weak_bind_size) {
        throw BadImage("has symbols to be shared with other libraries, which a plug-in should not have");
    }
    compressed_ = CompressedFixups{checkedRange(info.rebase_off, info.rebase_size, "rebase operations"),
                                   checkedRange(info.bind_off, info.bind_size, "bind operations"),
                                   checkedRange(info.lazy_bind_off, info.lazy_bind_size, "lazy bind operations"),
                                   checkedRange(info.export_off, info.export_size, "export tree")};
}

const Section *ImageFile::findSection(const char *segment, const char *name) const
{
    auto found = std::find_if(sections_.begin(), sections_.end(), [&](const Section &section) {
        return section.segment == segment && section.name == name;
    });
    return found == sections_.end() ? nullptr : &*found;
}

FileRange ImageFile::checkedRange(uint32_t offset, uint32_t size, const char *what) const
{
    if (!lies(offset, size, 0, contents_.size())) {
        throw BadImage(std::string("ends before its ") + what);
    }
    return {offset, size};
}

template <class Record>
std::vector<Record> ImageFile::readTable(uint32_t offset, uint32_t count, const char *what) const
{
    if (count > contents_.size() / sizeof(Record)) {
        throw BadImage(std::string("ends before its ") + what);
    }
    checkedRange(offset, count * sizeof(Record), what);
    std::vector<Record> records(count);
    if (count) {
        std::memcpy(records.data(), contents_.data() + offset, count * sizeof(Record));
    }
    return records;
}

} // namespace machorun
