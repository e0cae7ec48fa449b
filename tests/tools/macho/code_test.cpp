// Linked code, run: the numbers that come out are right only if every reference leads where it should.
#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"
#include "tests/tools/macho/loaded_image.h"

namespace macho::test {
namespace {

int doubled(int value)
{
    return 2 * value;
}
int theNumber = 40;

const std::map<std::string, void *> &imports()
{
    static const std::map<std::string, void *> all = {{"_call", reinterpret_cast<void *>(doubled)},
                                                      {"_number", &theNumber}};
    return all;
}

// Both forms of fix-ups, at every level of optimisation.
class Code : public testing::TestWithParam<const char *> {
protected:
    // Links, loads once per form of fix-ups, and gives what `_run` answers; both must be the same.
    int run(const std::vector<ObjectFile> &list, int argument)
    {
        DylibFile dylib = linked(list, {"_run"});
        LoadedImage classic(dylib, dylib.classic, imports()), compressed(dylib, dylib.compressed, imports());
        int result = classic.symbol<int(int)>("_run")(argument);
        EXPECT_EQ(compressed.symbol<int(int)>("_run")(argument), result);
        return result;
    }
    ObjectFile c(const char *name, const char *source) { return object(name, Language::C, source, GetParam()); }
    ObjectFile cpp(const char *name, const char *source) { return object(name, Language::Cpp, source, GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Levels, Code, testing::Values("-O0", "-O1", "-O2", "-O3", "-Os"),
                         [](const auto &info) { return std::string(info.param + 1); });

TEST_P(Code, CallsAnImportThroughItsStub)
{
    EXPECT_EQ(run(objects(c("a.o", "int call(int); int run(int x) { return call(x) + 1; }")), 20), 41);
}

TEST_P(Code, ReadsAnImportsData)
{
    EXPECT_EQ(run(objects(c("a.o", "extern int number; int run(int x) { return number + x; }")), 2), 42);
}

TEST_P(Code, SeesAMissingWeakImportAsNull)
{
    EXPECT_EQ(run(objects(c("a.o", "extern int perhaps(void) __attribute__((weak_import));"
                                   "int run(int x) { return perhaps ? perhaps() : x; }")),
                  7),
              7);
}

TEST_P(Code, CallsAndReadsAcrossObjects)
{
    EXPECT_EQ(
        run(objects(c("a.o", "extern int table[3]; int other(int); int run(int x) { return other(x) + table[2]; }"),
                    c("b.o", "int table[3] = {1, 2, 30}; int other(int x) { return 10 * x; }")),
            1),
        40);
}

TEST_P(Code, FollowsPointersInData)
{
    EXPECT_EQ(
        run(objects(c("a.o", "int call(int); extern int number; static int own(int x) { return x + 5; }"
                             "static int (*const calls[])(int) = {call, own}; static const char *text = \"abc\";"
                             "static int *where = &number; static const char *inside = &\"xyz\"[2];"
                             "int run(int x) { return calls[0](x) + calls[x](x) + text[1] + *where + *inside; }")),
            1),
        2 + 6 + 'b' + 40 + 'z');
}

TEST_P(Code, KeepsZeroFilledVariables)
{
    EXPECT_EQ(run(objects(c("a.o", "static int big[5000]; int plain = 3; int later(int);"
                                   "int run(int x) { big[4999] += x; return big[4999] + plain + later(0); }"),
                          c("b.o", "static int counter; int later(int x) { counter += 2; return counter + x; }")),
                  1),
              1 + 3 + 2);
}

TEST_P(Code, JumpsThroughTables)
{
    EXPECT_EQ(run(objects(c("a.o", "int call(int); int run(int x) { switch (x) { case 0: return call(1);"
                                   "case 1: return call(5); case 2: return 7; case 3: return call(9) + 1;"
                                   "case 4: return 13; case 5: return call(x); default: return 0; } }")),
                  3),
              19);
}

TEST_P(Code, ComputesWithFloatConstants)
{
    EXPECT_EQ(
        run(objects(c("a.o", "double scale(double x) { return x * 2.5 + 0.125; } float f(float x) { return x / 3.0f; }"
                             "int run(int x) { return (int)(scale(x) * 8) + (int)f(x * 30); }")),
            4),
        81 + 40);
}

TEST_P(Code, SharesAnInlineFunctionsVariable)
{
    const char *shared = "inline int &counter() { static int value = 5; return value; } ";
    std::string first = std::string(shared) + "extern \"C\" int bump(int); extern \"C\" int run(int x) { "
                                              "counter() += x; bump(x); return counter(); }";
    std::string second = std::string(shared) + "extern \"C\" int bump(int x) { return counter() += 10 * x; }";
    EXPECT_EQ(run(objects(cpp("a.o", first.c_str()), cpp("b.o", second.c_str())), 2), 5 + 2 + 20);
    EXPECT_EQ(run(objects(cpp("b.o", second.c_str()), cpp("a.o", first.c_str())), 2), 5 + 2 + 20);
}

TEST_P(Code, PrefersAStrongDefinitionOverAWeakOne)
{
    const char *weak = "__attribute__((weak, visibility(\"hidden\"))) int choose(int x) { return x; }"
                       "int run(int x) { return choose(x); }";
    const char *strong = "int choose(int x) { return 100 + x; }";
    EXPECT_EQ(run(objects(c("a.o", weak), c("b.o", strong)), 1), 101);
    EXPECT_EQ(run(objects(c("b.o", strong), c("a.o", weak)), 1), 101);
}

TEST_P(Code, CallsVirtualFunctions)
{
    EXPECT_EQ(run(objects(object("a.o", Language::Cpp,
                                 "struct Base { virtual int value() { return 1; } };"
                                 "struct Derived : Base { int value() override { return 42; } };"
                                 "extern \"C\" int run(int x) { Derived d; Base b; Base *p = x ? &d : &b;"
                                 "asm(\"\" : \"+r\"(p)); return p->value(); }",
                                 std::string(GetParam()) + " -fno-rtti")),
                  1),
              42);
}

TEST(CodeReferences, ImageHeaderIsTheStartOfTheLibrary)
{
    DylibFile dylib = linked(objects(object("a.o", Language::C,
                                            "extern char handle asm(\"___dso_handle\");"
                                            "char *run(void) { return &handle; } char *kept = &handle;")),
                             {"_run", "_kept"});
    LoadedImage image(dylib, dylib.classic, {});
    EXPECT_EQ(image.symbol<uint8_t *()>("_run")(), image.at(0));
    EXPECT_EQ(*image.symbol<uint8_t *>("_kept"), image.at(0));
}

TEST(CodeReferences, OlderCompilersStubsAndPointersAreReplaced)
{
    // As compilers for the first Intel systems wrote calls: through a stub of their own with a lazy pointer.
    const char *source = ".text\n.globl _run\n_run:\n pushl 4(%esp)\n call L_call$stub\n addl $4, %esp\n"
                         " pushl %eax\n call L_own$stub\n addl $4, %esp\n ret\n"
                         ".private_extern _own\n.globl _own\n_own:\n movl 4(%esp), %eax\n incl %eax\n ret\n"
                         ".section __IMPORT,__jump_table,symbol_stubs,self_modifying_code+pure_instructions,5\n"
                         "L_call$stub:\n .indirect_symbol _call\n hlt ; hlt ; hlt ; hlt ; hlt\n"
                         "L_own$stub:\n .indirect_symbol _own\n hlt ; hlt ; hlt ; hlt ; hlt\n";
    DylibFile dylib = linked(objects(object("a.o", Language::Assembler, source, "")), {"_run"});
    EXPECT_EQ(dylib.section("__IMPORT", "__jump_table"), nullptr);
    LoadedImage image(dylib, dylib.classic, imports());
    EXPECT_EQ(image.symbol<int(int)>("_run")(20), 41);
}

TEST(CodeReferences, PointerToTheLibraryItselfMovesWithIt)
{
    const char *source = ".text\n.globl _run\n_run:\n call 1f\n1: popl %ecx\n movl L_own$ptr-1b(%ecx), %eax\n"
                         " movl (%eax), %eax\n ret\n.data\n.globl _own\n.private_extern _own\n_own: .long 77\n"
                         ".section __IMPORT,__pointers,non_lazy_symbol_pointers\n"
                         "L_own$ptr:\n .indirect_symbol _own\n .long 0\n";
    DylibFile dylib = linked(objects(object("a.o", Language::Assembler, source, "")), {"_run"});
    for (const DylibFixups *fixups : {&dylib.classic, &dylib.compressed}) {
        LoadedImage image(dylib, *fixups, {});
        EXPECT_EQ(image.symbol<int()>("_run")(), 77);
    }
}

} // namespace
} // namespace macho::test
