#include "tools/macho/options.h"

#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho {
namespace {

std::vector<std::string> withUsual(std::vector<std::string> more)
{
    std::vector<std::string> all = {"-o", "out/x.dylib", "-symbols", "t.txt", "a.o"};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

std::string errorOf(const std::vector<std::string> &arguments)
{
    return test::failureOf([&] { parseCommandLine(arguments); });
}

TEST(Options, HaveDefaults)
{
    auto line = parseCommandLine(withUsual({}));
    EXPECT_EQ(line.output, "out/x.dylib");
    EXPECT_EQ(line.link.installName, "x.dylib");
    EXPECT_EQ(line.link.currentVersion, 0x10000u);
    EXPECT_EQ(line.link.minimumSystem, 0xa0400u);
    EXPECT_EQ(line.link.fixups, FixupForm::Both);
    EXPECT_FALSE(line.link.strip);
    EXPECT_EQ(line.objects, std::vector<std::string>{"a.o"});
}

TEST(Options, AreRead)
{
    auto line = parseCommandLine(withUsual({"b.o",      "-export",
                                            "_one",     "-export",
                                            "_two",     "-exported_symbols_list",
                                            "list",     "-install_name",
                                            "@rpath/n", "-current_version",
                                            "3.2.1",    "-compatibility_version",
                                            "2",        "-macosx_version_min",
                                            "10.5",     "-fixups",
                                            "classic",  "-strip",
                                            "-map",     "m"}));
    const LinkOptions &link = line.link;
    EXPECT_EQ(link.exports, (std::vector<std::string>{"_one", "_two"}));
    EXPECT_EQ(line.exportLists, std::vector<std::string>{"list"});
    EXPECT_EQ(link.installName, "@rpath/n");
    EXPECT_EQ(link.currentVersion, 0x30201u);
    EXPECT_EQ(link.compatibilityVersion, 0x20000u);
    EXPECT_EQ(link.minimumSystem, 0xa0500u);
    EXPECT_EQ(link.fixups, FixupForm::Classic);
    EXPECT_TRUE(link.strip);
    EXPECT_EQ(line.map, "m");
    EXPECT_EQ(line.objects, (std::vector<std::string>{"a.o", "b.o"}));
}

TEST(Options, CompatibilityVersionFollowsFromTheVersion)
{
    auto line = parseCommandLine(withUsual({"-current_version", "0.3.7"}));
    EXPECT_EQ(line.link.compatibilityVersion, 0x300u);
}

TEST(Options, CompressedFixupsAloneNeedALaterSystem)
{
    auto line = parseCommandLine(withUsual({"-fixups", "compressed"}));
    EXPECT_EQ(line.link.minimumSystem, 0xa0600u);
    EXPECT_EQ(errorOf(withUsual({"-fixups", "compressed", "-macosx_version_min", "10.5"})),
              "systems before 10.6 cannot read compressed fix-ups: -fixups both serves them, and newer ones too");
}

TEST(Options, ErrorsAreOneLine)
{
    EXPECT_EQ(errorOf({}), "option -o is missing");
    EXPECT_EQ(errorOf({"-o", "x"}), "option -symbols is missing");
    EXPECT_EQ(errorOf({"-o", "x", "-symbols", "t"}), "no object files to link");
    EXPECT_EQ(errorOf({"-o"}), "option -o needs a value");
    EXPECT_EQ(errorOf({"-o", "x", "-symbols", "t", "x"}), "x: the output would overwrite an object file");
    EXPECT_EQ(errorOf(withUsual({"-lazy"})), "unknown option -lazy; -help shows them all");
    EXPECT_EQ(errorOf(withUsual({"-fixups", "some"})), "option -fixups: some is none of classic, compressed and both");
    EXPECT_EQ(errorOf(withUsual({"-current_version", "x"})),
              "option -current_version: x is not a version: X, X.Y or X.Y.Z is expected");
    EXPECT_EQ(errorOf(withUsual({"-macosx_version_min", "10.3"})), "systems before 10.4 are not supported");
}

TEST(Options, ExportListHasOneNamePerLine)
{
    EXPECT_EQ(parseExportList("# all\n_one\n  _two # why\r\n\n_three"),
              (std::vector<std::string>{"_one", "_two", "_three"}));
}

} // namespace
} // namespace macho
