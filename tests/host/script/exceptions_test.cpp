// Exceptions while a program runs: caught ones, and what is reported of those that are not.
#include "tests/host/script/program.h"

using Exceptions = script_test::Programs;

TEST_F(Exceptions, AreCaughtByTheirClass)
{
    const std::string wrong = "Dim a() As Integer\nTry\nPrint Str(a(3))\n";
    expectOutputs({
        {wrong + "Catch e As OutOfBoundsException\nPrint e.Message\nEnd Try",
         "The index is 3, and the array's upper bound is -1.\n"},
        {wrong + "Catch e As KeyNotFoundException\nPrint \"no\"\nCatch e As RuntimeException\nPrint \"yes\"\nEnd Try",
         "yes\n"},
        {wrong + "Catch e\nPrint Str(e IsA OutOfBoundsException)\nEnd Try", "true\n"},
        {wrong + "Catch\nPrint \"caught\"\nFinally\nPrint \"finally\"\nEnd Try\nPrint \"on\"", "caught\nfinally\non\n"},
        {"Try\nPrint \"a\"\nCatch\nPrint \"b\"\nFinally\nPrint \"c\"\nEnd Try", "a\nc\n"},
        {"Try\nTry\nRaise New KeyNotFoundException\nFinally\nPrint \"inner\"\nEnd Try\nCatch e As "
         "KeyNotFoundException\n"
         "Print \"outer\"\nEnd Try",
         "inner\nouter\n"},
    });
}

TEST_F(Exceptions, OfEveryKind)
{
    auto caught = [](const std::string &declarations, const std::string &statement, const std::string &expected) {
        return script_test::Sample{declarations + "Try\n" + statement +
                                       "\nCatch e\nDim v As Variant = e\nIf v IsA KeyNotFoundException Then "
                                       "Print \"key\"\nIf v IsA NilObjectException Then Print \"nil\"\n"
                                       "If v IsA TypeMismatchException Then Print \"type\"\nPrint e.Message\nEnd Try",
                                   expected};
    };
    expectOutputs({
        caught("Dim d As New Dictionary\n", "d.Remove(\"x\")", "key\nThere is no key \"x\".\n"),
        caught("Dim d As New Dictionary\n", "Print d.Value(\"x\")", "key\nThere is no key \"x\".\n"),
        caught("Dim d As Dictionary\n", "d.Value(\"x\") = 1", "nil\nThis is Nil.\n"),
        caught("Dim d As Date\n", "d.Year = 1", "nil\nThis is Nil.\n"),
        caught("Dim a() As Integer = Nil\n", "a.Append(1)", "nil\nThis is Nil.\n"),
        caught("Dim a() As Integer = Nil\n", "For Each i As Integer In a\nNext", "nil\nThis is Nil.\n"),
        caught("Dim v As Variant = 5\n", "Dim d As Date = v", "type\nThis is an Integer, not a Date.\n"),
        caught("Dim v As Variant = Array(1)\n", "Dim s() As String = v",
               "type\nThis is an array of integer, not a String().\n"),
        caught("Dim o As Object = New Date\n", "Dim d As Dictionary = Dictionary(o)",
               "type\nThis is a Date, not a Dictionary.\n"),
        caught("Dim i As Integer\n", "i = 1 \\ i", "Division by zero.\n"),
        caught("Dim i As Integer\n", "i = 1 Mod i", "Division by zero.\n"),
        caught("Dim m As New MemoryBlock(2)\n", "m.Byte(2) = 1", "The MemoryBlock has 2 bytes.\n"),
        caught("Sub Again\nAgain\nEnd Sub\n", "Again", "The calls are nested too deeply.\n"),
        caught("Dim e0 As RuntimeException\n", "Raise e0", "nil\nThis is Nil.\n"),
    });
}

TEST_F(Exceptions, OfOnesOwn)
{
    expectOutputs({
        {"Try\nRaise New RuntimeException(\"text\", 5)\nCatch e As RuntimeException\nPrint e.Message + "
         "Str(e.ErrorNumber)\nEnd Try",
         "text5\n"},
        {"Class SettingsError Inherits RuntimeException\nDim Key As String\nSub Constructor(k As String)\nKey = k\n"
         "Message = \"no \" + k\nEnd Sub\nEnd Class\nTry\nRaise New SettingsError(\"Font\")\n"
         "Catch e As SettingsError\nPrint e.Key + \": \" + e.Message\nEnd Try",
         "Font: no Font\n"},
        {"Dim e As New KeyNotFoundException\ne.Message = \"mine\"\nTry\nRaise e\nCatch f\nPrint f.Message + "
         "Str(f = e)\nEnd Try",
         "minetrue\n"},
    });
}

