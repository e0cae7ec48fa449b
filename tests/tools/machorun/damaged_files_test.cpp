// Files that are no libraries, or no longer: each gets one line, and none takes the process down.
#include "tests/tools/machorun/loaded_image.h"
#include "tools/macho/files.h"
#include "tools/machorun/bad_image.h"
#include "tools/machorun/imports.h"
#include "tools/machorun/loadable_file.h"
#include "tools/machorun/objc_sections.h"
#include "tools/machorun/unwind_tables.h"

#include <gmock/gmock.h>
#include <random>

using namespace machorun;
using namespace macho::format;
using macho::Bytes;
using macho::readFile;
using testing::HasSubstr;

namespace {

// The loader's work on a file up to the point where code of the image would run. What it finds wrong, or "".
std::string problemWith(const Bytes &bytes)
{
    std::string problem;
    try {
        macho::DylibFile file = LoadableFile("it", bytes);
        MappedImage image(file);
        for (const macho::DylibFixups *fixups : {&file.classic, &file.compressed})
            image.fill(*fixups, ImportsWithout({}));
        TranslatedUnwindTables(file, image);
        FixObjectiveCReferences(file, image);
        image.protect();
        return "";
    } catch (const BadImage &reason) {
        problem = reason.what();
    } catch (const macho::Failure &reason) {
        problem = reason.what();
    }
    EXPECT_THAT(problem, testing::Not(HasSubstr("\n")));
    return problem;
}

class DamagedFiles : public ::testing::Test {
protected:
    void putWord(size_t offset, uint32_t word) { std::memcpy(&good[offset], &word, sizeof word); }
    uint32_t wordAt(size_t offset) const
    {
        uint32_t word;
        std::memcpy(&word, &good[offset], sizeof word);
        return word;
    }
    // Where the load command of that kind begins.
    size_t commandAt(uint32_t kind) const
    {
        size_t offset = sizeof(mach_header);
        for (uint32_t left = wordAt(16); left; left--, offset += wordAt(offset + 4)) {
            if (wordAt(offset) == kind)
                return offset;
        }
        ADD_FAILURE() << "no load command " << kind;
        return 0;
    }

    Bytes good = readFile(PRODUCT_DYLIB);
};

} // namespace

TEST_F(DamagedFiles, UndamagedFileHasNoProblem)
{
    EXPECT_EQ(problemWith(good), "");
}

TEST_F(DamagedFiles, OtherKindsOfFilesAreTold)
{
    EXPECT_EQ(problemWith({}), "it: is not a 32-bit Mach-O file");
    EXPECT_EQ(problemWith(readFile("/proc/self/exe")), "it: is not a 32-bit Mach-O file");
    putWord(0, FAT_CIGAM);
    EXPECT_EQ(problemWith(good), "it: is a universal file: take its i386 part out first");
}

TEST_F(DamagedFiles, OtherProcessorsAndFileTypesAreTold)
{
    putWord(4, 18);
    EXPECT_EQ(problemWith(good), "is not made for 32-bit Intel processors");
    putWord(4, CPU_TYPE_I386);
    putWord(12, 1);
    EXPECT_EQ(problemWith(good), "is a Mach-O file, but not a dynamic library");
}

TEST_F(DamagedFiles, MissingFileIsTold)
{
    std::string error;
    EXPECT_EQ(Load("/no/such/file.dylib", error), nullptr);
    EXPECT_EQ(error, "/no/such/file.dylib: cannot be opened: No such file or directory");
    EXPECT_EQ(Load("/tmp", error), nullptr);
    EXPECT_EQ(error, "/tmp: cannot be read: Is a directory");
}

TEST_F(DamagedFiles, UnknownRequiredLoadCommandIsTold)
{
    putWord(commandAt(LC_UUID), 0x80000055);
    EXPECT_EQ(problemWith(good), "has a load command that must be understood and is not: 0x80000055");
}

TEST_F(DamagedFiles, LoadCommandWithoutASizeIsTold)
{
    putWord(commandAt(LC_SYMTAB) + 4, 0);
    EXPECT_EQ(problemWith(good), "it: load command 6 has the impossible size 0");
}

TEST_F(DamagedFiles, SegmentBeyondTheFileIsTold)
{
    putWord(commandAt(LC_SEGMENT) + offsetof(segment_command, filesize), 0x7fffffff);
    EXPECT_EQ(problemWith(good), "it: the file is cut off or damaged: a segment reaches past its end");
}

TEST_F(DamagedFiles, WritableTextIsRefused)
{
    putWord(commandAt(LC_SEGMENT) + offsetof(segment_command, initprot), 7);
    EXPECT_EQ(problemWith(good), "has a segment that is both writable and executable: __TEXT");
}

TEST_F(DamagedFiles, FixupInTheTextIsRefused)
{
    size_t table = wordAt(commandAt(LC_DYSYMTAB) + offsetof(dysymtab_command, locreloff));
    putWord(table, 0x1000);
    EXPECT_THAT(problemWith(good), HasSubstr("needs a fix-up outside its writable segments"));
}

TEST_F(DamagedFiles, EveryTruncationIsTold)
{
    for (size_t size = 0; size < good.size(); size += size < 4096 ? 1 : 509) {
        Bytes shortened(good.begin(), good.begin() + size);
        EXPECT_NE(problemWith(shortened), "") << "of " << size << " bytes";
    }
}

// Not every changed byte makes a file unusable; none may make the loader read or write where it should not.
TEST_F(DamagedFiles, NoChangedByteOfTheTablesCrashesTheLoader)
{
    std::mt19937 random(1);
    size_t tables = wordAt(commandAt(LC_DYLD_INFO) + offsetof(dyld_info_command, rebase_off));
    size_t commands = sizeof(mach_header) + wordAt(20);
    int refused = 0;
    for (int round = 0; round < 3000; round++) {
        Bytes changed = good;
        for (int count = 1 + random() % 4; count; count--) {
            size_t place = random() % 2 ? random() % commands : tables + random() % (good.size() - tables);
            changed[place] = random();
        }
        refused += problemWith(changed) != "";
    }
    EXPECT_GT(refused, 300);
}

TEST_F(DamagedFiles, NoChangedByteOfTheContentsCrashesTheLoader)
{
    std::mt19937 random(2);
    macho::DylibFile file = LoadableFile("it", good);
    std::vector<const macho::DylibSection *> sections;
    for (const char *name : {"__eh_frame", "__cfstring", "__message_refs", "__cls_refs", "__cstring"}) {
        for (const macho::DylibSection &section : file.sections) {
            if (section.name == name)
                sections.push_back(&section);
        }
    }
    ASSERT_EQ(sections.size(), 5u);
    int refused = 0;
    for (int round = 0; round < 2000; round++) {
        Bytes changed = good;
        const macho::DylibSection &section = *sections[random() % sections.size()];
        changed[section.address + random() % section.size] = random(); // the file is laid out as memory is
        refused += problemWith(changed) != "";
    }
    EXPECT_GT(refused, 300);
}
