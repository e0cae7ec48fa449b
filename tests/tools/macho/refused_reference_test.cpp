// References and sections that no library can hold, each refused with a line of its own.
#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

using namespace format;

const char pointers[] = ".section __IMPORT,__pointers,non_lazy_symbol_pointers\n";
const char stubs[] = ".section __IMPORT,__jump_table,symbol_stubs,self_modifying_code+pure_instructions,5\n";

ObjectFile assembled(const std::string &source)
{
    return object("a.o", Language::Assembler, source, "");
}
std::string errorOf(const std::string &source, const std::vector<std::string> &exports = {})
{
    return linkError(objects(assembled(source)), exports);
}

TEST(RefusedReference, IntoADebuggingSection)
{
    std::string debugging = ".section __DWARF,__debug_info,regular,debug\n.globl _debug\n_debug: .long 1\n";
    EXPECT_EQ(
        errorOf(".data\n.long _debug\n" + debugging),
        "a.o: __DATA,__data+0x0: a reference into section __DWARF,__debug_info of a.o, no part of which is in the "
        "library");
    EXPECT_EQ(errorOf(".text\nret\n" + debugging, {"_debug"}),
              "a.o: __DWARF,__debug_info: exported symbol _debug is in a section no part of which is in the library");
}

TEST(RefusedReference, IntoTheMiddleOfAStub)
{
    EXPECT_EQ(errorOf(std::string(".text\ncall Linside\n") + stubs +
                      ".indirect_symbol _call\n.byte 0xf4\nLinside:\n.space 4, 0xf4\n"),
              "a.o: __TEXT,__text+0x1: damaged: a reference into the middle of a stub");
}

TEST(RefusedReference, ThroughAStubToAPointer)
{
    EXPECT_EQ(errorOf(std::string(".text\ncall L_stub\n") + stubs + "L_stub:\n.indirect_symbol _own\n.space 5, 0xf4\n" +
                      pointers + ".globl _own\n.private_extern _own\n_own:\n.indirect_symbol _call\n.long 0\n"),
              "a.o: __TEXT,__text+0x1: damaged: a stub that leads to a pointer or a stub");
}

TEST(RefusedReference, PastTheLastPointer)
{
    EXPECT_EQ(errorOf(std::string(".data\n.long Lend\n") + pointers + ".indirect_symbol _call\n.long 0\nLend:\n"),
              "a.o: __IMPORT,__pointers: damaged: a reference past its last entry");
}

TEST(RefusedReference, FromAPointerToAnAbsoluteSymbol)
{
    EXPECT_EQ(errorOf(std::string(".text\nret\n.globl _fixed\n_fixed = 5\n") + pointers +
                      ".indirect_symbol _fixed\n.long 0\n"),
              "a.o: __IMPORT,__pointers: entry 0 leads to an absolute address, which is not supported");
}

TEST(RefusedReference, FromALocalPointerToNowhere)
{
    std::string source =
        std::string(".data\n.long 9\n_own: .long 77\n") + pointers + ".indirect_symbol _own\n.long _own\n";
    Bytes bytes = compile(Language::Assembler, source, "");
    const ObjectFile good = parseObject("a.o", bytes);
    ASSERT_EQ(good.indirectSymbols, std::vector<uint32_t>{INDIRECT_SYMBOL_LOCAL});
    DylibFile dylib = linked(objects(parseObject("a.o", bytes)), {});
    EXPECT_EQ(load32(dylib.contents(*dylib.section("__DATA", "__local_ptr")).data()),
              dylib.section("__DATA", "__data")->address + 4);

    size_t offset = static_cast<size_t>(good.sections.back().contents.data() - good.bytes.data());
    ASSERT_EQ(good.sections.back().name, "__pointers");
    store32(&bytes[offset], 0xfff000);
    EXPECT_EQ(linkError(objects(parseObject("a.o", bytes))),
              "a.o: __IMPORT,__pointers: damaged: entry 0 leads to 0xfff000, which no section contains");
}

