// Objects that are none of ours, or damaged: each kind of damage has its line.
#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

using namespace format;

class DamagedObject : public testing::Test {
protected:
    Bytes good = compile(Language::C, "int call(int); extern int number; static const char *names[] = {\"a\", \"b\"};"
                                      "int run(int x) { return call(x) + number + names[x][0]; }");

    std::string errorOf(Bytes bytes)
    {
        return failureOf([&] { parseObject("a.o", std::move(bytes)); });
    }
    // The error after the word at an offset was changed.
    std::string errorWith(uint32_t offset, uint32_t value)
    {
        Bytes bytes = good;
        store32(&bytes.at(offset), value);
        return errorOf(std::move(bytes));
    }
    uint32_t word(uint32_t offset) { return load32(&good.at(offset)); }
    uint32_t command(uint32_t wanted)
    {
        for (uint32_t at = sizeof(mach_header);; at += word(at + 4))
            if (word(at) == wanted)
                return at;
    }
    uint32_t section(const std::string &name)
    {
        uint32_t at = command(LC_SEGMENT) + sizeof(segment_command);
        while (std::string(reinterpret_cast<char *>(&good.at(at)),
                           strnlen(reinterpret_cast<char *>(&good.at(at)), 16)) != name)
            at += sizeof(struct section);
        return at;
    }
};

TEST_F(DamagedObject, GoodOneIsAccepted)
{
    EXPECT_EQ(errorOf(good), "none");
}

TEST_F(DamagedObject, OtherKindsOfFilesAreNamed)
{
    auto startingWith = [&](std::initializer_list<uint8_t> start) { return errorOf(Bytes(start)); };
    std::string needed = "a 32-bit Intel object is needed";
    EXPECT_EQ(startingWith({0xcf, 0xfa, 0xed, 0xfe, 0}), "a.o: is a 64-bit Mach-O file; " + needed);
    EXPECT_EQ(startingWith({0xfe, 0xed, 0xfa, 0xce, 0}), "a.o: is a big-endian Mach-O file; " + needed);
    EXPECT_EQ(startingWith({0xca, 0xfe, 0xba, 0xbe, 0}), "a.o: is a universal file; " + needed);
    EXPECT_EQ(startingWith({0x7f, 'E', 'L', 'F', 1}), "a.o: is an ELF file; a Mach-O object is needed");
    EXPECT_EQ(startingWith({'!', '<', 'a', 'r'}), "a.o: is an archive; name its object files instead");
    EXPECT_EQ(startingWith({'B', 'C', 0xc0, 0xde}), "a.o: holds LLVM bitcode; a Mach-O object is needed");
    EXPECT_EQ(startingWith({'t', 'e', 'x', 't'}), "a.o: is not a Mach-O object file");
    EXPECT_EQ(startingWith({}), "a.o: is not a Mach-O object file");
    EXPECT_EQ(errorWith(4, 18), "a.o: is built for processor 18; 32-bit Intel (7) is needed");
    EXPECT_EQ(errorWith(12, MH_DYLIB), "a.o: is a Mach-O file of type 6; an object file (1) is needed");
}

TEST_F(DamagedObject, EveryCutIsNoticed)
{
    for (size_t size = 0; size < good.size() - 4; size++) { // the last bytes may only fill the table of names
        std::string error = errorOf(Bytes(good.begin(), good.begin() + size));
        EXPECT_EQ(error.rfind("a.o: ", 0), 0u) << size << " " << error;
    }
}

TEST_F(DamagedObject, LoadCommands)
{
    EXPECT_EQ(errorWith(sizeof(mach_header) + 4, 4), "a.o: damaged: load command 0 has the impossible size 4");
    EXPECT_EQ(errorWith(sizeof(mach_header) + 4, 0xfffffff0),
              "a.o: damaged: load command 0 has the impossible size 4294967280");
    EXPECT_EQ(errorWith(20, 40),
              "a.o: damaged: load command 0 has the impossible size " + std::to_string(word(sizeof(mach_header) + 4)));
    EXPECT_EQ(errorWith(command(LC_VERSION_MIN_MACOSX), LC_SYMTAB),
              "a.o: damaged: load command 1 has the impossible size 16");
    EXPECT_EQ(errorWith(command(LC_VERSION_MIN_MACOSX), LC_SEGMENT_64),
              "a.o: damaged: load command 1 (0x19) does not belong there");
    EXPECT_EQ(errorWith(command(LC_VERSION_MIN_MACOSX), 0x80000099),
              "a.o: load command 1 (0x80000099) is not supported");
    EXPECT_EQ(errorWith(command(LC_SEGMENT) + 48, 200),
              "a.o: damaged: the segment command has no room for 200 sections");
}

