// The two programs as a build calls them: exit status, what they print, what they leave behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "tests/tools/macho/compiled_object.h"

namespace macho::test {
namespace {

using namespace format;

class Programs : public testing::Test {
protected:
    Programs()
    {
        Bytes bytes =
            compile(Language::C,
                    "int call(int); int perhaps(void); int run(int x) { return call(x) + perhaps(); }"
                    "const char *const texts[] = {\"a\", \"b\", \"c\"}; void *table[] = {&table, call, &table[1]};");
        writeText(input, textOf(bytes));
        writeText(table, usualImports);
    }
    Outcome linker(const std::string &arguments) { return runCommand(MACHO_LD " " + arguments); }
    Outcome linkUsually(const std::string &more = "")
    {
        return linker("-o " + output + " -symbols " + table + " -export _run " + input + " " + more);
    }
    Outcome check(const std::string &more = "")
    {
        return runCommand(CHECK_DYLIB " -symbols " + table + " -export _run " + output + " " + more);
    }
    template <class Change>
    void expectNoticed(const std::string &failure, Change change);
    std::string folder = temporaryFolder(), input = folder + "/in.o", table = folder + "/table.txt",
                output = folder + "/out.dylib";
};

TEST_F(Programs, LinkerIsSilentAndItsLibraryPassesTheCheck)
{
    for (const char *form : {"both", "classic", "compressed"}) {
        Outcome link = linkUsually(std::string("-strip -map ") + folder + "/map -fixups " + form);
        EXPECT_EQ(link.status, 0);
        EXPECT_EQ(link.out + link.err, "");
        Outcome checked = check();
        EXPECT_EQ(checked.status, 0) << checked.out << checked.err;
        EXPECT_EQ(checked.out.find("FAILED"), checked.out.npos) << checked.out;
        EXPECT_EQ(checked.err, "");
        EXPECT_NE(checked.out.find(std::to_string(std::filesystem::file_size(output)) + " bytes"), checked.out.npos);
    }
    EXPECT_FALSE(readFile(folder + "/map").empty());
}

TEST_F(Programs, IndependentToolsReadTheLibraryWithoutAWord)
{
    ASSERT_EQ(linkUsually().status, 0);
    for (const char *tool : {"llvm-objdump-14 --macho --private-headers --disassemble --rebase --bind --exports-trie ",
                             "llvm-objdump-14 --section-headers --syms --reloc --dwarf=frames ",
                             "llvm-readobj-14 --file-headers --sections --symbols --relocations --needed-libs ",
                             "llvm-nm-14 -m ", "llvm-otool-14 -l -L -D -I -v -t ", "llvm-size-14 -m ",
                             "llvm-dwarfdump-14 --eh-frame ", "llvm-objdump-14 --macho --function-starts "}) {
        Outcome run = runCommand(tool + output);
        EXPECT_EQ(run.status, 0) << tool;
        EXPECT_EQ(run.err, "") << tool;
        EXPECT_NE(run.out, "") << tool;
    }
    EXPECT_NE(runCommand("llvm-nm-14 -m " + output).out.find("(undefined) weak external _perhaps (from libfirst)"),
              std::string::npos);
    EXPECT_NE(runCommand("llvm-objdump-14 --macho --exports-trie " + output).out.find("_run"), std::string::npos);
}

TEST_F(Programs, MapBearsTheIdentifierOfItsLibrary)
{
    ASSERT_EQ(linkUsually("-map " + folder + "/map").status, 0);
    Bytes map = readFile(folder + "/map");
    std::string first(map.begin(), std::find(map.begin(), map.end(), '\n')), name = "# Identifier: ";
    EXPECT_EQ(first.substr(0, name.size()), name);
    EXPECT_NE(runCommand("llvm-otool-14 -l " + output).out.find("uuid " + first.substr(name.size()) + "\n"),
              std::string::npos)
        << first;
}

TEST_F(Programs, TwoLinksAreTheSameByteForByte)
{
    ASSERT_EQ(linkUsually().status, 0);
    Bytes first = readFile(output);
    std::filesystem::rename(output, folder + "/first.dylib");
    ASSERT_EQ(linkUsually().status, 0);
    EXPECT_EQ(readFile(output), first);
}

TEST_F(Programs, FailedLinkLeavesNothingBehind)
{
    std::string map = folder + "/out.map";
    ASSERT_EQ(linkUsually("-map " + map).status, 0);
    ASSERT_TRUE(std::filesystem::exists(map));
    ASSERT_TRUE(std::filesystem::exists(output));
    Outcome failed = linkUsually("-export _missing -map " + map);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.out, "");
    EXPECT_EQ(failed.err, "macho_ld: exported symbol _missing is not defined in any object\n");
    EXPECT_FALSE(std::filesystem::exists(output));
    EXPECT_FALSE(std::filesystem::exists(map));
}

TEST_F(Programs, LinkerErrorsAreOneLineAndStatusOne)
{
    writeText(folder + "/text.o", "no object");
    writeText(folder + "/empty.list", "# nothing\n");
    std::string usual = "-o " + output + " -symbols " + table + " ";
    const std::pair<std::string, std::string> cases[] = {
        {"", "option -o is missing"},
        {usual + folder + "/text.o", folder + "/text.o: is not a Mach-O object file"},
        {usual + folder + "/absent.o", folder + "/absent.o: cannot be opened: No such file or directory"},
        {usual + folder, folder + ": cannot be read: Is a directory"},
        {"-o " + output + " -symbols " + folder + "/absent.txt " + input,
         folder + "/absent.txt: cannot be opened: No such file or directory"},
        {usual + input + " -exported_symbols_list " + folder + "/empty.list",
         folder + "/empty.list: the list of exports is empty"},
        {"-o " + folder + "/absent/x.dylib -symbols " + table + " " + input,
         folder + "/absent/x.dylib: cannot be written: No such file or directory"},
    };
    for (const auto &[arguments, message] : cases) {
        Outcome run = linker(arguments);
        EXPECT_EQ(run.status, 1) << arguments;
        EXPECT_EQ(run.err, "macho_ld: " + message + "\n");
        EXPECT_EQ(run.out, "");
        EXPECT_FALSE(std::filesystem::exists(output)) << arguments;
    }
}

TEST_F(Programs, ExportListsAreRead)
{
    writeText(folder + "/exports", "# the entry\n_run\n");
    EXPECT_EQ(
        linker("-o " + output + " -symbols " + table + " -exported_symbols_list " + folder + "/exports " + input).err,
        "");
    EXPECT_EQ(check().status, 0);
}

TEST_F(Programs, HelpNamesEveryOption)
{
    Outcome help = linker("-help");
    EXPECT_EQ(help.status, 0);
    for (const char *option :
         {"-o", "-symbols", "-export", "-exported_symbols_list", "-install_name", "-current_version",
          "-compatibility_version", "-macosx_version_min", "-fixups", "-strip", "-map"})
        EXPECT_NE(help.out.find(std::string("  ") + option + " "), help.out.npos) << option;
}

// Each check fails for a library that lacks what it asks for.
TEST_F(Programs, CheckNoticesASecondExport)
{
    ASSERT_EQ(linkUsually("-export _texts").status, 0);
    Outcome run = check();
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.out.find("FAILED  one export, _run: there is more: _texts\n"), run.out.npos) << run.out;
}

