// What statements do.
#include "tests/host/script/program.h"

using Statements = script_test::Programs;

TEST_F(Statements, Comments)
{
    expectOutputs({
        {"' one\n// two\nRem three\n  rem four\nPrint \"a\" ' five\nPrint \"'//\" // six", "a\n'//\n"},
        {"Dim remark As Integer = 3\nPrint Str(remark)", "3\n"},
        {"", ""},
        {"\n\n  \n", ""},
        {"Print \"a\"\r\nPrint \"b\"\r\n", "a\nb\n"},
    });
}

TEST_F(Statements, LinesGoOnBehindAnUnderscore)
{
    expectOutputs({
        {"Print \"a\" + _\n  \"b\"", "ab\n"},
        {"Print \"a\" + _ ' with a comment\n\"b\"", "ab\n"},
        {"Dim a_b As Integer = _\n_\n5\nPrint Str(a_b)", "5\n"},
    });
}

TEST_F(Statements, Variables)
{
    expectOutputs({
        {"Dim a, b As Integer = 4\nPrint Str(a + b)", "8\n"},
        {"Dim i As Integer\nDim s As String\nDim b As Boolean\nDim d As Date\nDim v As Variant\n"
         "Print Str(i) + s + Str(b) + Str(d = Nil) + Str(v = Nil)",
         "0falsetruetrue\n"},
        {"DIM Name AS string = \"x\"\nprint NAME", "x\n"},
        {"Dim grün As Integer = 1\nPrint Str(GRün)", "1\n"},
        {"Const kCount = 3\nConst kName As String = \"n\"\nPrint kName + Str(kCount)", "n3\n"},
        {"If True Then\nDim x As Integer = 1\nEnd If\nDim x As String = \"later\"\nPrint x", "later\n"},
        {"For i As Integer = 1 To 2\nDim n As Integer\nn = n + 1\nPrint Str(n)\nNext", "1\n1\n"},
        {"Print", "\n"},
    });
}

TEST_F(Statements, Arrays)
{
    expectOutputs({
        {"Dim a() As String\na.Append \"x\"\na.Append(\"y\")\nPrint a(0) + a(1) + Str(a.Ubound) + Str(Ubound(a))",
         "xy11\n"},
        {"Dim a(2) As Integer\na(2) = 5\nPrint Str(a(0)) + Str(a(2)) + Str(a.Ubound)", "052\n"},
        {"Dim a() As Integer = Array(1, 2, 3)\na.Insert(0, 9)\na.Remove(1)\nPrint Str(a(0)) + Str(a(1)) + Str(a.Pop) "
         "+ Str(a.Ubound)",
         "9231\n"},
        {"Dim a() As String = Array(\"b\", \"A\", \"c\")\na.Sort\nPrint Join(a, \"\") + Str(a.IndexOf(\"C\")) + "
         "Str(a.IndexOf(\"x\"))",
         "Abc2-1\n"},
        {"Dim a() As Double = Array(2.5, 1)\na.Sort\nPrint Str(a(0))", "1\n"},
        {"Dim a() As Integer\nRedim a(3)\nPrint Str(a.Ubound)\nRedim a(0)\nPrint Str(a.Ubound)\nRedim a(-1)\n"
         "Print Str(a.Ubound)",
         "3\n0\n-1\n"},
        {"Dim a() As Integer = Array(1)\nDim b() As Integer = a\nb.Append 2\nPrint Str(a.Ubound)", "1\n"},
        {"Dim a() As Variant = Array(1, \"two\", Nil)\nPrint Str(a.Ubound) + a(1)", "2two\n"},
        {"Dim a() As Date = Array(New Date(2012, 2, 29))\nPrint Str(a(0).Day)", "29\n"},
    });
}

TEST_F(Statements, Branches)
{
    const std::string program = "Sub Tell(i As Integer)\nIf i = 1 Then\nPrint \"one\"\nElseIf i = 2 Then\n"
                                "Print \"two\"\nElse\nPrint \"many\"\nEnd If\nEnd Sub\n";
    expectOutputs({
        {program + "Tell(1)\nTell 2\nTell(3)", "one\ntwo\nmany\n"},
        {"If 1 = 1 Then Print \"a\" Else Print \"b\"", "a\n"},
        {"If 1 = 2 Then Print \"a\" Else Print \"b\"\nPrint \"c\"", "b\nc\n"},
        {"If 1 = 2 Then Print \"a\"", ""},
        {"Select Case \"B\"\nCase \"a\", \"b\"\nPrint \"found\"\nCase Else\nPrint \"else\"\nEnd Select", "found\n"},
        {"Select Case 5\nCase 1\nPrint \"one\"\nEnd Select\nPrint \"end\"", "end\n"},
        {"Select Case 5\nCase 1\nPrint \"one\"\nCase Else\nPrint \"else\"\nEnd Select", "else\n"},
    });
}

