#include "tools/macho/symbols.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

const DylibSymbol *find(const DylibFile &dylib, const std::string &name)
{
    for (const DylibSymbol &symbol : dylib.symbols)
        if (symbol.name == name)
            return &symbol;
    return nullptr;
}

std::vector<std::string> exportsOf(const DylibFile &dylib)
{
    std::vector<std::string> names;
    for (const DylibSymbol &symbol : dylib.symbols)
        if (symbol.isExport())
            names.push_back(symbol.name);
    return names;
}

ObjectFile c(const char *name, const char *source)
{
    return object(name, Language::C, source);
}

TEST(Symbols, UndefinedOneIsToldWithItsFileAndSection)
{
    EXPECT_EQ(linkError(objects(c("dir/a.o", "int nowhere(int); int run(int x) { return nowhere(x); }"))),
              "dir/a.o: __TEXT,__text: undefined symbol _nowhere: no object defines it and the symbol table names no "
              "library for it");
    EXPECT_EQ(linkError(objects(c("a.o", "extern int data; int *where = &data;"))),
              "a.o: __DATA,__data: undefined symbol _data: no object defines it and the symbol table names no library "
              "for it");
    EXPECT_EQ(linkError(objects(c("a.o", "extern int data; int run(void) { return data; }"))),
              "a.o: __IMPORT,__pointers: undefined symbol _data: no object defines it and the symbol table names no "
              "library for it");
}

TEST(Symbols, DuplicateIsToldWithBothFiles)
{
    EXPECT_EQ(linkError(objects(c("a.o", "int twice(void) { return 1; }"), c("b.o", "int twice = 2;"))),
              "b.o: __DATA,__data: duplicate symbol _twice: it is already defined in a.o");
}

TEST(Symbols, TwoClassesOfOneNameAreDuplicates)
{
    const char *source = "__attribute__((objc_root_class)) @interface One { id isa; } @end @implementation One @end";
    EXPECT_EQ(
        linkError(objects(object("a.o", Language::ObjectiveC, source), object("b.o", Language::ObjectiveC, source))),
        "b.o: duplicate symbol .objc_class_name_One: it is already defined in a.o");
}

TEST(Symbols, SameStaticNameInTwoObjectsIsNoDuplicate)
{
    DylibFile dylib = linked(objects(c("a.o", "static int v = 1; int *one(void) { return &v; }"),
                                     c("b.o", "static int v = 2; int *two(void) { return &v; }")),
                             {"_one", "_two"});
    EXPECT_EQ(exportsOf(dylib), (std::vector<std::string>{"_one", "_two"}));
}

TEST(Symbols, OnlyTheListedOnesAreExported)
{
    auto source = "__attribute__((visibility(\"default\"))) int other(void) { return 1; } int run(void) { return 2; }";
    DylibFile dylib = linked(objects(c("a.o", source)), {"_run"});
    EXPECT_EQ(exportsOf(dylib), std::vector<std::string>{"_run"});
    EXPECT_EQ(dylib.exportTrie, (std::map<std::string, uint32_t>{{"_run", addressOf(dylib, "_run")}}));
    ASSERT_NE(find(dylib, "_other"), nullptr);
    EXPECT_FALSE(find(dylib, "_other")->type & format::N_EXT);
}

TEST(Symbols, WithoutAListEveryGlobalOneThatIsNotPrivateIsExported)
{
    auto source =
        "__attribute__((visibility(\"default\"))) int open1(void) { return 1; } int hidden(void) { return 2; }"
        "__attribute__((visibility(\"default\"))) int open2 = 3;";
    DylibFile dylib = linked(objects(c("a.o", source)), {});
    EXPECT_EQ(exportsOf(dylib), (std::vector<std::string>{"_open1", "_open2"}));
}

TEST(Symbols, ExportThatNoObjectDefinesIsAnError)
{
    auto text = [](const char *name) {
        return linkError(objects(c("a.o", "int call(int); int x(int y) { return call(y); }")), {name});
    };
    EXPECT_EQ(text("_missing"), "exported symbol _missing is not defined in any object");
    EXPECT_EQ(text("_call"), "exported symbol _call is not defined in any object");
}

