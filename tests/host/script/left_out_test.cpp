// What the language leaves out is said by name, and named in the page about it.
#include <fstream>
#include <sstream>

#include "host/script/left_out.h"
#include "tests/host/script/program.h"

using LeftOut = script_test::Programs;

static std::string page()
{
    std::ifstream file(SCRIPT_PAGE);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST_F(LeftOut, IsNamedInThePage)
{
    std::string text = page();
    size_t start = text.find("## What the language leaves out");
    ASSERT_NE(start, std::string::npos);
    text = text.substr(start, text.find("\n## ", start + 1) - start);
    for (const script::LeftOut &row : script::leftOut()) {
        std::istringstream words(row.words);
        for (std::string word; words >> word;)
            EXPECT_NE(text.find("`" + word + "`"), std::string::npos) << word;
        EXPECT_NE(text.find(row.what), std::string::npos) << row.what;
        EXPECT_NE(text.find(row.instead), std::string::npos) << row.instead;
    }
}

TEST_F(LeftOut, IsSaidByName)
{
    expectErrors({
        {"Static n As Integer",
         "p:1:1: Static variables are not part of this language here; a variable of the program keeps its value\n"
         "Static n As Integer\n^~~~~~\n"},
        {"Module Prefs\nEnd Module",
         "p:1:1: Modules are not part of this language here; Sub, Function, Const and Enum can "
         "stand alone\nModule Prefs\n^~~~~~\n"},
        {"Class C\nShared Sub S\nEnd Sub\nEnd Class", "p:2:1: Shared members of the program's own classes are not part "
                                                      "of this language here\nShared Sub S\n^~~~~~\n"},
        {"Sub S(ParamArray a As Integer)\nEnd Sub",
         "p:1:7: Parameters that take any number of arguments are not part of this language here; pass an array\n"
         "Sub S(ParamArray a As Integer)\n      ^~~~~~~~~~\n"},
        {"Dim n As Integer\nn += 1",
         "p:2:3: \"+=\" is not part of this language here; write n = n + 1\nn += 1\n  ^~\n"},
        {"Dim d As New Dictionary(\"a\" : 1)", "p:1:29: Pairs, and several statements on a line, are not part of this "
                                               "language here\nDim d As New Dictionary(\"a\" : 1)\n"
                                               "                            ^\n"},
        {"Print \"a\" : Print \"b\"",
         "p:1:11: Pairs, and several statements on a line, are not part of this language here\n"
         "Print \"a\" : Print \"b\"\n          ^\n"},
        {"Dim s As TextOutputStream",
         "p:1:10: \"TextOutputStream\" is not part of this language here\nDim s As TextOutputStream\n         "
         "^~~~~~~~~~~~~~~~\n"},
        {"Dim o As Object\no = New Timer",
         "p:2:9: \"Timer\" is not part of this language here\no = New Timer\n        ^~~~~\n"},
        {"Print Encodings.UTF8.internetName",
         "p:1:7: Encodings of texts are not part of this language here; texts are UTF-8 here\n"
         "Print Encodings.UTF8.internetName\n      ^~~~~~~~~\n"},
        {"Print DefineEncoding(\"a\", 1)",
         "p:1:7: Encodings of texts are not part of this language here; texts are UTF-8 here\n"
         "Print DefineEncoding(\"a\", 1)\n      ^~~~~~~~~~~~~~\n"},
        {"Dim a(1, 2) As Integer",
         "p:1:8: arrays of more than one dimension are not part of this language here\nDim a(1, 2) As Integer\n"
         "       ^\n"},
    });
}

TEST_F(LeftOut, IsNoMatterForNamesOfTheProgram)
{
    expectOutputs({
        {"Dim event As Integer = 2\nevent = event + 1\nPrint Str(event)", "3\n"},
        {"Class Timer\nDim N As Integer = 4\nEnd Class\nDim t As New Timer\nPrint Str(t.N)", "4\n"},
    });
}
