// No bytes whatever crash the linker: each mutated object is refused with one line, or linked into a library that reads
// back. A failing run is repeated with the seed that it prints: MACHO_MUTATION_SEED=... ; MACHO_MUTATIONS=... for more.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

uint32_t setting(const char *name, uint32_t usual)
{
    const char *text = std::getenv(name);
    return text ? static_cast<uint32_t>(std::strtoul(text, nullptr, 0)) : usual;
}

std::vector<Bytes> seeds()
{
    return {
        compile(Language::Cpp,
                "extern \"C\" int call(int); inline int &v() { static int x = 1; return x; }"
                "extern \"C\" int run(int x) { try { return call(x) + v(); } catch (int) { return 1; } }"),
        compile(Language::ObjectiveC,
                "__attribute__((objc_root_class)) @interface NSObject { id isa; } + (id)alloc; @end "
                "@interface One : NSObject @end @implementation One - (id)text { return (id)@\"t\"; } @end "
                "id run(void) { return [One alloc]; }"),
        compile(Language::C,
                "int call(int); extern int number; int zero[9]; void *table[] = {call, &number, table, zero + 3};"
                "int run(int x) { switch (x) { case 0: return call(1); case 1: return 5; case 2: return number;"
                "case 3: return zero[x]; case 4: return 9; default: return call(x); } }"),
        compile(Language::Assembler,
                ".text\n.globl _run\n_run:\n call L_call$stub\n ret\n.private_extern _own\n_own: ret\n"
                ".section __IMPORT,__jump_table,symbol_stubs,self_modifying_code+pure_instructions,5\n"
                "L_call$stub:\n .indirect_symbol _call\n hlt ; hlt ; hlt ; hlt ; hlt\n"
                ".section __IMPORT,__pointers,non_lazy_symbol_pointers\n"
                "L_own$ptr:\n .indirect_symbol _own\n .long 0\n",
                ""),
        // Weak definitions only: beside itself, mutated, one of the two loses.
        compile(Language::Cpp,
                "extern \"C\" int call(int); __attribute__((used)) inline int number = 3;"
                "__attribute__((used)) inline const char *text(int x) { return x ? \"one\" : \"two\"; }"
                "__attribute__((used)) inline int shared(int x) { try { return call(x) + number; } catch (int) "
                "{ return 1; } }"),
    };
}

// Numbers near a limit, small ones, and any at all.
uint32_t interesting(std::mt19937 &random, uint32_t old)
{
    static const uint32_t numbers[] = {0,    1,      2,          4,          0x7f,       0x80,
                                       0xff, 0xffff, 0x7fffffff, 0x80000000, 0xfffffffc, 0xffffffff};
    switch (random() % 4) {
    case 0:
        return numbers[random() % std::size(numbers)];
    case 1:
        return old + random() % 17 - 8;
    case 2:
        return old ^ 1u << random() % 32;
    default:
        return random();
    }
}

void mutate(Bytes &bytes, std::mt19937 &random)
{
    for (uint32_t changes = 1 + random() % 6; changes > 0 && bytes.size() > 4; changes--) {
        // Most damage is done where the tables are: at the start.
        size_t reach = random() % 2 ? bytes.size() : std::min<size_t>(bytes.size(), 1200);
        size_t at = random() % (reach - 3);
        switch (random() % 8) {
        case 0:
            bytes.resize(random() % bytes.size());
            break;
        case 1:
            bytes[at] = static_cast<uint8_t>(random());
            break;
        case 2:
            std::copy_n(bytes.begin() + random() % (bytes.size() - 3), 4, bytes.begin() + at);
            break;
        default:
            at &= ~size_t{3};
            store32(&bytes[at], interesting(random, load32(&bytes[at])));
        }
    }
}

TEST(Mutations, AreRefusedInOneLineOrLinked)
{
    uint32_t seed = setting("MACHO_MUTATION_SEED", static_cast<uint32_t>(std::random_device()()));
    uint32_t count = setting("MACHO_MUTATIONS", 20000);
    std::cout << "seed " << seed << std::endl;
    SCOPED_TRACE("MACHO_MUTATION_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    std::vector<Bytes> originals = seeds();
    ImportTable table = importTable(usualImports);
    uint32_t linkedCount = 0, refusedCount = 0;
    for (uint32_t round = 0; round < count; round++) {
        Bytes bytes = originals[round % originals.size()];
        mutate(bytes, random);
        LinkOptions options;
        options.strip = round % 3 == 0;
        if (round % 2)
            options.exports = {"_run"};
        LinkedLibrary library;
        std::string message = failureOf([&] {
            std::vector<ObjectFile> list = objects(parseObject("a.o", std::move(bytes)));
            if (round % 3 != 0)
                list.push_back(parseObject("b.o", originals.back()));
            library = link(list, table, options);
        });
        ASSERT_EQ(message.find('\n'), message.npos) << "round " << round << ": " << message;
        if (message == "none") {
            linkedCount++;
            ASSERT_NO_THROW(parseDylib("out", std::move(library.bytes))) << "round " << round;
        } else {
            refusedCount++;
        }
    }
    EXPECT_GT(linkedCount, count / 20);
    EXPECT_GT(refusedCount, count / 20);
}

} // namespace
} // namespace macho::test
