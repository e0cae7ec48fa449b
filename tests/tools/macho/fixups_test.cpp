#include "tools/macho/fixups.h"

#include <algorithm>
#include <cstddef>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"
#include "tools/macho/files.h"

namespace macho::test {
namespace {

// Of every kind: words with local addresses, alone and in long runs; imports in data, twice, and with something added;
// pointers.
const char source[] = "int call(int); extern char number[]; extern int perhaps(void) __attribute__((weak_import));"
                      "static const char *const texts[40] = {\"a\", \"b\", [39] = \"c\"}; const char **alone = 0;"
                      "void *mixed[] = {call, number, number + 12, &mixed[1], number - 3, perhaps, call, 0, texts};"
                      "void *run(int x) { return x ? (void *)texts[x] : (void *)(call(x) + number + (int)perhaps); }"
                      "void *self[200] = {self, self+1, self+2, self+3, self+4, self+5, self+6, self+7, self+8, self+9,"
                      "self+10, self+11, self+12, self+13, self+14, self+15, self+16, self+17, self+18, self+19};";

uint32_t addressOfImport(const DylibBind &bind)
{
    return 0x40000000 + bind.libraryOrdinal * 0x1000000 +
           static_cast<uint32_t>(std::hash<std::string>()(bind.symbol) & 0xffff);
}

uint32_t importAddress(const std::string &name)
{
    return addressOfImport({0, name, 1, false, 0, false});
}

DylibFile library(FixupForm form)
{
    LinkOptions options;
    options.fixups = form;
    return linked(objects(object("a.o", Language::C, source)), {"_run", "_mixed", "_self"}, options);
}

TEST(Fixups, BothFormsGiveTheSameMemory)
{
    DylibFile dylib = library(FixupForm::Both);
    ASSERT_TRUE(dylib.classic.present && dylib.compressed.present);
    for (uint32_t base : {0u, 0x1000u, 0x70000000u, 0xfff00000u})
        EXPECT_EQ(loadedMemory(dylib, dylib.classic, base, addressOfImport),
                  loadedMemory(dylib, dylib.compressed, base, addressOfImport));
    EXPECT_EQ(dylib.classic.rebases, dylib.compressed.rebases);
    EXPECT_EQ(dylib.classic.binds.size(), dylib.compressed.binds.size());
}

// As another reader sees them, which shares nothing with this one.
std::vector<uint32_t> addressesByLLVM(const DylibFile &dylib, const std::string &table)
{
    std::string path = temporaryFolder() + "/fixups.dylib";
    writeText(path, textOf(dylib.bytes));
    std::istringstream lines(runCommand("llvm-objdump-14 --macho --" + table + " " + path).out);
    std::vector<uint32_t> addresses;
    for (std::string line; std::getline(lines, line);)
        if (size_t address = line.find(" 0x"); address != line.npos)
            addresses.push_back(static_cast<uint32_t>(std::stoul(line.substr(address + 1), nullptr, 16)));
    return addresses;
}

TEST(Fixups, LLVMReadsTheSameFromTheCompressedForm)
{
    DylibFile dylib = library(FixupForm::Both);
    std::vector<uint32_t> binds;
    for (const DylibBind &bind : dylib.compressed.binds)
        binds.push_back(bind.address);
    EXPECT_EQ(addressesByLLVM(dylib, "rebase"), dylib.compressed.rebases);
    EXPECT_EQ(addressesByLLVM(dylib, "bind"), binds);
}

TEST(Fixups, WordsHoldWhatTheSourceSays)
{
    DylibFile dylib = library(FixupForm::Both);
    constexpr uint32_t base = 0x20000000;
    Bytes memory = loadedMemory(dylib, dylib.compressed, base, addressOfImport);
    auto word = [&](uint32_t address) { return load32(&memory[address]); };
    uint32_t mixed = addressOf(dylib, "_mixed"), self = addressOf(dylib, "_self");
    uint32_t call = importAddress("_call"), number = importAddress("_number");
    EXPECT_EQ(word(mixed), call);
    EXPECT_EQ(word(mixed + 4), number);
    EXPECT_EQ(word(mixed + 8), number + 12);
    EXPECT_EQ(word(mixed + 12), base + mixed + 4);
    EXPECT_EQ(word(mixed + 16), number - 3);
    EXPECT_EQ(word(mixed + 20), importAddress("_perhaps"));
    EXPECT_EQ(word(mixed + 24), call);
    EXPECT_EQ(word(mixed + 28), 0u);
    uint32_t texts = word(mixed + 32) - base;
    EXPECT_STREQ(reinterpret_cast<char *>(&memory[word(texts + 39 * 4) - base]), "c");
    for (uint32_t index = 0; index < 20; index++)
        EXPECT_EQ(word(self + 4 * index), base + self + 4 * index);
    EXPECT_EQ(word(self + 4 * 20), 0u);
}

uint32_t rebaseCodeSize(const DylibFile &dylib)
{
    uint32_t at = sizeof(format::mach_header);
    while (load32(&dylib.bytes[at]) != format::LC_DYLD_INFO)
        at += load32(&dylib.bytes[at + 4]);
    return load32(&dylib.bytes[at + offsetof(format::dyld_info_command, rebase_size)]);
}

TEST(Fixups, WordsAtOneDistanceTakeOneOperation)
{
    for (const char *record : {"void *word;", "int number; void *word; char rest[200];"}) {
        DylibFile dylib = linked(
            objects(object("a.o", Language::C,
                           std::string("struct { ") + record + " } table[100] = {[0 ... 99] = {.word = table}};")),
            {"_table"});
        EXPECT_EQ(dylib.compressed.rebases.size(), 100u);
        EXPECT_EQ(dylib.compressed.rebases, dylib.classic.rebases);
        EXPECT_LE(rebaseCodeSize(dylib), 12u) << record;
    }
}

TEST(Fixups, WordsAtAnyDistanceAreFound)
{
    std::string words = ".data\n.globl _run\n_run:\n";
    for (uint32_t distance :
         {0, 0, 0, 4, 4, 4, 1, 3, 8, 8, 0, 0, 56, 60, 64, 200, 200, 200, 0, 200, 4, 5000, 0, 12, 0, 12})
        words += ".long _run\n.space " + std::to_string(distance) + "\n";
    for (int count = 0; count < 20; count++) // more than fit into the operation itself
        words += ".long _run\n";
    DylibFile dylib = linked(objects(object("a.o", Language::Assembler, words, "")), {"_run"});
    EXPECT_EQ(dylib.classic.rebases.size(), 46u);
    EXPECT_EQ(dylib.compressed.rebases, dylib.classic.rebases);
}

TEST(Fixups, EachFormCanStandAlone)
{
    DylibFile both = library(FixupForm::Both);
    DylibFile classic = library(FixupForm::Classic), compressed = library(FixupForm::Compressed);
    EXPECT_TRUE(classic.classic.present);
    EXPECT_FALSE(classic.compressed.present);
    EXPECT_FALSE(compressed.classic.present);
    EXPECT_TRUE(compressed.compressed.present);
    EXPECT_EQ(classic.classic.rebases, both.classic.rebases);
    EXPECT_EQ(compressed.compressed.rebases, both.compressed.rebases);
    EXPECT_EQ(compressed.compressed.binds.size(), both.compressed.binds.size());
}

TEST(Fixups, OnlyWithTheClassicFormMayTheCompressedOneBeIgnored)
{
    auto commands = [](FixupForm form) { return library(form).commands; };
    auto has = [](const std::vector<uint32_t> &list, uint32_t command) {
        return std::find(list.begin(), list.end(), command) != list.end();
    };
    EXPECT_TRUE(has(commands(FixupForm::Both), format::LC_DYLD_INFO));
    EXPECT_FALSE(has(commands(FixupForm::Both), format::LC_DYLD_INFO_ONLY));
    EXPECT_TRUE(has(commands(FixupForm::Compressed), format::LC_DYLD_INFO_ONLY));
    EXPECT_FALSE(has(commands(FixupForm::Classic), format::LC_DYLD_INFO));
}

TEST(Fixups, CodeIsNeverAmongThem)
{
    DylibFile dylib = library(FixupForm::Both);
    for (const DylibFixups *fixups : {&dylib.classic, &dylib.compressed}) {
        EXPECT_FALSE(fixups->rebases.empty());
        EXPECT_FALSE(fixups->binds.empty());
        for (uint32_t address : fixups->rebases)
            EXPECT_EQ(dylib.segmentAt(address)->name, "__DATA");
        for (const DylibBind &bind : fixups->binds)
            EXPECT_EQ(dylib.segmentAt(bind.address)->name, "__DATA");
    }
}

TEST(Fixups, MoreThanFifteenLibrariesAreNumberedInTheLongForm)
{
    std::string imports, calls;
    for (int number = 1; number <= 20; number++) {
        std::string name = "f" + std::to_string(number);
        imports += "library /usr/lib/" + name + ".dylib 1.0 1.0\n_" + name + "\n";
        calls += "int " + name + "(void); int (*const p" + name + ")(void) = " + name + ";";
    }
    DylibFile dylib = linked(objects(object("a.o", Language::C, calls + "int run(void) { return 1; }", "-O1")),
                             {"_run"}, {}, imports);
    ASSERT_EQ(dylib.compressed.binds.size(), 20u);
    for (const DylibBind &bind : dylib.compressed.binds)
        EXPECT_EQ("/usr/lib/" + bind.symbol.substr(1) + ".dylib",
                  dylib.libraries[bind.libraryOrdinal - 1].library.installName);
}

} // namespace
} // namespace macho::test
