#include "tools/macho/call_frames.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

// The table of call frames as llvm-objdump reads it.
struct Frames {
    std::map<uint32_t, uint32_t> functions; // by start: the end
    std::set<uint32_t> handlerTables, handlers;
    std::set<uint32_t> commonRecords, usedCommonRecords; // by offset
    size_t records = 0;
};

uint32_t low32(const std::string &digits)
{
    return static_cast<uint32_t>(std::stoull(digits, nullptr, 16));
}

Frames framesOf(const DylibFile &dylib)
{
    std::string path = temporaryFolder() + "/frames.dylib";
    writeText(path, std::string_view(reinterpret_cast<const char *>(dylib.bytes.data()), dylib.bytes.size()));
    Outcome run = runCommand("llvm-objdump-14 --dwarf=frames " + path);
    EXPECT_EQ(run.err, "");
    Frames frames;
    std::istringstream lines(run.out);
    for (std::string line; std::getline(lines, line);) {
        size_t pc = line.find(" pc="), dots = line.find("...");
        if (line.find(" CIE") != line.npos)
            frames.commonRecords.insert(low32(line.substr(0, 8)));
        if (size_t at = line.find(" FDE cie="); at != line.npos) {
            frames.usedCommonRecords.insert(low32(line.substr(at + 9, 8)));
            frames.functions[low32(line.substr(pc + 4, dots - pc - 4))] = low32(line.substr(dots + 3));
            frames.records++;
        } else if (size_t at = line.find("LSDA Address: "); at != line.npos) {
            frames.handlerTables.insert(low32(line.substr(at + 14)));
        } else if (size_t at = line.find("Personality Address: "); at != line.npos) {
            frames.handlers.insert(low32(line.substr(at + 21)));
        }
    }
    return frames;
}

std::set<uint32_t> addressesOf(const DylibFile &dylib, const std::string &prefix)
{
    std::set<uint32_t> addresses;
    for (const DylibSymbol &symbol : dylib.symbols)
        if (!symbol.isImport() && symbol.name.compare(0, prefix.size(), prefix) == 0)
            addresses.insert(symbol.value);
    return addresses;
}

uint32_t pointerTo(const DylibFile &dylib, const std::string &name)
{
    for (const DylibBind &bind : dylib.compressed.binds)
        if (bind.symbol == name)
            return bind.address;
    return 0;
}

const char *const catching[] = {
    "extern \"C\" int call(int); extern \"C\" int one(int x) { try { return call(x); } catch (int) { return 1; } }"
    "extern \"C\" int two(int x) { return call(x) + 1; }",
    "extern \"C\" int call(int); struct G { ~G() { call(0); } }; extern \"C\" int three(int x) { G g; return call(x); }"
    "extern \"C\" int four(int x) { try { return call(x); } catch (...) { return call(9); } }",
    "extern \"C\" int five(int x) { return x; }"};

TEST(CallFrames, OfSeveralObjectsLeadToTheirFunctions)
{
    for (const char *level : {"-O0", "-O2"}) {
        std::string flags = std::string(level) + " -fasynchronous-unwind-tables";
        DylibFile dylib = linked(objects(object("a.o", Language::Cpp, catching[0], flags),
                                         object("b.o", Language::Cpp, catching[1], flags),
                                         object("c.o", Language::Cpp, catching[2], flags)),
                                 {"_one", "_two", "_three", "_four", "_five"});
        Frames frames = framesOf(dylib);
        std::set<uint32_t> starts;
        for (auto [start, end] : frames.functions) {
            starts.insert(start);
            EXPECT_GT(end, start);
            auto next = frames.functions.upper_bound(start);
            if (next != frames.functions.end())
                EXPECT_LE(end, next->first);
        }
        for (const char *name : {"_one", "_two", "_three", "_four", "_five"})
            EXPECT_TRUE(starts.count(addressOf(dylib, name))) << name << level;
        EXPECT_EQ(frames.records, starts.size());
        EXPECT_EQ(frames.handlerTables, addressesOf(dylib, "GCC_except_table"));
        EXPECT_GE(frames.handlerTables.size(), 3u);
        EXPECT_EQ(frames.handlers, std::set<uint32_t>{pointerTo(dylib, "___gxx_personality_v0")});
    }
}

