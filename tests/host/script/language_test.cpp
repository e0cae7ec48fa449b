// Parts of the language that methods, classes and choices are written with.
#include "tests/host/script/program.h"

using Language = script_test::Programs;

TEST_F(Language, ParametersCanBeOptional)
{
    const std::string pad = "Function Pad(s As String, Optional n As Integer = 3, fill As String = \"-\") As String\n"
                            "While Len(s) < n\ns = s + fill\nWend\nReturn s\nEnd Function\n"
                            "Sub Say(Optional s As String)\nPrint s + \".\"\nEnd Sub\n";
    expectOutputs({
        {pad + "Print Pad(\"a\") + Pad(\"b\", 2) + Pad(\"c\", 2, \"+\")", "a--b-c+\n"},
        {pad + "Say\nSay \"x\"", ".\nx.\n"},
    });
    expectErrors({
        {"Sub S(Optional a As Integer, b As Integer)\nEnd Sub",
         "p:1:30: behind an optional parameter all must be optional\nSub S(Optional a As Integer, b As Integer)\n"
         "                             ^\n"},
        {"Sub S(a As Integer = \"x\")\nEnd Sub",
         "p:1:22: \"a\" must be an Integer, not a String\nSub S(a As Integer = \"x\")\n                     ^~~\n"},
        {"Sub S(a As Integer, Optional b As Integer)\nEnd Sub\nS(1, 2, 3)",
         "p:3:1: S(a As Integer, Optional b As Integer): takes 1 to 2 arguments, not 3\nS(1, 2, 3)\n^\n"},
    });
}

TEST_F(Language, ParametersCanBePassedByReference)
{
    const std::string swap =
        "Sub Swap(ByRef a As Integer, ByRef b As Integer)\nDim t As Integer = a\na = b\nb = t\n"
        "End Sub\nClass Own\nDim N As Integer = 9\nEnd Class\n"
        "Dim x As Integer = 1, y As Integer = 2\nDim list() As Integer = Array(5, 6)\nDim o As New Own\n";
    expectOutputs({
        {swap + "Swap x, y\nPrint Str(x) + Str(y)", "21\n"},
        {swap + "Swap(x, list(1))\nPrint Str(x) + Str(list(1))", "61\n"},
        {swap + "Swap(o.N, x)\nPrint Str(o.N) + Str(x)", "19\n"},
        {"Sub Fail(ByRef a As Integer)\na = 7\nRaise New RuntimeException(\"r\")\nEnd Sub\nDim x As Integer\n"
         "Try\nFail(x)\nCatch\nPrint Str(x)\nEnd Try",
         "7\n"},
        {"Sub Twice(ByRef s As String)\ns = s + s\nEnd Sub\nSub Four(ByRef s As String)\nTwice(s)\nTwice(s)\nEnd Sub\n"
         "Dim t As String = \"a\"\nFour(t)\nPrint t",
         "aaaa\n"},
    });
    expectErrors({
        {"Sub Inc(ByRef n As Integer)\nEnd Sub\nInc(5)", "p:3:5: Inc(ByRef n As Integer): n is passed ByRef and must "
                                                         "be a variable that is an Integer\nInc(5)\n    ^\n"},
        {"Sub Inc(ByRef n As Integer)\nEnd Sub\nDim d As Double\nInc(d)",
         "p:4:5: Inc(ByRef n As Integer): n is passed ByRef and must be a variable that is an Integer\nInc(d)\n    "
         "^\n"},
    });
}

TEST_F(Language, CasesHaveRangesAndComparisons)
{
    const std::string tell =
        "Function Tell(v As Double) As String\nSelect Case v\nCase 1 To 9, 20\nReturn \"a\"\n"
        "Case Is > 100, Is < 0\nReturn \"b\"\nCase Is <> 50\nReturn \"c\"\nEnd Select\nReturn \"d\"\n"
        "End Function\n";
    expectOutputs({
        {tell + "Print Tell(1) + Tell(9) + Tell(9.5) + Tell(20) + Tell(101) + Tell(-1) + Tell(50)", "aacabbd\n"},
        {"Select Case 5\nCase 1\nPrint \"one\"\nElse\nPrint \"other\"\nEnd Select", "other\n"},
        {"Select Case \"Blue\"\nCase \"a\" To \"az\"\nPrint \"no\"\nCase \"blue\"\nPrint \"yes\"\nEnd Select", "yes\n"},
        {"Dim o As Object = New Date\nSelect Case o\nCase IsA Dictionary\nPrint \"no\"\nCase IsA Date\nPrint \"date\"\n"
         "End Select",
         "date\n"},
        {"Select Case True\nCase 1 > 2\nPrint \"no\"\nCase 2 > 1\nPrint \"yes\"\nEnd Select", "yes\n"},
    });
    expectErrors({
        {"Select Case True\nCase False To True\nEnd Select",
         "p:2:6: a Boolean has no order\nCase False To True\n     ^~~~~\n"},
        {"Select Case 1\nCase Is + 2\nEnd Select",
         "p:2:9: expected a comparison after Is, found \"+\"\nCase Is + 2\n        ^\n"},
    });
}