TEST(Symbols, StripLeavesExportsAndImportsOnly)
{
    auto source = "int call(int); static __attribute__((noinline)) int own(int x) { return call(x); } int run(int x) { "
                  "return own(x); }";
    LinkOptions strip;
    strip.strip = true;
    DylibFile whole = linked(objects(c("a.o", source)), {"_run"}),
              stripped = linked(objects(c("a.o", source)), {"_run"}, strip);
    EXPECT_NE(find(whole, "_own"), nullptr);
    EXPECT_EQ(find(stripped, "_own"), nullptr);
    EXPECT_EQ(stripped.symbols.size(), 2u);
    EXPECT_LT(stripped.bytes.size(), whole.bytes.size());
}

TEST(Symbols, LocalOnesAreNoExports)
{
    auto source =
        "static __attribute__((noinline)) int own(int x) { return x * x; } int hidden(int x) { return own(x); }"
        "int run(int x) { return hidden(x) + own(x); }";
    DylibFile dylib = linked(objects(c("a.o", source)), {"_run"});
    for (const char *name : {"_own", "_hidden"}) {
        ASSERT_NE(find(dylib, name), nullptr) << name;
        EXPECT_FALSE(find(dylib, name)->isExport()) << name;
    }
    EXPECT_EQ(exportsOf(dylib), std::vector<std::string>{"_run"});
}

TEST(Symbols, FirstOneIsNoImport)
{
    LinkOptions strip;
    strip.strip = true;
    auto first = [&](const char *source, LinkOptions options) {
        DylibFile dylib = linked(objects(c("a.o", source)), {}, options);
        EXPECT_EQ(std::count(dylib.indirectSymbols.begin(), dylib.indirectSymbols.end(), 0u), 0);
        EXPECT_FALSE(dylib.indirectSymbols.empty());
        return dylib.symbols.front();
    };
    const char *nothingExported = "int call(int); __attribute__((constructor)) static void start(void) { call(1); }";
    EXPECT_EQ(first(nothingExported, {}).name, "_start");
    EXPECT_FALSE(first(nothingExported, strip).isImport());
}

TEST(FunctionStarts, AreThoseOfTheCodeInOrder)
{
    LinkOptions strip;
    strip.strip = true;
    for (const LinkOptions &options : {LinkOptions{}, strip}) {
        DylibFile dylib = linked(
            objects(c("a.o", "int number2 = 2; __attribute__((visibility(\"default\"))) int one(int x) { return x; }"),
                    c("b.o", "static __attribute__((noinline)) int own(int x) { return x * x; }"
                             "int two(int x) { return own(x); }")),
            {"_one", "_two"}, options);
        ASSERT_EQ(dylib.functionStarts.size(), 3u);
        EXPECT_EQ(dylib.functionStarts[0], addressOf(dylib, "_one"));
        EXPECT_TRUE(std::count(dylib.functionStarts.begin(), dylib.functionStarts.end(), addressOf(dylib, "_two")));
        EXPECT_TRUE(std::is_sorted(dylib.functionStarts.begin(), dylib.functionStarts.end()));
    }
}

TEST(Symbols, CompilersOwnNamesAreLeftOut)
{
    DylibFile dylib = linked(
        objects(object("a.o", Language::Assembler, ".text\n.globl _run\n_run: ret\nlprivate: ret\n_own: ret\n", "")),
        {"_run"});
    EXPECT_EQ(find(dylib, "lprivate"), nullptr);
    EXPECT_NE(find(dylib, "_own"), nullptr);
}

TEST(Imports, NameTheirLibrary)
{
    DylibFile dylib = linked(objects(c("a.o", "int call(int); int optional(void); extern int number;"
                                              "int run(int x) { return call(x) + optional() + number; }")),
                             {"_run"});
    ASSERT_EQ(dylib.libraries.size(), 2u);
    EXPECT_EQ(dylib.libraries[0].library.installName, "/usr/lib/libfirst.dylib");
    EXPECT_EQ(dylib.libraries[0].library.currentVersion, 0x20000u);
    EXPECT_EQ(dylib.libraries[0].library.compatibilityVersion, 0x10000u);
    EXPECT_EQ(find(dylib, "_call")->libraryOrdinal(), 1u);
    EXPECT_EQ(find(dylib, "_number")->libraryOrdinal(), 1u);
    EXPECT_EQ(find(dylib, "_optional")->libraryOrdinal(), 2u);
}

