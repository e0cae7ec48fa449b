#include "tools/macho/layout.h"

#include <algorithm>
#include <cstddef>

#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

ObjectFile assembled(const char *name, const std::string &source)
{
    return object(name, Language::Assembler, source, "");
}

TEST(Layout, SegmentsLieOnPagesOneBehindTheOther)
{
    DylibFile dylib = linked(objects(object("a.o", Language::C,
                                            "int call(int); int zero[3000]; int data = 1; int run(int x)"
                                            "{ return call(x) + zero[x] + data; }")),
                             {"_run"});
    ASSERT_EQ(dylib.segments.size(), 3u);
    EXPECT_EQ(dylib.segments[0].name, "__TEXT");
    EXPECT_EQ(dylib.segments[1].name, "__DATA");
    EXPECT_EQ(dylib.segments[2].name, "__LINKEDIT");
    EXPECT_EQ(dylib.segments[0].fileOffset, 0u);
    EXPECT_EQ(dylib.segments[0].address, 0u);
    for (const DylibSegment &segment : dylib.segments) {
        EXPECT_EQ(segment.address % 4096, 0u);
        EXPECT_EQ(segment.memorySize % 4096, 0u);
        EXPECT_EQ(segment.fileOffset % 4096, 0u);
    }
    EXPECT_EQ(dylib.segments[0].protection, 5u);
    EXPECT_EQ(dylib.segments[1].protection, 3u);
    EXPECT_EQ(dylib.segments[2].protection, 1u);
    EXPECT_EQ(dylib.segments[2].fileOffset + dylib.segments[2].fileSize, dylib.bytes.size());
    EXPECT_GE(dylib.segments[1].memorySize, 12000u);
    EXPECT_EQ(dylib.segments[1].fileSize, 4096u);
}

TEST(Layout, HeaderSaysWhatTheLibraryIs)
{
    LinkOptions options;
    options.currentVersion = 0x10203;
    options.compatibilityVersion = 0x10000;
    options.minimumSystem = 0xa0500;
    DylibFile dylib = linked(objects(object("a.o", Language::C, "int run(void) { return 1; }")), {"_run"}, options);
    EXPECT_EQ(dylib.processor, 7u);
    EXPECT_EQ(dylib.processorSubtype, 3u);
    EXPECT_EQ(dylib.fileType, 6u);
    EXPECT_EQ(dylib.flags, 0x100085u);
    EXPECT_EQ(dylib.identity.installName, "@executable_path/test.dylib");
    EXPECT_EQ(dylib.identity.currentVersion, 0x10203u);
    EXPECT_EQ(dylib.identity.compatibilityVersion, 0x10000u);
    EXPECT_EQ(dylib.minimumSystem, 0xa0500u);
}

// Tools that lengthen a name or add a command write behind the last one.
TEST(Layout, SlackOfTheLastPageStandsInFrontOfTheCode)
{
    for (uint32_t codeSize : {1u, 1800u, 2000u, 3000u, 4000u}) {
        DylibFile dylib = linked(objects(assembled("a.o", ".text\n.align 4\n.globl _run\n_run: .space " +
                                                              std::to_string(codeSize) + ", 0x90\n")),
                                 {"_run"});
        EXPECT_GE(dylib.commandRoom, 1024u) << codeSize;
        const DylibSection &text = *dylib.section("__TEXT", "__text");
        uint32_t slack = dylib.segments[0].fileSize - (text.fileOffset + text.size);
        EXPECT_LT(slack, 16u + 4u) << codeSize; // what the alignment of the code and the word of zeros take
        EXPECT_EQ(text.address % 16, 0u);
    }
}