TEST(CallFrames, LieBetweenTheCodeAndAWordOfZeros)
{
    DylibFile dylib =
        linked(objects(object("a.o", Language::Cpp, catching[0]), object("b.o", Language::Cpp, catching[1])), {"_one"});
    const DylibSection &frames = *dylib.section("__TEXT", "__eh_frame");
    for (const DylibSection &section : dylib.sections) {
        if (section.segment == "__TEXT")
            EXPECT_LE(section.address, frames.address) << section.name;
    }
    Bytes memory = loadedMemory(dylib, dylib.classic, 0, [](const DylibBind &) { return 0; });
    EXPECT_EQ(load32(&memory[frames.address + frames.size]), 0u);
    EXPECT_NE(load32(&memory[frames.address + frames.size - 4]) | load32(&memory[frames.address]), 0u);
}

TEST(CallFrames, OfADefinitionThatLostAreLeftOutWithIt)
{
    auto source = [](const char *before, const char *behind) {
        return object(
            before, Language::Cpp,
            "extern \"C\" int call(int); inline int shared(int x) { try { return call(x); } catch (...) { return 0; } }"
            "extern \"C\" int " +
                std::string(before) + "(int x) { return shared(x) + 1; }" +
                "struct Other { int value(int x) { try { return call(x); } catch (...) { return 2; } } };"
                "extern \"C\" int " +
                behind + "(int x) { Other o; return o.value(x) + 2; }",
            "-O0");
    };
    DylibFile one = linked(objects(source("one", "two")), {"_one", "_two"});
    DylibFile both =
        linked(objects(source("one", "two"), source("three", "four")), {"_one", "_two", "_three", "_four"});
    Frames frames = framesOf(both), ofOne = framesOf(one);
    EXPECT_EQ(frames.records, ofOne.records + 2);
    EXPECT_EQ(frames.functions.size(), frames.records);
    for (const char *name : {"_one", "_two", "_three", "_four"})
        EXPECT_TRUE(frames.functions.count(addressOf(both, name))) << name;
    EXPECT_EQ(frames.handlerTables, addressesOf(both, "GCC_except_table"));
    EXPECT_EQ(both.section("__TEXT", "__gcc_except_tab")->size, one.section("__TEXT", "__gcc_except_tab")->size);
}

TEST(CallFrames, BehindOneThatIsLeftOutKeepTheirCommonRecord)
{
    auto function = [](const std::string &name) {
        return ".globl " + name + "\n" + name + ":\n.cfi_startproc\nret\n.cfi_endproc\n";
    };
    auto source = [&](const char *before, const char *behind) {
        return object(before, Language::Assembler,
                      ".text\n.weak_definition _shared\n" + function(before) + function("_shared") + function(behind) +
                          ".subsections_via_symbols\n",
                      "");
    };
    Frames frames = framesOf(
        linked(objects(source("_one", "_two"), source("_three", "_four")), {"_one", "_two", "_three", "_four"}));
    EXPECT_EQ(frames.records, 5u);
    EXPECT_EQ(frames.usedCommonRecords.size(), 2u);
    EXPECT_EQ(frames.usedCommonRecords, frames.commonRecords);
}

// Two objects that may not be cut, as assemblers make them unless they are told otherwise.
TEST(CallFrames, OfACopyThatIsNotUsedStayWithThatCopy)
{
    std::string shared = ".text\n.globl _shared\n.weak_definition _shared\n_shared:\n.cfi_startproc\nret\n"
                         ".cfi_endproc\n";
    DylibFile dylib =
        linked(objects(object("a.o", Language::Assembler, shared + ".globl _one\n_one: call _shared\n", ""),
                       object("b.o", Language::Assembler, shared + ".globl _two\n_two: call _shared\n", "")),
               {"_one", "_two"});
    Frames frames = framesOf(dylib);
    EXPECT_EQ(frames.records, 2u);
    EXPECT_EQ(frames.functions.size(), 2u); // no function is described twice
}

