// The numbers of the Mach-O file format that a 32-bit Intel linker meets, under the format's own names.
#pragma once

#include <cstdint>

namespace macho::format {

constexpr uint32_t magic32 = 0xfeedface;
constexpr uint32_t cpuI386 = 7;
constexpr uint32_t cpuSubtypeI386All = 3;

enum FileType : uint32_t { MH_OBJECT = 1, MH_DYLIB = 6 };
enum HeaderFlag : uint32_t {
    MH_NOUNDEFS = 0x1,
    MH_DYLDLINK = 0x4,
    MH_TWOLEVEL = 0x80,
    MH_NO_REEXPORTED_DYLIBS = 0x100000,
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
};

constexpr uint32_t headerSize = 28;
constexpr uint32_t segmentCommandSize = 56;
constexpr uint32_t sectionRecordSize = 68;
constexpr uint32_t symtabCommandSize = 24;
constexpr uint32_t dysymtabCommandSize = 80;
constexpr uint32_t dyldInfoCommandSize = 48;
constexpr uint32_t dylibCommandSize = 24;
constexpr uint32_t uuidCommandSize = 24;
constexpr uint32_t versionMinCommandSize = 16;
constexpr uint32_t symbolRecordSize = 12;
constexpr uint32_t relocationRecordSize = 8;
constexpr uint32_t pointerSize = 4;

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
constexpr uint32_t sectionTypeMask = 0xff;
enum SectionAttribute : uint32_t {
    S_ATTR_LOC_RELOC = 0x100,
    S_ATTR_EXT_RELOC = 0x200,
    S_ATTR_SOME_INSTRUCTIONS = 0x400,
    S_ATTR_DEBUG = 0x02000000,
    S_ATTR_PURE_INSTRUCTIONS = 0x80000000,
};

// The type byte of a symbol: debugging bits, private, kind, external.
enum SymbolTypeBits : uint8_t { N_STAB = 0xe0, N_PEXT = 0x10, N_TYPE = 0x0e, N_EXT = 0x01 };
enum SymbolKind : uint8_t { N_UNDF = 0x0, N_ABS = 0x2, N_SECT = 0xe };
enum SymbolDescription : uint16_t { N_WEAK_REF = 0x40, N_WEAK_DEF = 0x80 };
constexpr uint32_t maximumSections = 255; // a symbol names its section in one byte, and 0 is none

constexpr uint32_t INDIRECT_SYMBOL_LOCAL = 0x80000000;
constexpr uint32_t INDIRECT_SYMBOL_ABS = 0x40000000;

enum RelocationType : uint8_t {
    GENERIC_RELOC_VANILLA = 0,
    GENERIC_RELOC_PAIR = 1,
    GENERIC_RELOC_SECTDIFF = 2,
    GENERIC_RELOC_LOCAL_SECTDIFF = 4,
};
constexpr uint32_t scatteredRelocation = 0x80000000;

enum Protection : uint32_t { VM_PROT_READ = 1, VM_PROT_WRITE = 2, VM_PROT_EXECUTE = 4, VM_PROT_ALL = 7 };

enum RebaseOpcode : uint8_t {
    REBASE_OPCODE_DONE = 0x00,
    REBASE_OPCODE_SET_TYPE_IMM = 0x10,
    REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x20,
    REBASE_OPCODE_DO_REBASE_IMM_TIMES = 0x50,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES = 0x60,
};
enum BindOpcode : uint8_t {
    BIND_OPCODE_DONE = 0x00,
    BIND_OPCODE_SET_DYLIB_ORDINAL_IMM = 0x10,
    BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB = 0x20,
    BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM = 0x40,
    BIND_OPCODE_SET_TYPE_IMM = 0x50,
    BIND_OPCODE_SET_ADDEND_SLEB = 0x60,
    BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x70,
    BIND_OPCODE_DO_BIND = 0x90,
};
constexpr uint8_t opcodeMask = 0xf0;
constexpr uint8_t immediateMask = 0x0f;
constexpr uint8_t fixupTypePointer = 1;
constexpr uint8_t bindFlagWeakImport = 1;

} // namespace macho::format