TEST_F(Programs, CheckNoticesImportsThatTheTableDoesNotAllow)
{
    ASSERT_EQ(linkUsually().status, 0);
    auto outcome = [&](const char *imports) {
        writeText(table, imports);
        Outcome run = check();
        EXPECT_EQ(run.status, 1);
        return run.out;
    };
    EXPECT_NE(outcome("library /usr/lib/libfirst.dylib 2.0 1.0\n_call\n").find("_perhaps is not in the table"),
              std::string::npos);
    EXPECT_NE(outcome("library /usr/lib/other.dylib 2.0 1.0\n_call\n_perhaps weak\n")
                  .find("_call comes from /usr/lib/libfirst.dylib instead of /usr/lib/other.dylib"),
              std::string::npos);
    EXPECT_NE(outcome("library /usr/lib/libfirst.dylib 2.0 2.0\n_call\n_perhaps weak\n")
                  .find("/usr/lib/libfirst.dylib is needed in version 1.0.0"),
              std::string::npos);
    EXPECT_NE(outcome("library /usr/lib/libfirst.dylib 2.0 1.0\n_call weak\n_perhaps weak\n")
                  .find("_call may be missing, but is imported as if it could not"),
              std::string::npos);
}

// The check of a library whose bytes `change` has changed.
template <class Change>
void Programs::expectNoticed(const std::string &failure, Change change)
{
    ASSERT_EQ(linkUsually().status, 0);
    Bytes bytes = readFile(output);
    change(bytes);
    writeText(output, textOf(bytes));
    Outcome run = check();
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.out.find("FAILED  " + failure), run.out.npos) << run.out << run.err;
}

// Where the load command of that kind begins; of segments, the one of that name.
uint32_t commandAt(const Bytes &bytes, uint32_t command, std::string_view segment = {})
{
    uint32_t at = sizeof(mach_header);
    while (load32(&bytes[at]) != command ||
           (!segment.empty() && reinterpret_cast<const char *>(&bytes[at + 8]) != segment))
        at += load32(&bytes[at + 4]);
    return at;
}

void add(Bytes &bytes, uint32_t at, uint32_t number)
{
    store32(&bytes[at], load32(&bytes[at]) + number);
}