TEST(CallFrames, TerminatorOfOneObjectDoesNotEndTheTable)
{
    const char *source = ".text\n.globl _five\n_five: ret\n.section __TEXT,__eh_frame\n"
                         " .long 16\n .long 0\n .byte 1,'z','R',0,1,124,8,1,0x10,0,0,0\n"
                         " .long 16\n .long 24\n .long _five - .\n .long 1\n .long 0\n"
                         " .long 0\n";
    DylibFile dylib =
        linked(objects(object("a.o", Language::Assembler, source, ""), object("b.o", Language::Cpp, catching[0])),
               {"_five", "_one"});
    Frames frames = framesOf(dylib);
    EXPECT_TRUE(frames.functions.count(addressOf(dylib, "_five")));
    EXPECT_TRUE(frames.functions.count(addressOf(dylib, "_one")));
}

// One object with a table of call frames written by hand.
std::string errorOf(const std::string &table)
{
    return linkError(objects(
        object("a.o", Language::Assembler, ".text\n.globl _run\n_run: ret\n.section __TEXT,__eh_frame\n" + table, "")));
}

TEST(CallFrames, ErrorsNameTheRecord)
{
    std::string where = "a.o: __TEXT,__eh_frame+0x0: call frame record: ";
    EXPECT_EQ(errorOf(".long 100\n.long 0\n"), where + "damaged: it has the impossible length 100");
    EXPECT_EQ(errorOf(".long 2\n.long 0\n"), where + "damaged: it has the impossible length 2");
    EXPECT_EQ(errorOf(".long 8\n.long 77\n.long 0\n"), where + "damaged: the record that it continues does not exist");
    EXPECT_EQ(errorOf(".long 8\n.long 0\n.byte 7,0,1,1\n"), where + "version 7 is not supported");
    EXPECT_EQ(errorOf(".long 12\n.long 0\n.byte 1,'e','h',0,1,1,8,0\n"),
              where + "augmentation \"eh\" is not supported");
    EXPECT_EQ(errorOf(".long 16\n.long 0\n.byte 1,'z','Q',0,1,124,8,0,0,0,0,0\n"),
              where + "augmentation \"zQ\" is not supported");
    EXPECT_EQ(errorOf(".long 16\n.long 0\n.byte 1,'z','P',0,1,124,8,5,0,0,0,0\n"),
              where + "pointer encoding 0x0 is not supported");
    EXPECT_EQ(errorOf(".long 8\n.long 0\n.byte 1,'z','R',0\n.long 0x10\n.long 0\n"),
              where + "damaged: its fields reach past its end");
    EXPECT_EQ(errorOf(".long 16\n.long 0\n.byte 1,'z','R',0,1,124,8,1,0x10,0,0,0\n.long 16\n.long 24\n.long "
                      "0x7000\n.long 1\n.long 0\n"),
              "a.o: __TEXT,__eh_frame+0x1c: damaged: a reference to 0x701d, which no section contains");
    EXPECT_EQ(errorOf(".long 16\n.long 0\n.byte 1,'z','L',0,1,124,8,1,0x10,0,0,0\n.long 16\n.long 24\n.long 0\n.long "
                      "1\n.long 0\n"),
              "a.o: __TEXT,__eh_frame+0x14: call frame record: pointer encoding 0x0 is not supported");
    EXPECT_EQ(
        errorOf(".long 20\n.long 0\n.byte 1,'z','L','R',0,1,124,8,2,0x10,0x10,0,0,0,0,0\n.long 16\n.long 28\n.long "
                "_run - .\n.long 1\n.long 0\n"),
        "a.o: __TEXT,__eh_frame+0x18: call frame record: damaged: it has no room for its handler table");
    EXPECT_EQ(errorOf(".long _run\n"), where + "a text relocation would be needed");
}

} // namespace
} // namespace macho::test
