// The records and numbers of the Mach-O format for 32-bit Intel, under the format's own names: for the linker, for
// those who read its libraries, and for the loader that runs them here.
#pragma once

#include <cstdint>

namespace macho::format {

enum Magic : uint32_t {
    MH_MAGIC = 0xfeedface,
    MH_CIGAM = 0xcefaedfe, // of the other byte order: for PowerPC
    MH_MAGIC_64 = 0xfeedfacf,
    FAT_CIGAM = 0xbebafeca, // a universal file, read on a little-endian machine
};
enum Processor : uint32_t { CPU_TYPE_I386 = 7, CPU_SUBTYPE_I386_ALL = 3 };
enum FileType : uint32_t { MH_OBJECT = 1, MH_DYLIB = 6 };
enum HeaderFlag : uint32_t {
    MH_NOUNDEFS = 0x1,
    MH_DYLDLINK = 0x4,
    MH_TWOLEVEL = 0x80,
    MH_SUBSECTIONS_VIA_SYMBOLS = 0x2000, // of an object: its sections may be cut at symbols
    MH_NO_REEXPORTED_DYLIBS = 0x100000,
};

struct mach_header {
    uint32_t magic, cputype, cpusubtype, filetype, ncmds, sizeofcmds, flags;
};

// A load command with this bit must be understood by the loader; one without it may be ignored.
constexpr uint32_t LC_REQ_DYLD = 0x80000000;
enum LoadCommand : uint32_t {
    LC_SEGMENT = 0x1,
    LC_SYMTAB = 0x2,
    LC_DYSYMTAB = 0xb,
    LC_LOAD_DYLIB = 0xc,
    LC_ID_DYLIB = 0xd,
    LC_LOAD_WEAK_DYLIB = 0x18 | LC_REQ_DYLD,
    LC_SEGMENT_64 = 0x19,
    LC_UUID = 0x1b,
    LC_DYLD_INFO = 0x22,
    LC_DYLD_INFO_ONLY = 0x22 | LC_REQ_DYLD,
    LC_VERSION_MIN_MACOSX = 0x24,
    LC_FUNCTION_STARTS = 0x26,
};

struct load_command {
    uint32_t cmd, cmdsize;
};

struct segment_command {
    uint32_t cmd, cmdsize;
    char segname[16];
    uint32_t vmaddr, vmsize, fileoff, filesize, maxprot, initprot, nsects, flags;
};
static_assert(sizeof(segment_command) == 56);

enum Protection : uint32_t { VM_PROT_READ = 1, VM_PROT_WRITE = 2, VM_PROT_EXECUTE = 4, VM_PROT_ALL = 7 };

struct section {
    char sectname[16];
    char segname[16];
    uint32_t addr, size, offset, align, reloff, nreloc, flags, reserved1, reserved2;
};
static_assert(sizeof(section) == 68);

constexpr uint32_t MAX_SECT = 255; // a symbol names its section in one byte, and 0 is none
constexpr uint32_t SECTION_TYPE = 0xff;
enum SectionType : uint8_t {
    S_REGULAR = 0x0,
    S_ZEROFILL = 0x1,
    S_CSTRING_LITERALS = 0x2,
    S_4BYTE_LITERALS = 0x3,
    S_8BYTE_LITERALS = 0x4,
    S_LITERAL_POINTERS = 0x5,
    S_NON_LAZY_SYMBOL_POINTERS = 0x6,
    S_LAZY_SYMBOL_POINTERS = 0x7,
    S_SYMBOL_STUBS = 0x8,
    S_MOD_INIT_FUNC_POINTERS = 0x9,
    S_MOD_TERM_FUNC_POINTERS = 0xa,
    S_COALESCED = 0xb,
    S_16BYTE_LITERALS = 0xe,
};
enum SectionAttribute : uint32_t {
    S_ATTR_LOC_RELOC = 0x100,
    S_ATTR_EXT_RELOC = 0x200,
    S_ATTR_SOME_INSTRUCTIONS = 0x400,
    S_ATTR_DEBUG = 0x02000000,
    S_ATTR_PURE_INSTRUCTIONS = 0x80000000,
};

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

struct dylib_command {
    uint32_t cmd, cmdsize, name, timestamp, current_version, compatibility_version;
};

struct uuid_command {
    uint32_t cmd, cmdsize;
    uint8_t uuid[16];
};

struct version_min_command {
    uint32_t cmd, cmdsize, version, sdk;
};

struct linkedit_data_command {
    uint32_t cmd, cmdsize, dataoff, datasize;
};

struct nlist {
    uint32_t n_strx;
    uint8_t n_type, n_sect;
    uint16_t n_desc;
    uint32_t n_value;
};
static_assert(sizeof(nlist) == 12);

// The type byte of a symbol: debugging bits, private, kind, external.
enum SymbolTypeBits : uint8_t { N_STAB = 0xe0, N_PEXT = 0x10, N_TYPE = 0x0e, N_EXT = 0x01 };
enum SymbolKind : uint8_t { N_UNDF = 0x0, N_ABS = 0x2, N_SECT = 0xe };
enum SymbolDescription : uint16_t { N_WEAK_REF = 0x40, N_WEAK_DEF = 0x80, N_ALT_ENTRY = 0x200 };

constexpr uint32_t INDIRECT_SYMBOL_LOCAL = 0x80000000;
constexpr uint32_t INDIRECT_SYMBOL_ABS = 0x40000000;

enum RelocationType : uint8_t {
    GENERIC_RELOC_VANILLA = 0,
    GENERIC_RELOC_PAIR = 1,
    GENERIC_RELOC_SECTDIFF = 2,
    GENERIC_RELOC_LOCAL_SECTDIFF = 4,
};
// r_address has its top bit set in a scattered relocation, which a finished library has none of.
constexpr uint32_t R_SCATTERED = 0x80000000;

struct relocation_info {
    uint32_t r_address;
    uint32_t r_symbolnum : 24, r_pcrel : 1, r_length : 2, r_extern : 1, r_type : 4;
};
static_assert(sizeof(relocation_info) == 8);

constexpr uint32_t pointerSize = 4;

// Compressed fix-ups: one byte holds the operation (upper half) and a small operand (lower half).
constexpr uint8_t OPCODE_MASK = 0xf0;
constexpr uint8_t IMMEDIATE_MASK = 0x0f;
constexpr uint8_t FIXUP_TYPE_POINTER = 1; // the only kind that a position-independent library needs
constexpr uint8_t BIND_SYMBOL_FLAGS_WEAK_IMPORT = 1;

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

// How a record of call frames writes an address: the low four bits say as what, the next three relative to what, and
// the highest that a pointer to it is meant.
enum PointerEncoding : uint8_t {
    DW_EH_PE_absptr = 0x00,
    DW_EH_PE_udata4 = 0x03,
    DW_EH_PE_sdata4 = 0x0b,
    DW_EH_PE_pcrel = 0x10,
    DW_EH_PE_indirect = 0x80,
    DW_EH_PE_omit = 0xff,
};

} // namespace macho::format