TEST_F(Statements, Loops)
{
    expectOutputs({
        {"For i As Integer = 1 To 3\nPrint Str(i)\nNext", "1\n2\n3\n"},
        {"Dim i As Integer\nFor i = 3 DownTo 1\nPrint Str(i)\nNext i\nPrint Str(i)", "3\n2\n1\n0\n"},
        {"For i As Integer = 0 To 10 Step 5\nPrint Str(i)\nNext", "0\n5\n10\n"},
        {"For d As Double = 0 To 1 Step 0.5\nPrint Str(d)\nNext", "0\n0.5\n1\n"},
        {"For i As Integer = 2 To 1 Step -1\nPrint Str(i)\nNext", "2\n1\n"},
        {"For i As Integer = 1 To 0\nPrint Str(i)\nNext", ""},
        {"For Each s As String In Array(\"a\", \"b\")\nPrint s\nNext", "a\nb\n"},
        {"Dim v As Variant\nFor Each v In Array(1, \"b\")\nPrint v\nNext", "1\nb\n"},
        {"Dim i As Integer\nWhile i < 2\ni = i + 1\nPrint Str(i)\nWend", "1\n2\n"},
        {"Dim i As Integer\nDo\ni = i + 1\nLoop Until i >= 3\nPrint Str(i)", "3\n"},
        {"Dim i As Integer\nDo\ni = i + 1\nLoop While i < 3\nPrint Str(i)", "3\n"},
        {"Dim i As Integer\nDo Until i = 2\ni = i + 1\nLoop\nPrint Str(i)", "2\n"},
        {"Dim i As Integer\nDo While i < 2\ni = i + 1\nLoop\nPrint Str(i)", "2\n"},
        {"For i As Integer = 1 To 9\nIf i = 2 Then Continue\nIf i = 4 Then Exit For\nPrint Str(i)\nNext", "1\n3\n"},
        {"For i As Integer = 1 To 2\nFor Each j As Integer In Array(1, 2)\nIf j = 2 Then Exit\nPrint "
         "Str(i)\nNext\nNext",
         "1\n2\n"},
        {"Dim last As Integer = 2\nFor i As Integer = 1 To last\nIf i = 1 Then last = 3\nPrint Str(i)\nNext",
         "1\n2\n3\n"},
    });
}

TEST_F(Statements, Methods)
{
    expectOutputs({
        {"Function Twice(n As Integer) As Integer\nReturn n * 2\nEnd Function\nPrint Str(Twice(4))", "8\n"},
        {"Print Str(Twice(4))\nFunction Twice(n As Integer) As Integer\nReturn n * 2\nEnd Function", "8\n"},
        {"Function F(n As Integer) As Integer\nIf n < 2 Then Return 1 Else Return n * F(n - 1)\nEnd Function\n"
         "Print Str(F(10))",
         "3628800\n"},
        {"Sub Fill(a() As String, ByVal text As String)\na.Append(text)\nEnd Sub\nDim list() As String\n"
         "Fill list, \"x\"\nPrint list(0)",
         "x\n"},
        {"Function Nothing() As String\nEnd Function\nPrint Nothing + \".\"", ".\n"},
        {"Dim total As Integer = 5\nSub Add\ntotal = total + 1\nEnd Sub\nAdd\nAdd()\nPrint Str(total)", "7\n"},
        {"Function F() As Integer\nTry\nReturn 1\nFinally\nPrint \"finally\"\nEnd Try\nEnd Function\nPrint Str(F)",
         "finally\n1\n"},
        {"Function F() As Integer\nPrint \"called\"\nReturn 1\nEnd Function\nCall F", "called\n"},
        {"Print \"a\"\nReturn\nPrint \"b\"", "a\n"},
        {"Tell\nDim a() As String = Array(\"x\")\nDim b As Boolean = True\nTell\nSub Tell\n"
         "Print Str(a.Ubound) + Str(b)\nEnd Sub",
         "-1false\n0true\n"},
        {"Function Names() As String()\nReturn Array(\"a\")\nEnd Function\nFor Each s As String In Names\nPrint "
         "s\nNext",
         "a\n"},
    });
}

TEST_F(Statements, Classes)
{
    const std::string animals = "Class Animal\nDim Name As String\nDim Legs As Integer = 4\n"
                                "Sub Constructor(n As String)\nName = n\nEnd Sub\n"
                                "Function Text() As String\nReturn Name + Str(Legs) + Noise\nEnd Function\n"
                                "Function Noise() As String\nReturn \"?\"\nEnd Function\nEnd Class\n"
                                "Class Dog\nInherits Animal\nDim Tail As Boolean = True\n"
                                "Function Noise() As String\nReturn \"Wuff\"\nEnd Function\nEnd Class\n";
    expectOutputs({
        {animals + "Dim a As New Animal(\"Cat\")\na.Legs = a.Legs - 1\nPrint a.Text", "Cat3?\n"},
        {animals + "Dim a As Animal = New Dog(\"Rex\")\nPrint a.Text + Str(Dog(a).Tail)", "Rex4Wufftrue\n"},
        {animals + "Dim v As Variant = New Dog(\"Rex\")\nPrint Str(v IsA Animal) + Str(v IsA Dog)", "truetrue\n"},
        {"Class Counter\nDim n As Integer\nSub Add\nSelf.n = Self.n + 1\nAgain\nEnd Sub\nSub Again\nn = n + 10\n"
         "End Sub\nEnd Class\nDim c As New Counter\nc.Add\nPrint Str(c.n)",
         "11\n"},
        {"Class Node\nDim Following As Node\nDim Items() As String\nEnd Class\nDim n As New Node\n"
         "n.Following = New Node\nn.Following.Items.Append \"x\"\nn.Items = Array(\"y\")\nn.Items(0) = \"z\"\n"
         "Print n.Following.Items(0) + n.Items(0) + Str(n.Following.Following = Nil)",
         "xztrue\n"},
        {"Class Thing\nEnd Class\nDim d As New Dictionary\nDim t As New Thing\nd.Value(t) = 1\n"
         "Print Str(d.HasKey(t)) + Str(d.Key(0) = t)",
         "truetrue\n"},
    });
}