TEST_F(DamagedObject, Sections)
{
    uint32_t text = section("__text");
    EXPECT_EQ(errorWith(text + 36, 0x00ffffff),
              "a.o: __TEXT,__text: the file is cut off or damaged: the section reaches past its end");
    EXPECT_EQ(errorWith(text + 40, 0x7fffffff),
              "a.o: __TEXT,__text: the file is cut off or damaged: the section reaches past its end");
    EXPECT_EQ(errorWith(text + 32, 0xfffffff0),
              "a.o: __TEXT,__text: damaged: the section reaches past the end of memory");
    EXPECT_EQ(errorWith(text + 44, 13), "a.o: __TEXT,__text: the alignment 2^13 cannot be kept; 2^12 is the largest");
    EXPECT_EQ(errorWith(text + 48, 0x7ffffff0),
              "a.o: __TEXT,__text: the file is cut off or damaged: its relocations reach past the end");
    EXPECT_EQ(errorWith(text + 52, 0x40000000),
              "a.o: __TEXT,__text: the file is cut off or damaged: its relocations reach past the end");
    uint32_t pointers = section("__pointers");
    EXPECT_EQ(errorWith(pointers + 36, 3), "a.o: __IMPORT,__pointers: damaged: 3 bytes are no whole number of entries");
    EXPECT_EQ(errorWith(pointers + 60, 100),
              "a.o: __IMPORT,__pointers: damaged: it has more entries than there are indirect symbols");
    EXPECT_EQ(errorWith(word(command(LC_DYSYMTAB) + 56), 99),
              "a.o: __IMPORT,__pointers: damaged: entry 0 is for symbol 0x63, which does not exist");
    EXPECT_EQ(errorWith(word(command(LC_DYSYMTAB) + 56), INDIRECT_SYMBOL_ABS),
              "a.o: __IMPORT,__pointers: damaged: entry 0 is for symbol 0x40000000, which does not exist");
}

TEST_F(DamagedObject, ControlCharactersOfANameDoNotBreakTheLine)
{
    uint32_t text = section("__text");
    Bytes bytes = good;
    bytes[text + 2] = '\n';
    store32(&bytes[text + 44], 13);
    EXPECT_EQ(errorOf(bytes), "a.o: __TEXT,__?ext: the alignment 2^13 cannot be kept; 2^12 is the largest");
}

TEST_F(DamagedObject, Symbols)
{
    uint32_t symtab = command(LC_SYMTAB), first = word(symtab + 8);
    EXPECT_EQ(errorWith(symtab + 12, 0x20000000),
              "a.o: the file is cut off or damaged: the symbol table reaches past its end");
    EXPECT_EQ(errorWith(symtab + 20, 0x20000000),
              "a.o: the file is cut off or damaged: the table of symbol names reaches past its end");
    EXPECT_EQ(errorWith(first, 0x5000),
              "a.o: the file is cut off or damaged: the table of symbol names reaches past its end");
    std::string name = parseObject("a.o", good).symbols[0].name.data();
    EXPECT_EQ(errorWith(first + 8, 0x5000),
              "a.o: __DATA,__const: damaged: symbol " + name + " lies outside its section");
    EXPECT_EQ(errorWith(first + 4, (word(first + 4) & 0xffff00ff) | 77 << 8),
              "a.o: damaged: symbol " + name + " is in section 77 of " +
                  std::to_string(word(command(LC_SEGMENT) + 48)));
    EXPECT_EQ(errorWith(first + 4, (word(first + 4) & 0xffffff00) | 0x0a),
              "a.o: symbol " + name + " is of a kind that is not supported (type 0xa)");
}

TEST_F(DamagedObject, CommonSymbols)
{
    good = compile(Language::C, "int shared; int run(void) { return shared; }", "-fcommon");
    EXPECT_EQ(errorOf(good), "a.o: common symbol _shared is not supported: compile with -fno-common");
}

TEST_F(DamagedObject, Relocations)
{
    uint32_t data = section("__const"), first = word(data + 48); // two plain words
    std::string where = "a.o: __DATA,__const+";
    std::string offset = hex(word(first));
    uint32_t info = word(first + 4);
    EXPECT_EQ(errorWith(first, 0x5000), where + "0x5000: damaged: a relocation outside its section");
    EXPECT_EQ(errorWith(first + 4, info & ~0x06000000u), where + offset + ": a relocation of 1 bytes is not supported");
    EXPECT_EQ(errorWith(first + 4, info | 0x50000000), where + offset + ": relocation type 5 is not supported");
    EXPECT_EQ(errorWith(first + 4, (info & 0xff000000) | 99), where + offset + ": a relocation for section 99 of " +
                                                                  std::to_string(word(command(LC_SEGMENT) + 48)) +
                                                                  " is not supported");
    EXPECT_EQ(errorWith(first + 4, (info & 0xff000000) | 0x08000000 | 99),
              where + offset + ": damaged: a relocation for symbol 99 of " +
                  std::to_string(word(command(LC_SYMTAB) + 12)));
    EXPECT_EQ(errorWith(first + 4, info | GENERIC_RELOC_SECTDIFF << 28),
              where + offset + ": damaged: a difference relocation without its second half");
}

TEST_F(DamagedObject, ReferenceThatLeadsNowhere)
{
    uint32_t data = section("__const"), first = word(data + 48);
    Bytes bytes = good;
    store32(&bytes[first], 0xa0000000 | word(first)); // scattered, four bytes
    store32(&bytes[first + 4], 0x00ffff00);
    EXPECT_EQ(linkError(objects(parseObject("a.o", bytes))),
              "a.o: __DATA,__const+" + hex(word(first)) +
                  ": damaged: a reference to 0xffff00, which no section contains");
}

} // namespace
} // namespace macho::test