TEST_F(Language, AConditionChoosesAValue)
{
    expectValues({
        {"If(1 = 1, \"a\", \"b\")", "a"},
        {"If(1 = 2, \"a\", \"b\")", "b"},
        {"If(True, 1, 2.5) / 2", "0.5"},
        {"If(False, Nil, New Date(2012, 1, 1)) = New Date(2012, 1, 1)", "true"},
    });
    expectOutputs({
        {"Function Said() As Integer\nPrint \"said\"\nReturn 1\nEnd Function\nPrint Str(If(True, 2, Said))", "2\n"},
    });
    expectErrors({
        {"Print Str(If(True, 1, \"a\"))",
         "p:1:11: If(…) needs two values of one type, not an Integer and a String\nPrint Str(If(True, 1, \"a\"))\n"
         "          ^~~~~~~~~~~~~~~~\n"},
    });
}

TEST_F(Language, ExitNamesWhatItLeaves)
{
    expectOutputs({
        {"For i As Integer = 1 To 3\nWhile True\nIf i = 2 Then Exit For\nExit While\nWend\nPrint Str(i)\nNext", "1\n"},
        {"For i As Integer = 1 To 2\nDo\nContinue For\nLoop\nPrint \"no\"\nNext\nPrint \"end\"", "end\n"},
        {"Do\nFor Each s As String In Array(\"a\", \"b\")\nPrint s\nExit Do\nNext\nLoop", "a\n"},
        {"Sub S(n As Integer)\nIf n = 1 Then Exit Sub\nPrint Str(n)\nEnd Sub\nS 1\nS 2", "2\n"},
        {"Function F() As Integer\nDo\nExit Function\nLoop\nEnd Function\nPrint Str(F)", "0\n"},
        {"Function F() As Integer\nFor i As Integer = 1 To 9\nTry\nIf i = 2 Then Return i\nFinally\nPrint \"f\"\nEnd "
         "Try\nNext\n"
         "End Function\nPrint Str(F)",
         "f\nf\n2\n"},
    });
    expectErrors({
        {"While True\nExit For\nWend", "p:2:1: Exit stands in a For loop only here\nExit For\n^~~~\n"},
        {"Function F() As Integer\nExit Sub\nEnd Function", "p:2:1: Exit Sub stands in a Sub only\nExit Sub\n^~~~\n"},
    });
}

TEST_F(Language, EnumsNameIntegers)
{
    const std::string quality = "Enum Quality\nDraft\nNormal = 5\nBest\nWorst = -1\nEnd Enum\n";
    expectOutputs({
        {quality + "Print Str(Quality.Draft) + Str(Quality.Normal) + Str(Quality.Best) + Str(Quality.Worst)",
         "056-1\n"},
        {quality + "Dim q As Quality = Quality.Best\nPrint Str(Integer(q))", "6\n"},
        {quality + "Select Case 5\nCase Quality.Normal\nPrint \"normal\"\nEnd Select", "normal\n"},
    });
    expectErrors({
        {quality + "Print Str(Quality.Bests)",
         "p:7:19: Quality has no member \"Bests\"; did you mean \"Best\"?\nPrint Str(Quality.Bests)\n"
         "                  ^~~~~\n"},
        {quality + "Quality.Best = 5", "p:7:9: \"Best\" is a constant\nQuality.Best = 5\n        ^~~~\n"},
    });
}

TEST_F(Language, ClassesKeepThingsToThemselves)
{
    const std::string classes =
        "Class Base\nPrivate Dim secret As Integer = 1\nProtected Dim shared1 As Integer = 2\n"
        "Const kName = \"base\"\nPrivate Sub Hide\nsecret = secret + 1\nEnd Sub\n"
        "Public Function Sum() As Integer\nHide\nReturn secret + shared1\nEnd Function\nEnd Class\n"
        "Class Derived Inherits Base\nFunction More() As Integer\nReturn shared1 * 10\nEnd Function\n"
        "End Class\nDim d As New Derived\n";
    expectOutputs({
        {classes + "Print Str(d.Sum) + Str(d.More) + Base.kName + d.kName", "420basebase\n"},
        {"Class C\nPrivate a, b As Integer = 2, names() As String\nFunction Sum() As Integer\nReturn a + b + "
         "names.Ubound\n"
         "End Function\nEnd Class\nPrint Str((New C).Sum)",
         "3\n"},
    });
    expectErrors({
        {classes + "Print Str(d.secret)",
         "p:19:13: \"secret\" is private to Base\nPrint Str(d.secret)\n            ^~~~~~\n"},
        {classes + "d.shared1 = 5", "p:19:3: \"shared1\" is protected to Base\nd.shared1 = 5\n  ^~~~~~~\n"},
        {classes + "d.Hide", "p:19:3: \"Hide\" is private to Base\nd.Hide\n  ^~~~\n"},
        {classes + "d.kName = \"x\"", "p:19:3: \"kName\" is a constant\nd.kName = \"x\"\n  ^~~~~\n"},
    });
}