TEST_F(Exceptions, ThatNobodyCatchesAreReportedWhereTheyWereRaised)
{
    expectErrors({
        {"Dim d As Dictionary\n\td.Value(\"x\") = 1",
         "p:2:2: NilObjectException: This is Nil.\n\td.Value(\"x\") = 1\n\t^\n"},
        {"Dim a() As String = Array(\"ä\")\nDim s As String = a(0) + a(5)",
         "p:2:28: OutOfBoundsException: The index is 5, and the array's upper bound is 0.\n"
         "Dim s As String = a(0) + a(5)\n                           ^\n"},
        {"Sub Fail(n As Integer)\n  Raise New RuntimeException(\"text\", n)\nEnd Sub\nFail(7)",
         "p:2:3: RuntimeException: text (error number 7)\n  Raise New RuntimeException(\"text\", n)\n  ^~~~~\n"
         "  in Fail, called at p:4:1\n"},
        {"Try\nRaise New KeyNotFoundException(\"k\")\nCatch e As OutOfBoundsException\nEnd Try",
         "p:2:1: KeyNotFoundException: k\nRaise New KeyNotFoundException(\"k\")\n^~~~~\n"},
    });
}

TEST_F(Exceptions, AFailedAssertEndsTheProgram)
{
    expectOutputs({
        {"Assert(1 = 1)\nAssert 1 = 1, \"text\"\nAssert (1 = 1) And (2 = 2)", ""},
    });
    expectErrors({
        {"Assert(1 = 2)", "p:1:8: this does not hold\nAssert(1 = 2)\n       ^~~~~\n"},
        {"Try\nAssert 1 = 2, \"one is \" + Str(1)\nCatch\nEnd Try",
         "p:2:8: this does not hold: one is 1\nAssert 1 = 2, \"one is \" + Str(1)\n       ^~~~~\n"},
    });
}

TEST_F(Exceptions, WhatWasPrintedBeforeStays)
{
    script_test::Ran ran = run("Print \"before\"\nRaise New RuntimeException(\"text\")\nPrint \"after\"");
    EXPECT_FALSE(ran.isDone);
    EXPECT_EQ(ran.output, "before\n");
    EXPECT_EQ(ran.errors, "p:2:1: RuntimeException: text\nRaise New RuntimeException(\"text\")\n^~~~~\n");
}

TEST_F(Exceptions, TellTheCallsThatLedThere)
{
    const std::string deep =
        "Class Own\nSub Constructor(n As Integer)\nDown(n)\nEnd Sub\nEnd Class\n"
        "Sub Down(n As Integer)\nIf n = 0 Then Raise New RuntimeException(\"text\")\nDown(n - 1)\nEnd Sub\n";
    expectErrors({
        {deep + "Dim o As New Own(1)",
         "p:7:15: RuntimeException: text\nIf n = 0 Then Raise New RuntimeException(\"text\")\n              ^~~~~\n"
         "  in Down, called at p:8:1\n  in Down, called at p:3:1\n  in Own.Constructor, called at p:10:10\n"},
        {deep + "Down(100)",
         "p:7:15: RuntimeException: text\nIf n = 0 Then Raise New RuntimeException(\"text\")\n              ^~~~~\n"
         "  in Down, called at p:8:1\n  in Down, called at p:8:1\n  in Down, called at p:8:1\n"
         "  in Down, called at p:8:1\n  in Down, called at p:8:1\n  in Down, called at p:8:1\n"
         "  in Down, called at p:8:1\n  in Down, called at p:8:1\n  … 92 more calls\n"
         "  in Down, called at p:10:1\n"},
        {"Sub S\nAssert 1 = 2\nEnd Sub\nS",
         "p:2:8: this does not hold\nAssert 1 = 2\n       ^~~~~\n  in S, called at p:4:1\n"},
        {"Sub S(n As Integer)\nTry\nRaise New RuntimeException(Str(n))\nCatch e\nRaise e\nEnd Try\nEnd Sub\nS(4)",
         "p:5:1: RuntimeException: 4\nRaise e\n^~~~~\n  in S, called at p:8:1\n"},
    });
}

TEST_F(Exceptions, OfSeveralKilobytesAreShortened)
{
    script_test::Ran ran = run("Dim s As String = \"ü\"\nWhile LenB(s) < 10000\ns = s + s\nWend\n"
                               "Raise New RuntimeException(s)");
    EXPECT_EQ(ran.errors.rfind("p:5:1: RuntimeException: üü", 0), 0u);
    EXPECT_NE(ran.errors.find("ü … (7,901 more characters) … ü"), std::string::npos) << ran.errors;
    EXPECT_LT(ran.errors.size(), 800u);
}