// As install_name_tool does it: the commands behind move up, and nothing else moves.
TEST(Layout, InstallNameCanGrowInPlace)
{
    DylibFile dylib =
        linked(objects(object("a.o", Language::C, "int call(int); int run(int x) { return call(x) + 1; }")), {"_run"});
    constexpr uint32_t growth = 1024;
    Bytes bytes = dylib.bytes;
    uint32_t end = sizeof(format::mach_header) + load32(&bytes[offsetof(format::mach_header, sizeofcmds)]);
    uint32_t at = sizeof(format::mach_header);
    while (load32(&bytes[at]) != format::LC_ID_DYLIB)
        at += load32(&bytes[at + 4]);
    uint32_t size = load32(&bytes[at + 4]);
    ASSERT_EQ(std::count(&bytes[end], &bytes[end] + growth, 0), growth);
    bytes.erase(bytes.begin() + end, bytes.begin() + end + growth);
    bytes.insert(bytes.begin() + at + size, growth, 0);
    std::string name = "/" + std::string(growth, 'x');
    std::copy(name.begin(), name.end(), bytes.begin() + at + sizeof(format::dylib_command));
    store32(&bytes[at + 4], size + growth);
    store32(&bytes[offsetof(format::mach_header, sizeofcmds)], end - sizeof(format::mach_header) + growth);

    auto grown = parseDylib("grown.dylib", bytes);
    EXPECT_EQ(grown.identity.installName.substr(0, name.size()), name);
    EXPECT_EQ(grown.libraries.size(), dylib.libraries.size());
    EXPECT_EQ(grown.commandRoom, dylib.commandRoom - growth);
    for (const DylibSection &section : dylib.sections) {
        ByteView before = dylib.contents(section), after = grown.contents(section);
        EXPECT_TRUE(std::equal(before.data(), before.data() + before.size(), after.data())) << section.name;
    }
}

TEST(Layout, VersionsThatClaimTooMuchAreRefused)
{
    LinkOptions options;
    options.currentVersion = 0x100;
    options.compatibilityVersion = 0x10000;
    EXPECT_EQ(linkError(objects(object("a.o", Language::C, "int run(void) { return 1; }")), {"_run"}, options),
              "compatibility version 1.0.0 is above the current version 0.1.0");
}

TEST(Layout, SectionsOfOneNameAreJoinedWithTheirAlignment)
{
    DylibFile dylib = linked(
        objects(assembled("a.o", ".text\n.globl _run\n_run: ret\n.data\n.byte 1\n"),
                assembled("b.o", ".text\n.align 4\n.globl _b\n_b: ret\n.data\n.align 3\n.globl _d\n_d: .long 7\n")),
        {"_run", "_b", "_d"});
    EXPECT_EQ(addressOf(dylib, "_b") % 16, 0u);
    EXPECT_EQ(addressOf(dylib, "_d") % 8, 0u);
    EXPECT_EQ(load32(dylib.contents(*dylib.section("__DATA", "__data")).data() + 8), 7u);
    EXPECT_EQ(dylib.contents(*dylib.section("__TEXT", "__text")).data()[1], 0x90); // the gap in code does nothing
}

TEST(Layout, SectionsForSharedCodeJoinTheOrdinaryOnes)
{
    DylibFile dylib = linked(objects(assembled("a.o", ".text\n.globl _run\n_run: ret\n"
                                                      ".section __TEXT,__textcoal_nt,coalesced,pure_instructions\n"
                                                      ".globl _shared\n.weak_definition _shared\n_shared: ret\n")),
                             {"_run", "_shared"});
    EXPECT_EQ(dylib.section("__TEXT", "__textcoal_nt"), nullptr);
    EXPECT_EQ(dylib.section("__TEXT", "__text")->size, 2u);
}

TEST(Layout, InitialisersKeepTheirKind)
{
    DylibFile dylib =
        linked(objects(object("a.o", Language::C,
                              "int call(int); int set; __attribute__((constructor)) void init(void) { set = call(1); }"
                              "int run(void) { return set; }")),
               {"_run"});
    const DylibSection *section = dylib.section("__DATA", "__mod_init_func");
    ASSERT_NE(section, nullptr);
    EXPECT_EQ(section->type(), format::S_MOD_INIT_FUNC_POINTERS);
    EXPECT_EQ(load32(dylib.contents(*section).data()), addressOf(dylib, "_init"));
}

