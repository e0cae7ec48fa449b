#include "tests/plugin/elf_file.h"

#include <elf.h>
#include <fstream>
#include <iterator>
#include <stdexcept>

ElfFile::ElfFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    auto at = [&](size_t offset, size_t size) {
        if (offset + size > bytes.size())
            throw std::runtime_error(path + " is cut off");
        return bytes.data() + offset;
    };
    auto header = reinterpret_cast<const Elf32_Ehdr *>(at(0, sizeof(Elf32_Ehdr)));
    if (std::string(bytes.data(), SELFMAG) != ELFMAG || header->e_machine != EM_386)
        throw std::runtime_error(path + " is no 32-bit Intel ELF file");

    for (int i = 0; i < header->e_phnum; i++) {
        auto segment =
            reinterpret_cast<const Elf32_Phdr *>(at(header->e_phoff + i * sizeof(Elf32_Phdr), sizeof(Elf32_Phdr)));
        if (segment->p_type == PT_GNU_STACK)
            hasExecutableStack = segment->p_flags & PF_X;
    }

    auto section = [&](size_t index) {
        return reinterpret_cast<const Elf32_Shdr *>(
            at(header->e_shoff + index * sizeof(Elf32_Shdr), sizeof(Elf32_Shdr)));
    };
    for (int i = 0; i < header->e_shnum; i++) {
        const Elf32_Shdr *table = section(i);
        const char *names = table->sh_link < header->e_shnum ? at(section(table->sh_link)->sh_offset, 0) : nullptr;
        if (table->sh_type == SHT_DYNAMIC) {
            auto entry = reinterpret_cast<const Elf32_Dyn *>(at(table->sh_offset, table->sh_size));
            for (; entry->d_tag != DT_NULL; entry++) {
                if (entry->d_tag == DT_NEEDED)
                    needed.push_back(names + entry->d_un.d_val);
                if (entry->d_tag == DT_TEXTREL || (entry->d_tag == DT_FLAGS && entry->d_un.d_val & DF_TEXTREL))
                    hasTextRelocations = true;
            }
        }
        if (table->sh_type != SHT_DYNSYM && table->sh_type != SHT_SYMTAB)
            continue;
        hasFullSymbolTable |= table->sh_type == SHT_SYMTAB;
        auto symbol = reinterpret_cast<const Elf32_Sym *>(at(table->sh_offset, table->sh_size));
        for (size_t left = table->sh_size / sizeof *symbol; left; left--, symbol++) {
            if (symbol->st_shndx == SHN_UNDEF || symbol->st_name == 0)
                continue;
            if (table->sh_type == SHT_DYNSYM)
                exports.push_back(names + symbol->st_name);
            else if (ELF32_ST_TYPE(symbol->st_info) == STT_FUNC)
                localFunctions.push_back(names + symbol->st_name);
        }
    }
}