TEST_F(Programs, CheckNoticesCodeThatWouldBeChanged)
{
    expectNoticed("no code is changed when it is loaded: the word at ", [](Bytes &bytes) {
        store32(&bytes[commandAt(bytes, LC_SEGMENT, "__DATA") + offsetof(segment_command, initprot)], VM_PROT_READ);
    });
}

TEST_F(Programs, CheckNoticesFixupsThatDisagree)
{
    expectNoticed("both forms of fix-ups give the same memory: they do not\n", [](Bytes &bytes) {
        add(bytes, commandAt(bytes, LC_DYSYMTAB) + offsetof(dysymtab_command, nlocrel), -1u);
    });
}

TEST_F(Programs, CheckNoticesALoadCommandThatEarlySystemsRefuse)
{
    expectNoticed("load commands that systems from 10.4.0 on accept: command 0x80000022 is newer\n",
                  [](Bytes &bytes) { store32(&bytes[commandAt(bytes, LC_DYLD_INFO)], LC_DYLD_INFO_ONLY); });
}

TEST_F(Programs, CheckNoticesAVersionThatClaimsTooMuch)
{
    for (uint32_t command : {LC_ID_DYLIB, LC_LOAD_DYLIB})
        expectNoticed("no library claims to be compatible with more than it is: ", [command](Bytes &bytes) {
            add(bytes, commandAt(bytes, command) + offsetof(dylib_command, compatibility_version), 0x20000);
        });
}

TEST_F(Programs, CheckNoticesTooLittleRoomForLoadCommands)
{
    expectNoticed("room for 1024 bytes of further load commands: there is room for ", [](Bytes &bytes) {
        uint32_t room = parseDylib("x", bytes).commandRoom;
        add(bytes, commandAt(bytes, LC_LOAD_DYLIB) + offsetof(load_command, cmdsize), room - 1020);
        add(bytes, offsetof(mach_header, sizeofcmds), room - 1020);
    });
}

TEST_F(Programs, CheckNoticesALiteralThatIsThereTwice)
{
    expectNoticed("every literal and reference is there once: __cstring repeats itself at ", [](Bytes &bytes) {
        const char texts[] = "a\0b\0c";
        auto found = std::search(bytes.begin(), bytes.end(), texts, texts + sizeof texts);
        ASSERT_NE(found, bytes.end());
        found[2] = 'a';
    });
}

TEST_F(Programs, CheckNoticesRelocationsOutOfOrderOrForOneWord)
{
    const char *what = "relocations are in order, and each is for a word of its own: ";
    auto local = [](const Bytes &bytes) {
        return load32(&bytes[commandAt(bytes, LC_DYSYMTAB) + offsetof(dysymtab_command, locreloff)]);
    };
    expectNoticed(std::string(what) + "they are not in order", [&](Bytes &bytes) {
        auto first = bytes.begin() + local(bytes), second = first + sizeof(relocation_info);
        std::swap_ranges(first, second, second);
    });
    expectNoticed(std::string(what) + "the word at ", [&](Bytes &bytes) {
        auto first = bytes.begin() + local(bytes), second = first + sizeof(relocation_info);
        std::copy(first, second, second);
    });
}

TEST_F(Programs, CheckNoticesAnImportThatIsTheFirstSymbol)
{
    expectNoticed("no import is the first symbol, which an early loader misreads: one is", [](Bytes &bytes) {
        store32(&bytes[load32(&bytes[commandAt(bytes, LC_DYSYMTAB) + offsetof(dysymtab_command, indirectsymoff)])], 0);
    });
}

TEST_F(Programs, CheckNoticesToolsThatComplain)
{
    ASSERT_EQ(linkUsually().status, 0);
    Outcome run = check("-llvm-suffix -absent");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.out.find("FAILED  llvm-nm-absent reads it: "), run.out.npos) << run.out;
}

TEST_F(Programs, CheckOfDamagedOrMissingFilesIsOneLine)
{
    writeText(output, "no library");
    Outcome run = check();
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "check_dylib: " + output + ": is not a 32-bit Mach-O file\n");
    std::filesystem::remove(output);
    EXPECT_EQ(check().err, "check_dylib: " + output + ": cannot be opened: No such file or directory\n");
}

TEST(ImportTableOfTheProduct, IsReadAndMarksWhatEarlySystemsLackAsWeak)
{
    Bytes text = readFile(IMPORT_TABLE);
    auto table = parseImportTable("symbols.txt", textOf(text));
    for (const char *name : {"_CFErrorGetTypeID", "_CTFontGetTypeID", "_CTRunDelegateGetTypeID"}) {
        ASSERT_NE(table.find(name), nullptr) << name;
        EXPECT_TRUE(table.find(name)->weak) << name;
    }
    ASSERT_NE(table.find("_objc_msgSend"), nullptr);
    EXPECT_FALSE(table.find("_objc_msgSend")->weak);
}

} // namespace
} // namespace macho::test
