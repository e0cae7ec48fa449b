#include "tools/macho/import_table.h"

#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"

namespace macho {
namespace {

std::string errorOf(std::string_view text)
{
    return test::failureOf([&] { parseImportTable("t.txt", text); });
}

TEST(ImportTable, HoldsLibrariesAndTheirSymbols)
{
    auto table = parseImportTable("t.txt", "# head\nlibrary /usr/lib/a.dylib 1.2.3 1.0 # note\n_one\n\t_two weak\r\n\n"
                                           "library /usr/lib/b.dylib 2 2\n_three");
    ASSERT_EQ(table.libraries.size(), 2u);
    EXPECT_EQ(table.libraries[0].installName, "/usr/lib/a.dylib");
    EXPECT_EQ(table.libraries[0].currentVersion, 0x10203u);
    EXPECT_EQ(table.libraries[0].compatibilityVersion, 0x10000u);
    ASSERT_NE(table.find("_two"), nullptr);
    EXPECT_TRUE(table.find("_two")->weak);
    EXPECT_FALSE(table.find("_one")->weak);
    EXPECT_EQ(table.find("_three")->library, 1u);
    EXPECT_EQ(table.find("_four"), nullptr);
}

TEST(ImportTable, ErrorsNameTheLine)
{
    EXPECT_EQ(errorOf("_early\n"), "t.txt:1: symbol _early stands before the first library");
    EXPECT_EQ(errorOf("library a 1\n"),
              "t.txt:1: expected: library INSTALL_NAME CURRENT_VERSION COMPATIBILITY_VERSION");
    EXPECT_EQ(errorOf("library a 1 x\n"),
              "t.txt:1: expected: library INSTALL_NAME CURRENT_VERSION COMPATIBILITY_VERSION");
    EXPECT_EQ(errorOf("library a 1.2 1.3\n"),
              "t.txt:1: compatibility version 1.3.0 is above the current version 1.2.0");
    EXPECT_EQ(errorOf("library a 1 1\n_one\n_one\n"), "t.txt:3: symbol _one is listed twice");
    EXPECT_EQ(errorOf("library a 1 1\n\n_one strong\n"), "t.txt:3: expected: SYMBOL or SYMBOL weak");
}

} // namespace
} // namespace macho
