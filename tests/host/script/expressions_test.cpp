// What expressions give.
#include "tests/host/script/program.h"

using Expressions = script_test::Programs;

TEST_F(Expressions, Literals)
{
    expectValues({
        {"12", "12"},
        {"1.5", "1.5"},
        {".5", "0.5"},
        {"1e3", "1000"},
        {"2.5E-1", "0.25"},
        {"&hFF", "255"},
        {"&b101", "5"},
        {"&o17", "15"},
        {"5000000000", "5000000000"},
        {"True", "true"},
        {"Nil", ""},
        {"\"\"", ""},
        {"\"say \"\"hello\"\"\"", "say \"hello\""},
        {"\"grüß dich 👋\"", "grüß dich 👋"},
        {"&c3366FF", "&h003366FF"},
    });
}

TEST_F(Expressions, LiteralsHaveTheSmallestType)
{
    expectValues({
        {"VarType(2147483647)", "2"},
        {"VarType(2147483648)", "3"},
        {"VarType(1.0)", "5"},
        {"VarType(\"\")", "8"},
        {"VarType(True)", "11"},
        {"VarType(&c000000)", "16"},
        {"VarType(Nil)", "0"},
        {"VarType(Array(1, 2))", "4098"},
        {"VarType(Array(1.5))", "4101"},
        {"VarType(Array(\"a\"))", "4104"},
        {"VarType(Array(1, \"a\"))", "4105"},
    });
}

TEST_F(Expressions, Arithmetic)
{
    expectValues({
        {"1 + 2 * 3", "7"},
        {"(1 + 2) * 3", "9"},
        {"10 - 2 - 3", "5"},
        {"7 / 2", "3.5"},
        {"7 \\ 2", "3"},
        {"-7 \\ 2", "-3"},
        {"7 Mod 4", "3"},
        {"-7 Mod 4", "-3"},
        {"7.9 \\ 2.9", "3"},
        {"2 ^ 10", "1024"},
        {"-2 ^ 2", "-4"},
        {"2 ^ -1", "0.5"},
        {"- -3", "3"},
        {"+3", "3"},
        {"1 + 0.5", "1.5"},
        {"1 / 0 > 1000000", "true"},
        {"\"ab\" + \"cd\"", "abcd"},
    });
}

TEST_F(Expressions, IntegersKeepTheirLowBits)
{
    expectValues({
        {"2147483647 + 1", "-2147483648"},
        {"2147483648 + 1", "2147483649"},
        {"65536 * 65536", "0"},
        {"-2147483648 \\ -1", "2147483648"},
    });
    expectOutputs({
        {"Dim b As Byte\nDim i As Integer = 257\nb = i\nPrint Str(b)", "1\n"},
        {"Dim i As Int8\nDim j As Integer = 200\ni = j\nPrint Str(i)", "-56\n"},
        {"Dim i As Integer = -7.9\nPrint Str(i)", "-7\n"},
        {"Dim s As Single = 0.1\nDim d As Double = s\nPrint Str(d = 0.1)", "false\n"},
        {"Dim c As Currency = 9.95\nPrint Str(c)", "9.95\n"},
    });
}

TEST_F(Expressions, Comparisons)
{
    expectValues({
        {"1 < 2", "true"},
        {"2 <= 1", "false"},
        {"1 = 1.0", "true"},
        {"1 <> 2", "true"},
        {"\"a\" = \"A\"", "true"},
        {"\"Ä\" = \"ä\"", "true"},
        {"\"a\" < \"B\"", "true"},
        {"\"b\" >= \"B\"", "true"},
        {"True = False", "false"},
        {"&cFF0000 = &cff0000", "true"},
        {"New Date(2012, 2, 29) = New Date(2012, 2, 29)", "true"},
        {"New Date(2012, 2, 28) < New Date(2012, 2, 29)", "true"},
        {"New Dictionary = New Dictionary", "false"},
        {"New Dictionary <> Nil", "true"},
        {"New Dictionary Is Nil", "false"},
        {"Nil Is Nil", "true"},
        {"New Dictionary IsA Dictionary", "true"},
        {"New KeyNotFoundException IsA RuntimeException", "true"},
        {"New Dictionary IsA Date", "false"},
        {"Nil IsA Date", "false"},
    });
}

