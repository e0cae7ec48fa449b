// What the Objective-C runtime of 32-bit macOS reads of a library.
#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

const char first[] =
    "@class NSString; __attribute__((objc_root_class)) @interface NSObject { id isa; } - (id)init; + (id)alloc; @end\n"
    "@interface One : NSObject @end\n"
    "@implementation One - (id)init { return [super init]; } - (id)text { return (id)@\"text\"; } @end\n"
    "id run(void) { return [[One alloc] init]; }";
const char second[] = "__attribute__((objc_root_class)) @interface NSObject { id isa; } + (id)alloc; @end\n"
                      "@interface Two : NSObject - (id)again; @end\n"
                      "@implementation Two - (id)again { return self; } @end\n"
                      "id two(void) { return [(Two *)[Two alloc] again]; }";

DylibFile library()
{
    return linked(objects(object("a.o", Language::ObjectiveC, first), object("b.o", Language::ObjectiveC, second)),
                  {"_run", "_two"});
}

struct Memory {
    Bytes bytes;
    uint32_t base;
    uint32_t word(uint32_t address) const { return load32(&bytes[address - base]); }
    std::string text(uint32_t address) const { return reinterpret_cast<const char *>(&bytes[address - base]); }
};

Memory memoryOf(const DylibFile &dylib)
{
    constexpr uint32_t base = 0x10000000;
    return {loadedMemory(dylib, dylib.classic, base, [](const DylibBind &) { return 0; }), base};
}

TEST(ObjectiveC, ModulesOfAllObjectsFollowOneAnother)
{
    DylibFile dylib = library();
    Memory memory = memoryOf(dylib);
    const DylibSection *modules = dylib.section("__OBJC", "__module_info");
    ASSERT_NE(modules, nullptr);
    ASSERT_EQ(modules->size, 2 * 16u);
    std::vector<std::string> classes;
    for (uint32_t offset = 0; offset < modules->size; offset += 16) {
        uint32_t module = memory.base + modules->address + offset;
        EXPECT_EQ(memory.word(module + 4), 16u); // its own size
        uint32_t symbols = memory.word(module + 12);
        uint32_t theClass = memory.word(symbols + 12);
        classes.push_back(memory.text(memory.word(theClass + 8)));
        EXPECT_EQ(memory.text(memory.word(theClass + 4)), "NSObject");
    }
    EXPECT_EQ(classes, (std::vector<std::string>{"One", "Two"}));
}

TEST(ObjectiveC, SelectorsAndClassesAreReferredToByName)
{
    DylibFile dylib = library();
    Memory memory = memoryOf(dylib);
    auto names = [&](const char *section) {
        std::vector<std::string> list;
        const DylibSection *references = dylib.section("__OBJC", section);
        for (uint32_t offset = 0; offset < references->size; offset += 4)
            list.push_back(memory.text(memory.word(memory.base + references->address + offset)));
        return list;
    };
    EXPECT_EQ(names("__cls_refs"), (std::vector<std::string>{"One", "Two"}));
    EXPECT_EQ(names("__message_refs"), (std::vector<std::string>{"init", "alloc", "again"})); // alloc is in both
    for (const char *section : {"__cls_refs", "__message_refs"})
        EXPECT_EQ(dylib.section("__OBJC", section)->flags, 0x10000005u) << section; // pointers to literals, kept
}

TEST(ObjectiveC, ThereIsOneImageInfo)
{
    DylibFile dylib = library();
    EXPECT_EQ(dylib.section("__OBJC", "__image_info")->size, 8u);
}

TEST(ObjectiveC, ConstantStringsLeadToTheirCharacters)
{
    DylibFile dylib = library();
    Memory memory = memoryOf(dylib);
    const DylibSection *strings = dylib.section("__DATA", "__cfstring");
    ASSERT_EQ(strings->size, 16u);
    EXPECT_EQ(memory.text(memory.word(memory.base + strings->address + 8)), "text");
    EXPECT_EQ(memory.word(memory.base + strings->address + 12), 4u);
}

TEST(ObjectiveC, ClassesOfLibrariesAreImportsThatNothingIsBoundTo)
{
    DylibFile dylib = library();
    bool found = false;
    for (const DylibSymbol &symbol : dylib.symbols)
        found |= symbol.name == ".objc_class_name_NSObject" && symbol.isImport();
    EXPECT_TRUE(found);
    for (const DylibBind &bind : dylib.classic.binds)
        EXPECT_NE(bind.symbol, ".objc_class_name_NSObject");
}

TEST(ObjectiveC, ClassThatNoLibraryIsKnownForIsAnError)
{
    EXPECT_EQ(linkError(objects(object("a.o", Language::ObjectiveC,
                                       "@interface Newer + (id)one; @end id run(void) { return [Newer one]; }"))),
              "a.o: undefined symbol .objc_class_name_Newer: no object defines it and the symbol table names no "
              "library for it");
}

ObjectFile withImageInfo(const char *name, const std::string &words)
{
    return object(name, Language::Assembler, ".text\nret\n.section __OBJC,__image_info\n" + words, "");
}

TEST(ImageInfo, SaysWhatHoldsForAllObjects)
{
    DylibFile dylib = linked(objects(withImageInfo("a.o", ".long 0, 0x41"), withImageInfo("b.o", ".long 0, 0x40")), {});
    ByteView info = dylib.contents(*dylib.section("__OBJC", "__image_info"));
    EXPECT_EQ(info.u32(0, "version"), 0u);
    EXPECT_EQ(info.u32(4, "flags"), 0x40u);
}

TEST(ImageInfo, ThatDoesNotGoTogetherIsAnError)
{
    EXPECT_EQ(linkError(objects(withImageInfo("a.o", ".long 0, 0"), withImageInfo("b.o", ".long 0, 2"))),
              "b.o: __OBJC,__image_info: version 0 and flags 0x2 do not go together with those of the objects before "
              "(0, 0x0)");
    EXPECT_EQ(linkError(objects(withImageInfo("a.o", ".long 0, 0"), withImageInfo("b.o", ".long 1, 0"))),
              "b.o: __OBJC,__image_info: version 1 and flags 0x0 do not go together with those of the objects before "
              "(0, 0x0)");
    EXPECT_EQ(linkError(objects(withImageInfo("a.o", ".long 0"))),
              "a.o: __OBJC,__image_info: damaged: it has 4 bytes instead of 8");
}

} // namespace
} // namespace macho::test
