// What is equal is in a library once, and what is not stays apart.
#include "tools/macho/pieces.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tools/macho/compiled_object.h"
#include "tests/tools/macho/loaded_image.h"

namespace macho::test {
namespace {

std::string textOf(const DylibFile &dylib, const char *segment, const char *section)
{
    ByteView bytes = dylib.contents(*dylib.section(segment, section));
    return std::string(reinterpret_cast<const char *>(bytes.data()), bytes.size());
}

TEST(Pieces, EqualStringsAreOne)
{
    DylibFile dylib =
        linked(objects(object("a.o", Language::C, "const char *one(int x) { return x ? \"same\" : \"of a\"; }"),
                       object("b.o", Language::C,
                              "const char *two(int x) { return x ? \"of b\" : \"same\"; }"
                              "const char *const table[] = {\"same\", \"\", \"me\", \"of b\"};")),
               {"_one", "_two", "_table"});
    std::string texts = textOf(dylib, "__TEXT", "__cstring");
    EXPECT_EQ(texts.size(), sizeof "same" + sizeof "of a" + sizeof "of b" + sizeof "" + sizeof "me");
    for (const DylibFixups *fixups : {&dylib.classic, &dylib.compressed}) {
        LoadedImage image(dylib, *fixups, {});
        auto one = image.symbol<const char *(int)>("_one"), two = image.symbol<const char *(int)>("_two");
        auto table = image.symbol<const char *const>("_table");
        EXPECT_STREQ(one(1), "same");
        EXPECT_EQ(one(1), two(0));
        EXPECT_STREQ(one(0), "of a");
        EXPECT_STREQ(two(1), "of b");
        EXPECT_EQ(table[0], one(1));
        EXPECT_STREQ(table[1], "");
        EXPECT_STREQ(table[2], "me");
        EXPECT_EQ(table[3], two(1));
    }
}

TEST(Pieces, EqualNumbersAreOne)
{
    auto source = [](const std::string &name, const char *other) {
        return "double " + name + "(double x) { return x * 1.25 + " + other + "; } float " + name +
               "f(float x) { return x * 3.5f; }";
    };
    const char *flags = "-O1 -msse2 -mfpmath=sse";
    DylibFile dylib = linked(objects(object("a.o", Language::C, source("one", "7.0"), flags),
                                     object("b.o", Language::C, source("two", "9.0"), flags)),
                             {"_one", "_two", "_onef", "_twof"});
    EXPECT_EQ(dylib.section("__TEXT", "__literal8")->size, 3 * 8u);
    EXPECT_EQ(dylib.section("__TEXT", "__literal4")->size, 4u);
    LoadedImage image(dylib, dylib.classic, {});
    EXPECT_EQ(image.symbol<double(double)>("_one")(4), 12);
    EXPECT_EQ(image.symbol<double(double)>("_two")(4), 14);
    EXPECT_EQ(image.symbol<float(float)>("_twof")(2), 7);
}

// Equal texts at different addresses are the same reference; equal words that lead to different texts are not.
TEST(Pieces, ReferencesThatMeanTheSameAreOne)
{
    auto source = [](const char *function, const char *other) {
        return std::string("@class NSString; __attribute__((objc_root_class)) @interface NSObject { id isa; } "
                           "+ (id)alloc; - (id)init; - (id)other:(id)text; + (id)") +
               other + "; @end\nid " + function + "(void) { [NSObject " + other +
               "]; return [[[NSObject alloc] init] other: (id)@\"text\"]; }";
    };
    DylibFile dylib = linked(objects(object("a.o", Language::ObjectiveC, source("one", "first")),
                                     object("b.o", Language::ObjectiveC, source("two", "second"))),
                             {"_one", "_two"});
    EXPECT_EQ(dylib.section("__OBJC", "__message_refs")->size / 4, 5u); // alloc, init, other:, first, second
    EXPECT_EQ(dylib.section("__OBJC", "__cls_refs")->size / 4, 1u);
    EXPECT_EQ(dylib.section("__DATA", "__cfstring")->size / 16, 1u);
    EXPECT_EQ(std::adjacent_find(dylib.classic.rebases.begin(), dylib.classic.rebases.end()),
              dylib.classic.rebases.end());
}

TEST(Pieces, ConstantStringsOfOneTextAndOtherLengthsStayApart)
{
    DylibFile dylib =
        linked(objects(object("a.o", Language::ObjectiveC,
                              "@class NSString; id one(void) { return (id)@\"a\\0b\"; }"
                              "id two(void) { return (id)@\"a\\0c\"; } id three(void) { return (id)@\"a\"; }")),
               {"_one", "_two", "_three"});
    EXPECT_EQ(dylib.section("__DATA", "__cfstring")->size / 16, 3u);
}

const char shared[] = "extern \"C\" int call(int); inline __attribute__((noinline)) int shared(int x)"
                      "{ try { return call(x) + 1; } catch (...) { return 0; } } inline int counter = 5;"
                      "struct Base { virtual int value() { return 7; } virtual ~Base() {} };";

TEST(Pieces, WeakDefinitionsThatLostAreNotInTheLibrary)
{
    for (const char *level : {"-O0", "-O2"}) {
        auto cpp = [&](const char *name, const std::string &source) {
            return object(name, Language::Cpp, shared + source, std::string(level) + " -fno-rtti -U__GXX_RTTI");
        };
        // Code before and behind what is cut out, which must find its own data, texts and functions afterwards.
        std::string imports = std::string(usualImports) + "__ZdlPv\n__ZSt9terminatev2\n___cxa_pure_virtual\n";
        DylibFile dylib = linked(
            objects(cpp("a.o", "extern \"C\" int one(int x) { Base b; counter++; return shared(x) + b.value(); }"),
                    cpp("b.o", "static const char *texts[] = {\"zero\", \"one\"}; static int before = 3;"
                               "static __attribute__((noinline)) int own(int x) { return x + before + texts[1][0]; }"
                               "extern \"C\" int two(int x) { Base b; counter++; return shared(own(x)) + b.value(); }"
                               "extern \"C\" int count() { return counter; }")),
            {"_one", "_two", "_count"}, {}, imports);
        std::vector<std::string> names;
        for (const DylibSymbol &symbol : dylib.symbols)
            if (symbol.name.compare(0, 4, "__ZN") == 0 || symbol.name == "__Z6sharedi" || symbol.name == "_counter")
                names.push_back(symbol.name);
        std::sort(names.begin(), names.end());
        EXPECT_FALSE(names.empty());
        EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
        auto call = [](int x) { return 2 * x; };
        std::map<std::string, void *> imported = {{"_call", reinterpret_cast<void *>(+call)}};
        for (const DylibFixups *fixups : {&dylib.classic, &dylib.compressed}) {
            LoadedImage image(dylib, *fixups, imported);
            EXPECT_EQ(image.symbol<int(int)>("_one")(10), 2 * 10 + 1 + 7);
            EXPECT_EQ(image.symbol<int(int)>("_two")(10), 2 * (10 + 3 + 'o') + 1 + 7);
            EXPECT_EQ(image.symbol<int()>("_count")(), 7); // one counter for both
        }
    }
}

ObjectFile assembled(const char *name, const std::string &source)
{
    return object(name, Language::Assembler, source + "\n.subsections_via_symbols\n", "");
}

TEST(Pieces, LosingDefinitionWithAnotherNameIsKept)
{
    std::string weak = ".text\n.globl _shared\n.weak_definition _shared\n";
    DylibFile dylib = linked(objects(assembled("a.o", weak + "_shared: movl $1, %eax\nret\n"),
                                     assembled("b.o", weak + ".globl _run\n_run:\n_shared: movl $2, %eax\nret\n")),
                             {"_run", "_shared"});
    LoadedImage image(dylib, dylib.classic, {});
    EXPECT_EQ(image.symbol<int()>("_shared")(), 1);
    EXPECT_EQ(dylib.section("__TEXT", "__text")->size, 12u);
}

TEST(Pieces, ReferenceIntoTheMiddleOfALosingDefinitionIsRefused)
{
    std::string weak = ".data\n.globl _shared\n.weak_definition _shared\n_shared: .long 1\nLmiddle: .long 2\n";
    EXPECT_EQ(
        linkError(objects(assembled("a.o", weak), assembled("b.o", weak + ".globl _where\n_where: .long Lmiddle\n")),
                  {"_where"}),
        "b.o: __DATA,__data+0x8: a reference into section __DATA,__data of b.o, in the middle of a definition that "
        "is not used");
}

TEST(Pieces, CallFrameTableIsNoTableOfLiteralsWhateverItsTypeSays)
{
    Bytes bytes = compile(Language::Cpp, "extern \"C\" int call(int); extern \"C\" int run(int x) { return call(x); }");
    const std::string name = "__eh_frame";
    size_t header =
        static_cast<size_t>(std::search(bytes.begin(), bytes.end(), name.begin(), name.end()) - bytes.begin());
    const size_t address = 32, place = 40, relocations = 48, flags = 56;
    store32(&bytes[header + flags], format::S_4BYTE_LITERALS);
    // It has no record, and yet a difference of two addresses to be filled in.
    store32(&bytes[load32(&bytes[header + place])], 0);
    store32(&bytes[header + relocations], static_cast<uint32_t>(bytes.size()));
    store32(&bytes[header + relocations + 4], 2);
    ByteWriter two;
    two.u32(0xA0000000u | format::GENERIC_RELOC_LOCAL_SECTDIFF << 24 | 8);
    two.u32(load32(&bytes[header + address]));
    two.u32(0xA0000000u | format::GENERIC_RELOC_PAIR << 24);
    two.u32(0);
    bytes.insert(bytes.end(), two.bytes.begin(), two.bytes.end());
    linked(objects(parseObject("a.o", bytes)), {"_run"});
}

TEST(Pieces, TwoRelocationsForOneWordAreRefused)
{
    Bytes bytes = compile(Language::C, "extern int number; int *table[] = {&number, &number};");
    // The second relocation of __data becomes one for the word of the first.
    ObjectFile whole = parseObject("a.o", bytes);
    for (const Section &section : whole.sections)
        if (section.name == "__data")
            ASSERT_EQ(section.relocations.size(), 2u);
    for (size_t at = 0; at + 16 <= bytes.size(); at += 4)
        if (load32(&bytes[at]) == 4 && load32(&bytes[at + 8]) == 0 && load32(&bytes[at + 4]) == load32(&bytes[at + 12]))
            store32(&bytes[at], 0);
    EXPECT_EQ(
        linkError(objects(parseObject("a.o", bytes)), {"_table"}).find("damaged: two relocations change the word at "),
        0u);
}

} // namespace
} // namespace macho::test