TEST_F(Expressions, Logic)
{
    expectValues({
        {"True And False", "false"},
        {"True Or False", "true"},
        {"True Xor True", "false"},
        {"Not True", "false"},
        {"Not False And False", "false"},
        {"Not (False And False)", "true"},
        {"False And False Or True", "true"},
        {"1 = 1 And 2 = 2", "true"},
        {"Not 1 = 2", "true"},
        {"6 And 3", "2"},
        {"6 Or 3", "7"},
        {"6 Xor 3", "5"},
        {"Not 0", "-1"},
    });
}

TEST_F(Expressions, AndAndOrStopWhenTheyAreDecided)
{
    const std::string said = "Function Said(value As Boolean) As Boolean\nPrint \"said\"\nReturn value\nEnd Function\n";
    expectOutputs({
        {said + "Print Str(False And Said(True))", "false\n"},
        {said + "Print Str(True Or Said(False))", "true\n"},
        {said + "Print Str(True And Said(True))", "said\ntrue\n"},
    });
}

TEST_F(Expressions, Functions)
{
    expectValues({
        {"Len(\"grüß\")", "4"},
        {"LenB(\"grüß\")", "6"},
        {"Left(\"grüße\", 3)", "grü"},
        {"Left(\"ab\", 9)", "ab"},
        {"Right(\"grüße\", 2)", "ße"},
        {"Right(\"ab\", 9)", "ab"},
        {"Mid(\"abcdef\", 3)", "cdef"},
        {"Mid(\"abcdef\", 3, 2)", "cd"},
        {"Mid(\"abc\", 9)", ""},
        {"Uppercase(\"grün\")", "GRÜN"},
        {"LOWERCASE(\"ÄÖ\")", "äö"},
        {"Trim(\"  a b \t\")", "a b"},
        {"InStr(\"Grüße\", \"SS\")", "0"},
        {"InStr(\"ÄB\", \"b\")", "2"},
        {"ReplaceAll(\"a-b-c\", \"-\", \"+\")", "a+b+c"},
        {"Join(Split(\"a,b,,c\", \",\"), \"|\")", "a|b||c"},
        {"Split(\"\", \",\").Ubound", "-1"},
        {"Chr(228) + Chr(65)", "äA"},
        {"Len(EndOfLine)", "1"},
        {"Val(\"12.5 apples\")", "12.5"},
        {"Val(\"none\")", "0"},
        {"Hex(255)", "FF"},
        {"Hex(-1)", "FFFFFFFF"},
        {"Abs(-3)", "3"},
        {"Min(2, 1)", "1"},
        {"Max(2, 1.5)", "2"},
        {"Floor(-1.5)", "-2"},
        {"Round(2.5)", "3"},
        {"RGB(1, 2, 255) = &c0102FF", "true"},
        {"GetFolderItem(\"/etc/hosts\").Name", "hosts"},
        {"GetFolderItem(\"/etc/hosts\").Exists", "true"},
        {"GetFolderItem(\"/no/such/folder/file\") = Nil", "true"},
    });
}

TEST_F(Expressions, VariantsAreWhatTheyHold)
{
    const std::string v = "Dim v, w As Variant\n";
    expectOutputs({
        {v + "v = 2\nw = 3\nPrint Str(v + w)\nPrint Str(VarType(v + w))", "5\n2\n"},
        {v + "v = 2\nw = 0.5\nPrint Str(v * w)", "1\n"},
        {v + "v = \"a\"\nw = \"b\"\nPrint v + w", "ab\n"},
        {v + "v = 5000000000\nw = 1\nPrint Str(v + w)", "5000000001\n"},
        {v + "v = \"12\"\nDim i As Integer = v\nPrint Str(i)", "12\n"},
        {v + "Dim i As Integer = v\nDim s As String = v\nPrint Str(i) + s + \".\"", "0.\n"},
        {v + "v = 7\nPrint v.StringValue + \" \" + Str(v.DoubleValue / 2) + \" \" + Str(v.Type)", "7 3.5 2\n"},
        {v + "Print v.StringValue + Str(v = Nil)", "true\n"},
        {v + "v = New Date(2012, 2, 29)\nDim d As Date = v\nPrint Str(v.DateValue Is d)", "true\n"},
        {v + "v = Array(1, 2)\nDim a() As Integer = v\nPrint Str(a(1))", "2\n"},
        {v + "v = True\nIf v Then Print \"yes\"", "yes\n"},
        {v + "v = 6\nw = 3\nIf v > w And v <> w Then Print Str(v \\ w) + Str(v Mod w) + Str(-v)", "20-6\n"},
    });
}