TEST_F(Language, DimTakesSeveralTypes)
{
    expectOutputs({
        {"Dim a, b As Integer = 4, s As String = \"x\", c() As Integer\nPrint Str(a + b) + s + Str(c.Ubound)",
         "8x-1\n"},
    });
}

TEST_F(Language, NamesOfTheProgramComeBeforeThoseOfTheLibrary)
{
    expectOutputs({
        {"Dim log As String = \"x\"\nDim left As Integer = 2\nPrint log + Str(left)", "x2\n"},
        {"Function Titlecase(s As String) As String\nReturn \"own \" + s\nEnd Function\nPrint Titlecase(\"a\")",
         "own a\n"},
    });
}

TEST_F(Language, ExitWaitsForFinally)
{
    expectOutputs({
        {"For i As Integer = 1 To 2\nWhile True\nTry\nExit For\nFinally\nDo\nExit Do\nLoop\nPrint \"f\"\nEnd "
         "Try\nWend\n"
         "Print \"no\"\nNext\nPrint \"end\"",
         "f\nend\n"},
    });
}

TEST_F(Language, ElseIfCanBeTwoWords)
{
    expectOutputs({
        {"Dim n As Integer = 2\nIf n = 1 Then\nPrint \"a\"\nElse If n = 2 Then\nPrint \"b\"\nElse\nPrint \"c\"\nEnd If",
         "b\n"},
        {"If 1 = 2 Then Print \"a\" Else If 1 = 1 Then Print \"b\"", "b\n"},
    });
}

TEST_F(Language, EndAloneClosesABlock)
{
    expectOutputs({
        {"Sub S\nIf True Then\nPrint \"a\"\nEnd\nSelect Case 1\nCase 1\nPrint \"b\"\nEnd\nEnd\nS", "a\nb\n"},
    });
}

TEST_F(Language, DirectivesChooseTheLinesThatAreRead)
{
    expectOutputs({
        {"#If TargetMacOS Then\nPrint \"mac\"\n#Else\nthis is read by nobody\n#EndIf", "mac\n"},
        {"#If TargetWin32\nPrint \"no\"\n#ElseIf RBVersion >= 2013 And Not TargetLinux Then\nPrint \"new\"\n#Else\n"
         "Print \"no\"\n#EndIf\nPrint \"end\"",
         "new\nend\n"},
        {"#If False\n#If True\nPrint \"no\"\n#EndIf\nPrint \"no\"\n#Else\nPrint \"yes\"\n#EndIf", "yes\n"},
        {"#If True Then Print \"one\"\n#If False Then Print \"two\"\nPrint \"three\"", "one\nthree\n"},
        {"#Pragma BackgroundTasks False\nSub S\n#If TargetMacOS\nPrint \"in\"\n#EndIf\nEnd Sub\nS", "in\n"},
    });
    expectErrors({
        {"#If True\nPrint \"a\"", "p:1:1: this #If has no #EndIf\n#If True\n^~~\n"},
        {"#EndIf", "p:1:1: there is no #If in front of this\n#EndIf\n^~~~~~\n"},
        {"Dim n As Integer\n#If n = 1\n#EndIf", "p:2:5: #If looks at the language's own constants only, such as "
                                                "TargetMacOS and RBVersion\n#If n = 1\n    ^\n"},
        {"#Fi True", "p:1:1: \"#Fi\" is no directive; there are #If, #ElseIf, #Else, #EndIf\n#Fi True\n^~~\n"},
    });
}

TEST_F(Language, FilesCanBeginWithAByteOrderMarkAndEndLinesAsTheyLike)
{
    expectOutputs({
        {"\xEF\xBB\xBFPrint \"a\"", "a\n"},
        {"Print \"a\"\rPrint \"b\"\r\nPrint \"c\"", "a\nb\nc\n"},
    });
    expectErrors({
        {"Print \"a\"\rPrint 5", "p:2:7: what is printed must be a String, not an Integer\nPrint 5\n      ^\n"},
        {std::string("\xFF\xFEP\0", 4), "p: this is UTF-16; programs are read as UTF-8\n"},
        {std::string("\0P\0r", 4), "p: this is UTF-16, or no text at all; programs are read as UTF-8\n"},
        {"Print \"a\"\nPrint \"gr\x9F\xDF\"",
         "p:2: the byte 9F is no UTF-8 (Mac Roman or Windows-1252?); programs are read as UTF-8\n"},
    });
}