TEST(Imports, WeakOnesAreMarkedInBothForms)
{
    DylibFile dylib =
        linked(objects(c("a.o", "int call(int) __attribute__((weak_import)); int perhaps(void); extern int number;"
                                "int run(int x) { return call(x) + perhaps() + number; }")),
               {"_run"});
    auto weakIn = [](const DylibFixups &fixups) {
        std::map<std::string, bool> weak;
        for (const DylibBind &bind : fixups.binds)
            weak[bind.symbol] = bind.weak;
        return weak;
    };
    std::map<std::string, bool> expected = {{"_call", true}, {"_perhaps", true}, {"_number", false}};
    EXPECT_EQ(weakIn(dylib.classic), expected);
    EXPECT_EQ(weakIn(dylib.compressed), expected);
}

TEST(Imports, OneReferenceThatNeedsASymbolMakesItNeeded)
{
    auto weak = [] {
        return c("w.o", "int call(int) __attribute__((weak_import)); int one(int x) { return call ? call(x) : 0; }");
    };
    auto strong = [] { return c("s.o", "int call(int); int two(int x) { return call(x); }"); };
    EXPECT_TRUE(find(linked(objects(weak()), {"_one"}), "_call")->isWeakImport());
    EXPECT_FALSE(find(linked(objects(weak(), strong()), {"_one"}), "_call")->isWeakImport());
    EXPECT_FALSE(find(linked(objects(strong(), weak()), {"_one"}), "_call")->isWeakImport());
}

TEST(Imports, LibraryOfWeakOnesOnlyMayBeMissing)
{
    DylibFile dylib =
        linked(objects(c("a.o", "int call(int); int optional(void); int run(int x) { return call(x) + optional(); }")),
               {"_run"});
    ASSERT_EQ(dylib.libraries.size(), 2u);
    EXPECT_FALSE(dylib.libraries[0].weak);
    EXPECT_TRUE(dylib.libraries[1].weak);
}

TEST(Imports, AreBoundAtOnceAndOnceEach)
{
    DylibFile dylib = linked(objects(c("a.o", "int call(int); int one(int x) { return call(x) + call(x + 1); }"),
                                     c("b.o", "int call(int); int two(int x) { return call(x); }")),
                             {"_one", "_two"});
    ASSERT_EQ(dylib.compressed.binds.size(), 1u);
    EXPECT_EQ(dylib.section("__TEXT", "__symbol_stub")->size, 12u);
    EXPECT_EQ(dylib.section("__DATA", "__nl_symbol_ptr")->size, 4u);
}

TEST(References, ToAnAbsoluteSymbolAreRefused)
{
    EXPECT_EQ(
        linkError(objects(object("a.o", Language::Assembler, ".globl _fixed\n_fixed = 5\n.data\n.long _fixed2\n", ""),
                          object("b.o", Language::Assembler, ".globl _fixed2\n_fixed2 = 6\n", ""))),
        "a.o: __DATA,__data+0x0: a reference to an absolute symbol is not supported");
}

TEST(References, FromCodeThatWouldHaveToBeChangedAreRefused)
{
    std::string advice = ": compile with -fPIC, and keep addresses out of __TEXT";
    EXPECT_EQ(linkError(objects(object("a.o", Language::C, "extern int number; int run(void) { return number; }",
                                       "-O1 -mdynamic-no-pic -fno-PIC"))),
              "a.o: __TEXT,__text+0x4: a text relocation would be needed for symbol _number" + advice);
    EXPECT_EQ(linkError(objects(object("a.o", Language::Assembler,
                                       ".section __TEXT,__const\n.byte 1\n.align 2\n"
                                       ".long _here\n.text\n_here: ret\n",
                                       ""))),
              "a.o: __TEXT,__const+0x4: a text relocation would be needed for symbol _here" + advice);
}

} // namespace
} // namespace macho::test