TEST(RefusedReference, ToASymbolThatIsOnlyForDebugging)
{
    Bytes bytes = compile(Language::Assembler, ".data\n.long _call\n", "");
    uint32_t symtab = sizeof(mach_header);
    while (load32(&bytes[symtab]) != LC_SYMTAB)
        symtab += load32(&bytes[symtab + 4]);
    bytes[load32(&bytes[symtab + 8]) + 4] = 0x24;
    EXPECT_EQ(linkError(objects(parseObject("a.o", bytes))), "a.o: damaged: symbol _call is only for debugging");
}

TEST(RefusedSection, WithoutAName)
{
    Bytes bytes = compile(Language::Assembler, ".data\n.long 1\n", "");
    size_t record = sizeof(mach_header) + sizeof(segment_command);
    while (std::string(reinterpret_cast<char *>(&bytes[record])) != "__data")
        record += sizeof(struct section);
    bytes[record] = 0;
    EXPECT_EQ(linkError(objects(parseObject("a.o", bytes))), "a.o: __DATA,: damaged: the section has no full name");
}

TEST(RefusedSection, OnePerSegmentForTooManySegments)
{
    std::string source;
    for (int number = 0; number < 15; number++)
        source += ".section __S" + std::to_string(number) + ",__s\n.long 1\n";
    EXPECT_EQ(errorOf(source), "the objects have more differently named segments or sections than a library can hold");
}

TEST(RefusedSection, ThatTogetherDoNotFitIntoMemory)
{
    EXPECT_EQ(errorOf(".zerofill __DATA,__bss,_a,0x30000000,2\n.zerofill __DATA,__bss2,_b,0x30000000,2\n"),
              "the library would be larger than 1 GB in memory or 64 MB in its file");
}

TEST(RefusedSection, ThatLeavesNoRoomForWhatDescribesTheLibrary)
{
    EXPECT_EQ(errorOf(".zerofill __DATA,__bss,_a,0x3ffff000,2\n"), "the library would be larger than 1 GB in memory");
    EXPECT_EQ(errorOf(".zerofill __DATA,__bss,_a,0x3fffe000,2\n"), "none");
}

TEST(RefusedSection, OfStubsWithoutASize)
{
    Bytes bytes = compile(Language::Assembler, std::string(stubs) + ".indirect_symbol _call\n.space 5, 0xf4\n", "");
    size_t record = sizeof(mach_header) + sizeof(segment_command);
    while (std::string(reinterpret_cast<char *>(&bytes[record])) != "__jump_table")
        record += sizeof(struct section);
    store32(&bytes[record + 64], 0);
    EXPECT_EQ(failureOf([&] { parseObject("a.o", bytes); }),
              "a.o: __IMPORT,__jump_table: damaged: 5 bytes are no whole number of entries");
}

TEST(RefusedLibrary, OfTooManyOthers)
{
    std::string imports, source = ".data\n";
    for (int number = 0; number < 254; number++) {
        std::string name = "_f" + std::to_string(number);
        imports += "library /usr/lib/" + name + ".dylib 1.0 1.0\n" + name + "\n";
        source += ".long " + name + "\n";
    }
    EXPECT_EQ(linkError(objects(assembled(source)), {}, {}, imports),
              "imports come from more libraries than a library can name");
}

TEST(RefusedSymbol, GlobalWithoutAName)
{
    Bytes bytes = compile(Language::Assembler, ".data\n.globl _x\n_x: .long 1\n", "");
    uint32_t symtab = sizeof(mach_header);
    while (load32(&bytes[symtab]) != LC_SYMTAB)
        symtab += load32(&bytes[symtab + 4]);
    store32(&bytes[load32(&bytes[symtab + 8])], 0);
    EXPECT_EQ(failureOf([&] { parseObject("a.o", bytes); }), "a.o: damaged: global symbol 0 has no name");
}

} // namespace
} // namespace macho::test
