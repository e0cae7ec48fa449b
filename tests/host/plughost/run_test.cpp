// plughost run, and plughost without a command.
#include <gtest/gtest.h>

#include "tests/host/plughost/program.h"

using namespace plughost_test;

static const std::string kCounting = "Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults\n"
                                     "d.integerForKey(\"Runs\") = d.integerForKey(\"Runs\") + 1\n"
                                     "Print Str(d.integerForKey(\"Runs\"))\nCall d.synchronize\n";

TEST(Run, ExecutesAProgramInTheApplicationsDomain)
{
    std::string file = temporaryFile("counting.xojo_script", kCounting);
    EXPECT_EQ(printed({"run", file, "--check-handles"}), "1");
    EXPECT_EQ(printed({"run", file}), "2");
    EXPECT_EQ(printed({"run", file, "--domain", "Another"}), "1");
    EXPECT_EQ(printed({"get", "integer", "Runs"}), "2");
}

TEST(Run, ReadsStandardInput)
{
    Result result = plughost({"run", "-"}, "Print \"from \" + \"input\"\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "from input\n");
    EXPECT_EQ(plughost({"run", "-"}, "Print 5").errors,
              "standard input:1:7: what is printed must be a String, not an Integer\nPrint 5\n      ^\n");
}

TEST(Run, AddsTheSuitesAndRegisteredDefaultsOfTheCommandLine)
{
    std::string file = temporaryFile("columns.xojo_script",
                                     "Print NSUserDefaultsKTZ.standardUserDefaults.stringForKey(\"Columns\")\n");
    EXPECT_EQ(printed({"run", file}), "");
    EXPECT_EQ(printed({"run", file, "--register", temporaryFile("defaults.json", "{\"Columns\": \"80\"}")}), "80");
}

TEST(Run, SaysOfAClassOfTheFamilyThatItsLibraryIsNotLoaded)
{
    std::string file = temporaryFile("catch.xojo_script", "Try\nCatch e As NSExceptionKTZ\nEnd Try\n");
    EXPECT_EQ(plughost({"run", file}).status, 0);
    EXPECT_EQ(
        plughost({"run", file, "--no-family"}).errors,
        file + ":2:12: there is no class \"NSExceptionKTZ\"; it belongs to a library of the plug-in's family that is "
               "not loaded\nCatch e As NSExceptionKTZ\n           ^~~~~~~~~~~~~~\n");
    file = temporaryFile("dim.xojo_script", "Dim e As NSExceptionKTZ\n");
    EXPECT_NE(plughost({"run", file, "--no-family"}).errors.find("is not loaded"), std::string::npos);
}

TEST(Run, WritesWhatTheProgramSetAtItsEnd)
{
    EXPECT_EQ(plughost({"run", "-"}, "NSUserDefaultsKTZ.standardUserDefaults.integerForKey(\"cd\") = 9\n").status, 0);
    EXPECT_EQ(printed({"get", "integer", "cd"}), "9");
    Result ended = plughost({"run", "-"}, "NSUserDefaultsKTZ.standardUserDefaults.integerForKey(\"cd\") = 10\n"
                                          "Raise New RuntimeException\n");
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(printed({"get", "integer", "cd"}), "9") << "that was no normal end";
}

TEST(Run, SaysThatSomethingContainsItselfAndKeepsWhatWasPrinted)
{
    for (const char *container : {"Dim c As New Dictionary\nc.Value(\"c\") = c\nd.dictionaryForKey(\"D\") = c\n",
                                  "Dim c() As Variant\nc.Append(c)\nd.setArrayValue(\"D\", c)\n"}) {
        Result result = plughost({"run", "-"}, "Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults\n"
                                               "Print \"before\"\n" +
                                                   std::string(container));
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "before\n");
        EXPECT_EQ(result.errors,
                  "standard input:5: the stack is used up: by a Dictionary or an array that contains itself, or "
                  "by methods that call each other without end\n");
    }
}

TEST(Run, EndsWithStatusOneWhenItCannotGoOn)
{
    for (const std::string &text : {std::string("Print 5"), std::string("Assert(1 = 2)"), std::string("If"),
                                    std::string("Raise New RuntimeException(\"text\")")}) {
        std::string file = temporaryFile("wrong.xojo_script", text);
        Result result = plughost({"run", file});
        EXPECT_EQ(result.status, 1) << text;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors.rfind(file + ":1:", 0), 0u) << result.errors;
    }
    Result result = plughost({"run", "/nowhere/file.xojo_script"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors.rfind("plughost: ", 0), 0u) << result.errors;
}

TEST(Interactive, ShowsWhatContainsItself)
{
    Result result = plughost({}, "Dim d As New Dictionary\nd.Value(\"self\") = d\nd\nvars\nPrint \"on\"\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.rfind("{\"self\": {\"self\": ", 0), 0u) << result.output;
    EXPECT_EQ(result.output.substr(result.output.size() - 4), "\non\n");
}

TEST(Interactive, CountsLinesOverTheWholeInput)
{
    Result result = plughost({}, "Dim n As Integer\nIf True Then\nPrint \"a\"\nEnd If\nPrint n\n");
    EXPECT_EQ(result.output, "a\n");
    EXPECT_EQ(result.errors, "input:5:7: what is printed must be a String, not an Integer\nPrint n\n      ^\n");
}

TEST(Interactive, ReadsLinesQuietlyFromAnInputThatIsNoTerminal)
{
    Result result =
        plughost({}, "Dim n As Integer = 4\nn * 2\nFor i As Integer = 1 To 2\n  Print Str(i)\nNext\n\"x\"\n");
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "8\n1\n2\n\"x\"\n");
    EXPECT_EQ(plughost({}, "").status, 0);
}

TEST(Interactive, GoesOnBehindALineThatCannotBeRun)
{
    Result result = plughost({}, "Print 5\nPrint \"on\"\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "on\n");
    EXPECT_EQ(result.errors, "input:1:7: what is printed must be a String, not an Integer\nPrint 5\n      ^\n");
}

TEST(Interactive, WritesWhatWasSetAtTheEnd)
{
    plughost({}, "NSUserDefaultsKTZ.standardUserDefaults.integerForKey(\"cd\") = 9\nPrint 5\n");
    EXPECT_EQ(printed({"get", "integer", "cd"}), "9");
}

TEST(Interactive, HasShownAValueBeforeTheStackEnds)
{
    Result result = plughost({}, "Dim c As New Dictionary\nc.Value(\"c\") = c\n2 + 2\n"
                                 "NSUserDefaultsKTZ.standardUserDefaults.dictionaryForKey(\"D\") = c\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "4\n");
    EXPECT_NE(result.errors.find(": the stack is used up: "), std::string::npos) << result.errors;
}

TEST(Interactive, EndsWithExit)
{
    Result result = plughost({}, "Print \"a\"\nexit\nPrint \"b\"\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "a\n");
}

TEST(Interactive, ABlockThatIsNeverClosedIsAMistake)
{
    Result result = plughost({}, "If True Then\nPrint \"a\"\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "input:1:1: this If has no End If\nIf True Then\n^~\n");
}
