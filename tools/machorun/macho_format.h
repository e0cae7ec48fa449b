// The records of a 32-bit Mach-O dynamic library, as far as the loader reads them. Names are those of the format.
#pragma once

#include <cstdint>

namespace machorun {

constexpr uint32_t MH_MAGIC = 0xfeedface;
constexpr uint32_t MH_CIGAM = 0xcefaedfe; // of the other byte order: for PowerPC
constexpr uint32_t MH_MAGIC_64 = 0xfeedfacf;
constexpr uint32_t FAT_CIGAM = 0xbebafeca; // a universal file, read on a little-endian machine
constexpr uint32_t CPU_TYPE_I386 = 7;
constexpr uint32_t MH_DYLIB = 6;

struct mach_header {
    uint32_t magic, cputype, cpusubtype, filetype, ncmds, sizeofcmds, flags;
};

// A system refuses a file whose command has this bit and is unknown to it.
constexpr uint32_t LC_REQ_DYLD = 0x80000000;
constexpr uint32_t LC_SEGMENT = 0x1;
constexpr uint32_t LC_SYMTAB = 0x2;
constexpr uint32_t LC_DYSYMTAB = 0xb;
constexpr uint32_t LC_LOAD_WEAK_DYLIB = 0x18 | LC_REQ_DYLD;
constexpr uint32_t LC_DYLD_INFO = 0x22;
constexpr uint32_t LC_DYLD_INFO_ONLY = 0x22 | LC_REQ_DYLD;

struct load_command {
    uint32_t cmd, cmdsize;
};

constexpr uint32_t VM_PROT_READ = 1;
constexpr uint32_t VM_PROT_WRITE = 2;
constexpr uint32_t VM_PROT_EXECUTE = 4;

struct segment_command {
    uint32_t cmd, cmdsize;
    char segname[16];
    uint32_t vmaddr, vmsize, fileoff, filesize, maxprot, initprot, nsects, flags;
};
static_assert(sizeof(segment_command) == 56);

constexpr uint32_t S_ZEROFILL = 0x1;
constexpr uint32_t S_NON_LAZY_SYMBOL_POINTERS = 0x6;
constexpr uint32_t S_LAZY_SYMBOL_POINTERS = 0x7;
constexpr uint32_t S_MOD_INIT_FUNC_POINTERS = 0x9;

struct section {
    char sectname[16];
    char segname[16];
    uint32_t addr, size, offset, align, reloff, nreloc, flags, reserved1, reserved2;
};
static_assert(sizeof(section) == 68);

struct symtab_command {
    uint32_t cmd, cmdsize, symoff, nsyms, stroff, strsize;
};

struct dysymtab_command {
    uint32_t cmd, cmdsize;
    uint32_t ilocalsym, nlocalsym, iextdefsym, nextdefsym, iundefsym, nundefsym;
    uint32_t tocoff, ntoc, modtaboff, nmodtab, extrefsymoff, nextrefsyms;
    uint32_t indirectsymoff, nindirectsyms, extreloff, nextrel, locreloff, nlocrel;
};
static_assert(sizeof(dysymtab_command) == 80);

struct dyld_info_command {
    uint32_t cmd, cmdsize;
    uint32_t rebase_off, rebase_size, bind_off, bind_size, weak_bind_off, weak_bind_size;
    uint32_t lazy_bind_off, lazy_bind_size, export_off, export_size;
};
static_assert(sizeof(dyld_info_command) == 48);

constexpr uint16_t N_WEAK_REF = 0x40; // the symbol may be absent; its pointers are then null

struct nlist {
    uint32_t n_strx;
    uint8_t n_type, n_sect;
    uint16_t n_desc;
    uint32_t n_value;
};
static_assert(sizeof(nlist) == 12);

constexpr uint32_t INDIRECT_SYMBOL_LOCAL = 0x80000000;
constexpr uint32_t INDIRECT_SYMBOL_ABS = 0x40000000;

// r_address has its top bit set in a scattered relocation, which a linked library has none of.
constexpr uint32_t R_SCATTERED = 0x80000000;
constexpr uint32_t GENERIC_RELOC_VANILLA = 0;

struct relocation_info {
    uint32_t r_address;
    uint32_t r_symbolnum : 24, r_pcrel : 1, r_length : 2, r_extern : 1, r_type : 4;
};
static_assert(sizeof(relocation_info) == 8);

// Compressed fix-ups: one byte holds the operation (upper half) and a small operand (lower half).
constexpr uint8_t OPCODE_MASK = 0xf0;
constexpr uint8_t IMMEDIATE_MASK = 0x0f;

enum RebaseOpcode : uint8_t {
    REBASE_OPCODE_DONE = 0x00,
    REBASE_OPCODE_SET_TYPE_IMM = 0x10,
    REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x20,
    REBASE_OPCODE_ADD_ADDR_ULEB = 0x30,
    REBASE_OPCODE_ADD_ADDR_IMM_SCALED = 0x40,
    REBASE_OPCODE_DO_REBASE_IMM_TIMES = 0x50,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES = 0x60,
    REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB = 0x70,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB = 0x80,
};

enum BindOpcode : uint8_t {
    BIND_OPCODE_DONE = 0x00,
    BIND_OPCODE_SET_DYLIB_ORDINAL_IMM = 0x10,
    BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB = 0x20,
    BIND_OPCODE_SET_DYLIB_SPECIAL_IMM = 0x30,
    BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM = 0x40,
    BIND_OPCODE_SET_TYPE_IMM = 0x50,
    BIND_OPCODE_SET_ADDEND_SLEB = 0x60,
    BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x70,
    BIND_OPCODE_ADD_ADDR_ULEB = 0x80,
    BIND_OPCODE_DO_BIND = 0x90,
    BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB = 0xa0,
    BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED = 0xb0,
    BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB = 0xc0,
};

constexpr uint8_t FIXUP_TYPE_POINTER = 1; // the only kind a position-independent library needs
constexpr uint8_t BIND_SYMBOL_FLAGS_WEAK_IMPORT = 0x1;

} // namespace machorun