TEST(Layout, DebuggingSectionsAreLeftOut)
{
    auto source = "int call(int); int run(int x) { return call(x); }";
    DylibFile plain = linked(objects(object("a.o", Language::C, source)), {"_run"});
    DylibFile debug = linked(objects(object("a.o", Language::C, source, "-O1 -g -gdwarf-2")), {"_run"});
    ASSERT_EQ(debug.sections.size(), plain.sections.size());
    for (size_t index = 0; index < plain.sections.size(); index++)
        EXPECT_EQ(debug.sections[index].name, plain.sections[index].name);
}

TEST(Layout, LiteralSectionsKeepTheirKind)
{
    DylibFile dylib = linked(objects(object("a.o", Language::C,
                                            "double d(double x) { return x * 1.25; } float f(float x)"
                                            "{ return x * 3.5f; } const char *run(void) { return \"t\"; }",
                                            "-O1 -msse2 -mfpmath=sse")),
                             {"_run"});
    EXPECT_EQ(dylib.section("__TEXT", "__cstring")->type(), format::S_CSTRING_LITERALS);
    EXPECT_EQ(dylib.section("__TEXT", "__literal8")->type(), format::S_8BYTE_LITERALS);
    EXPECT_EQ(dylib.section("__TEXT", "__literal4")->type(), format::S_4BYTE_LITERALS);
}

TEST(Layout, ErrorsNameTheSection)
{
    EXPECT_EQ(linkError(objects(assembled("a.o", ".section __DATA,__thing\n.long 1\n"),
                                assembled("b.o", ".section __DATA,__thing,cstring_literals\n.asciz \"x\"\n"))),
              "b.o: __DATA,__thing: its type is 0x2, but 0x0 in another object");
    EXPECT_EQ(linkError(objects(assembled("a.o", ".section __DATA,__interpose,interposing\n.long 1\n"))),
              "a.o: __DATA,__interpose: section type 0xd is not supported");
    EXPECT_EQ(linkError(objects(assembled("a.o", ".section __DATA,__local_ptr\n.long 1\n"))),
              "a.o: __DATA,__local_ptr: the linker itself makes a section of this name");
    EXPECT_EQ(linkError(objects(assembled("a.o", ".zerofill __DATA,__bss,_a,0x30000000,2\n"),
                                assembled("b.o", ".zerofill __DATA,__bss,_b,0x30000000,2\n"))),
              "b.o: __DATA,__bss: the library would be larger than 1 GB");
}

TEST(Layout, SameInputsGiveTheSameBytes)
{
    auto make = [] {
        LinkOptions options;
        options.installName = "x";
        auto library = link(
            objects(object("a.o", Language::Cpp,
                           "extern \"C\" int call(int); inline int &v() { static int x; return x; }"
                           "extern \"C\" int run(int x) { try { return call(x) + v(); } catch (...) { return 1; } }")),
            importTable(usualImports), options);
        return library.bytes;
    };
    Bytes first = make();
    EXPECT_EQ(first, make());
}

TEST(Layout, IdentifierFollowsTheContent)
{
    auto uuid = [](const char *source) { return linked(objects(object("a.o", Language::C, source)), {"_run"}).uuid; };
    EXPECT_EQ(uuid("int run(void) { return 1; }"), uuid("int run(void) { return 1; }"));
    EXPECT_NE(uuid("int run(void) { return 1; }"), uuid("int run(void) { return 2; }"));
}

TEST(Layout, MapListsSectionsSymbolsAndLibraries)
{
    LinkOptions options;
    auto library = link(objects(object("a.o", Language::C, "int call(int); int run(int x) { return call(x); }")),
                        importTable(usualImports), options);
    const std::string &map = library.map;
    EXPECT_EQ(map.rfind("# Identifier: ", 0), 0u) << map;
    EXPECT_NE(map.find("  __TEXT,__symbol_stub\n"), map.npos) << map;
    EXPECT_NE(map.find("  _run  a.o\n"), map.npos) << map;
    EXPECT_NE(map.find("/usr/lib/libfirst.dylib\n"), map.npos) << map;
}

TEST(Layout, NothingToLinkIsAnError)
{
    EXPECT_EQ(linkError({}), "no object files to link");
}

} // namespace
} // namespace macho::test
