// Functions, and members that the language adds to types and classes.
#include "tests/host/script/program.h"

using Library = script_test::Programs;

TEST_F(Library, LooksForTextsWithoutRegardToCase)
{
    expectValues({
        {"InStr(\"Grüße\", \"SS\")", "0"},
        {"InStr(\"Grüße\", \"ß\")", "4"},
        {"InStr(\"banana\", \"NA\")", "3"},
        {"InStr(4, \"banana\", \"na\")", "5"},
        {"\"banana\".InStr(4, \"na\")", "5"},
        {"InStr(6, \"banana\", \"na\")", "0"},
        {"Replace(\"aXbxc\", \"x\", \"-\")", "a-bxc"},
        {"ReplaceAll(\"aXbxc\", \"x\", \"--\")", "a--b--c"},
        {"ReplaceAll(\"abc\", \"\", \"-\")", "abc"},
        {"ReplaceAll(\"aaa\", \"aa\", \"b\")", "ba"},
        {"StrComp(\"a\", \"A\", 1)", "0"},
        {"StrComp(\"a\", \"A\", 0)", "1"},
        {"StrComp(\"a\", \"b\", 0)", "-1"},
        {"\"12 times\".Val + \"2.5\".CDbl", "14.5"},
    });
}

TEST_F(Library, TakesTextsApart)
{
    expectValues({
        {"NthField(\"a,b,,c\", \",\", 2)", "b"},
        {"NthField(\"a,b,,c\", \",\", 3)", ""},
        {"NthField(\"a,b,,c\", \",\", 9)", ""},
        {"NthField(\"a,b\", \",\", 0)", ""},
        {"CountFields(\"a,b,,c\", \",\")", "4"},
        {"CountFields(\"\", \",\")", "0"},
        {"Split(\"a b\").Ubound", "1"},
        {"Join(Split(\"grün\", \"\"), \"|\") + Str(Split(\"\", \"\").Ubound)", "g|r|ü|n-1"},
        {"Join(Array(\"a\", \"b\"))", "a b"},
        {"LTrim(\"  a \") + \".\"", "a ."},
        {"RTrim(\"  a \") + \".\"", "  a."},
        {"Trim(\" \") + Trim(\"\") + \".\"", "."},
        {"Titlecase(\"hello WORLD\")", "Hello World"},
        {"Mid(\"grüße\", 3)", "üße"},
        {"Mid(\"grüße\", 3, 2)", "üß"},
        {"Left(\"ab\", -1) + \".\"", "."},
    });
}

TEST_F(Library, KnowsCodesOfCharacters)
{
    expectValues({
        {"Asc(\"A\")", "65"},
        {"Asc(\"€\")", "8364"},
        {"Asc(\"👋\")", "128075"},
        {"Asc(\"\")", "0"},
        {"Chr(8364)", "€"},
        {"AscB(\"€\")", "226"},
        {"&u20AC", "€"},
        {"EncodeHex(\"aß\")", "61C39F"},
        {"DecodeHex(\"616263\")", "abc"},
    });
}

TEST_F(Library, CallsTextFunctionsAsMembers)
{
    expectValues({
        {"\" a \".Trim", "a"},
        {"\"abc\".Len", "3"},
        {"\"abc\".Left(2).Uppercase", "AB"},
        {"\"a,b\".NthField(\",\", 2)", "b"},
        {"\"a,b\".Split(\",\").Ubound", "1"},
        {"(\"a\" + \"b\").ReplaceAll(\"a\", \"c\")", "cb"},
    });
}

TEST_F(Library, Calculates)
{
    expectValues({
        {"Sqrt(9)", "3"},
        {"Ceil(1.2)", "2"},
        {"Floor(-1.2)", "-2"},
        {"Round(2.5)", "3"},
        {"Abs(-2)", "2"},
        {"Min(3, 1, 2)", "1"},
        {"Max(3, 1, 7)", "7"},
        {"Max(1, 2)", "2"},
        {"Pow(2, 3)", "8"},
        {"Sign(-3)", "-1"},
        {"Exp(0)", "1"},
        {"Log(1)", "0"},
        {"Rnd < 1", "true"},
        {"Oct(8)", "10"},
        {"Bin(5)", "101"},
        {"Hex(255)", "FF"},
        {"Hex(-1)", "FFFFFFFF"},
        {"Val(\"12abc\")", "12"},
        {"Val(\"&hFF\")", "255"},
        {"Val(\"inf\")", "0"},
        {"CDbl(\" 1.5\")", "1.5"},
        {"CStr(1.5)", "1.5"},
        {"IsNumeric(\"1e3\")", "true"},
        {"IsNumeric(\"x\")", "false"},
    });
}

TEST_F(Library, FormatsNumbers)
{
    expectValues({
        {"Format(1.784, \"#.##\")", "1.78"},
        {"Format(1.3, \"#.0000\")", "1.3000"},
        {"Format(5, \"0000\")", "0005"},
        {"Format(0.25, \"#%\")", "25%"},
        {"Format(145678.5, \"#,###.##\")", "145,678.5"},
        {"Format(145678.5, \"#.##e+\")", "1.46e+05"},
        {"Format(-3.7, \"-#.##\")", "-3.7"},
        {"Format(3.7, \"-#.##\")", "3.7"},
        {"Format(3.7, \"+#.##\")", "+3.7"},
        {"Format(-3.7, \"#.##;(#.##);\\z\\e\\r\\o\")", "(3.7)"},
        {"Format(0, \"#.##;(#.##);\\z\\e\\r\\o\")", "zero"},
        {"Format(0.5, \"0.00 \\k\\m\")", "0.50 km"},
        {"Format(0.5, \"#.#\")", ".5"},
        {"Format(0, \"#\")", "0"},
        {"Str(7, \"000\")", "007"},
    });
}

TEST_F(Library, ReadsColoursAndVariants)
{
    expectValues({
        {"RGB(1, 2, 3) = &c010203", "true"},
        {"RGB(1, 2, 3).Red", "1"},
        {"RGB(1, 2, 3).Green", "2"},
        {"RGB(1, 2, 3).Blue", "3"},
        {"VarType(5000000000) = Variant.TypeLong", "true"},
        {"VarType(\"\") = Variant.TypeString", "true"},
    });
    expectOutputs({
        {"Dim v As Variant\nPrint Str(v.IsNull) + Str(v.IsNumeric) + Str(v.IsArray)\nv = Array(1)\n"
         "Print Str(v.IsNull) + Str(v.IsArray)\nv = \"12\"\nPrint Str(v.IsNumeric)",
         "truefalsefalse\nfalsetrue\ntrue\n"},
    });
}

TEST_F(Library, ShowsDates)
{
    const std::string d = "Dim d As New Date(2012, 2, 29, 15, 4, 5)\n";
    expectOutputs({
        {d + "Print d.SQLDate + \" \" + d.SQLDateTime", "2012-02-29 2012-02-29 15:04:05\n"},
        {d + "Print d.ShortDate + \"|\" + d.AbbreviatedDate + \"|\" + d.LongDate",
         "2/29/12|Feb 29, 2012|Wednesday, February 29, 2012\n"},
        {d + "Print d.ShortTime + \"|\" + d.LongTime", "3:04 PM|3:04:05 PM\n"},
        {d + "Print Str(d.DayOfWeek) + \" \" + Str(d.DayOfYear) + \" \" + Str(d.WeekOfYear)", "4 60 9\n"},
        {"Print Str(New Date(2100, 3, 1).DayOfWeek)", "2\n"},
        {d + "d.SQLDate = \"2013-01-02\"\nPrint d.SQLDateTime", "2013-01-02 00:00:00\n"},
        {d + "Dim copy As New Date(d)\ncopy.Day = 1\nPrint d.SQLDate + copy.SQLDate", "2012-02-292012-02-01\n"},
        {"Dim d As New Date(2012, 5)\nPrint d.SQLDateTime", "2012-05-01 00:00:00\n"},
    });
}

TEST_F(Library, KeepsNumbersInMemoryBlocks)
{
    const std::string m = "Dim m As New MemoryBlock(8)\n";
    expectOutputs({
        {m + "m.Int8Value(0) = -1\nPrint Str(m.Int8Value(0)) + \" \" + Str(m.UInt8Value(0))", "-1 255\n"},
        {m + "m.Int16Value(0) = -2\nPrint Str(m.Int16Value(0)) + \" \" + Str(m.UInt16Value(0))", "-2 65534\n"},
        {m + "m.Int32Value(4) = -5\nPrint Str(m.Int32Value(4)) + \" \" + Str(m.UInt32Value(4)) + \" \" + "
             "Str(m.Byte(7))",
         "-5 4294967291 255\n"},
        {m + "m.Int64Value(0) = 5000000000\nPrint Str(m.Int64Value(0)) + \" \" + Str(m.UInt64Value(0))",
         "5000000000 5000000000\n"},
        {m + "m.SingleValue(0) = 0.5\nm.SingleValue(4) = 0.25\nPrint Str(m.SingleValue(0) + m.SingleValue(4))",
         "0.75\n"},
        {m + "m.DoubleValue(0) = 0.1\nPrint Str(m.DoubleValue(0))", "0.1\n"},
        {m + "m.BooleanValue(3) = True\nPrint Str(m.BooleanValue(3)) + Str(m.BooleanValue(2))", "truefalse\n"},
        {m + "m.CString(0) = \"abc\"\nPrint m.CString(0) + Str(m.Byte(3))", "abc0\n"},
        {m + "m.ColorValue(0) = &c010203\nPrint Str(m.ColorValue(0) = &c010203)", "true\n"},
        {m + "Try\nm.Int32Value(5) = 1\nCatch e As OutOfBoundsException\nPrint e.Message\nEnd Try",
         "The MemoryBlock has 8 bytes.\n"},
        {m + "m.LittleEndian = True\nm.Long(0) = 1\nPrint Str(m.LittleEndian) + Str(m.Byte(0))", "true1\n"},
        {m + "Try\nm.LittleEndian = False\nCatch e As UnsupportedOperationException\nPrint e.Message\nEnd Try",
         "MemoryBlocks begin with the lowest byte of a number here.\n"},
        {"Dim m As MemoryBlock = \"aß\"\nDim s As String = m\nPrint s + Str(m.Size)", "aß3\n"},
        {"Dim m As MemoryBlock\nTry\nPrint Str(m.Int8Value(0))\nCatch e As NilObjectException\nPrint \"nil\"\nEnd Try",
         "nil\n"},
    });
}

TEST_F(Library, FindsFiles)
{
    expectOutputs({
        {"Print GetFolderItem(\"/etc/hosts\", FolderItem.PathTypeShell).Name", "hosts\n"},
        {"Print GetFolderItem(\"file:///etc/my%20hosts\", FolderItem.PathTypeURL).ShellPath", "/etc/my hosts\n"},
        {"Print Str(GetFolderItem(\"\") = Nil)", "true\n"},
        {"Dim f As FolderItem = SpecialFolder.Temporary.Child(\"script test \" + Str(Ticks))\nf.CreateAsFolder\n"
         "Print Str(f.Exists) + Str(f.Directory) + Str(f.IsWriteable)\nf.Delete\nPrint Str(f.Exists)",
         "truetruetrue\nfalse\n"},
        {"Print GetFolderItem(\"/etc/my hosts\").URLPath", "file:///etc/my%20hosts\n"},
        {"Print Str(GetFolderItem(\"/etc/passwd\").Length > 0) + "
         "Str(GetFolderItem(\"/etc/passwd\").ModificationDate.Year > 2000)",
         "truetrue\n"},
    });
}

TEST_F(Library, WritesBytesAsText)
{
    expectValues({
        {"EncodeHex(DecodeBase64(EncodeBase64(ChrB(0) + ChrB(255) + \"a\")))", "00FF61"},
        {"EncodeBase64(\"hello\") + EncodeBase64(\"\") + \".\"", "aGVsbG8=."},
        {"DecodeBase64(\"aGVs\" + EndOfLine + \"bG8=\")", "hello"},
        {"Len(EncodeBase64(Join(Array(\"0123456789\", \"0123456789\", \"0123456789\", \"0123456789\", \"0123456789\", "
         "\"0123456789\"), \"\")))",
         "82"},
        {"ReplaceAll(EncodeBase64(\"0123456789\", 6), EndOfLine.Windows, \"|\")", "MDEyMz|Q1Njc4|OQ=="},
        {"EncodeBase64(\"0123456789\", 0)", "MDEyMzQ1Njc4OQ=="},
    });
}

TEST_F(Library, WorksBitByBit)
{
    expectValues({
        {"Hex(Bitwise.BitAnd(&hFF0, &h0FF)) + Hex(Bitwise.BitOr(1, 2, 4)) + Hex(Bitwise.BitXor(7, 2))", "F075"},
        {"Bitwise.OnesComplement(0)", "18446744073709551615"},
        {"Hex(Bitwise.ShiftLeft(&h81, 1)) + \" \" + Hex(Bitwise.ShiftLeft(&h81, 1, 8)) + \" \" + "
         "Hex(Bitwise.ShiftRight(&h181, 4, 8)) + \" \" + Hex(Bitwise.ShiftLeft(1, 64))",
         "102 2 8 0"},
    });
    expectOutputs({{"Dim flags As Integer = Bitwise.BitOr(1, 4)\nPrint Str(flags And 4)", "4\n"}});
}

TEST_F(Library, SpeaksToPeople)
{
    expectOutputs({
        {"MsgBox \"a\"\nMsgBox(\"b\")\nMsgBox (\"c\") + \"d\"\nPrint Str(MsgBox(\"e\", 36, \"Title\"))",
         "a\nb\ncd\ne\n1\n"},
        {"Print \"a\" + EndOfLine + \"b\" + Str(LenB(EndOfLine.Windows))", "a\nb2\n"},
    });
}

TEST_F(Library, TellsTheHostsVersion)
{
    expectValues({
        {"RBVersion", "2013.03"},
        {"RBVersionString", "2013r3"},
        {"TargetMacOS", "true"},
        {"TargetLinux", "false"},
        {"TargetWin32 Or TargetBigEndian Or DebugBuild", "false"},
    });
}

TEST_F(Library, AsksTheSystemForWhatItAnswersByReference)
{
    const std::string ask = "Dim values() As Integer = Array(1, 2)\nDim known As Boolean = System.Gestalt(\"";
    const std::string print = "\", values(1))\nPrint Str(known) + \" \" + Str(values(1))";
    expectOutputs({{ask + "sysa" + print, "true 10\n"}, {ask + "sys1" + print, "false 2\n"}});
    expectErrors({
        {"Call System.Gestalt(\"sysa\", 5)",
         "p:1:29: System.Gestalt(selector As String, ByRef response As Integer) As Boolean: response is passed ByRef "
         "and "
         "must be a variable that is an Integer\nCall System.Gestalt(\"sysa\", 5)\n                            ^\n"},
    });
}

TEST_F(Library, ComparesTextKeysOfDictionariesAsTexts)
{
    expectOutputs({
        {"Dim d As New Dictionary\nd.Value(\"Key\") = 1\nd.Value(\"KEY\") = 2\n"
         "Print Str(d.HasKey(\"key\")) + Str(d.Count) + Str(d.Lookup(\"kEY\", 9)) + d.Key(0)",
         "true12Key\n"},
        {"Dim d As New Dictionary\nd.Value(\"Größe\") = 1\nPrint Str(d.HasKey(\"GRÖßE\")) + Str(d.HasKey(\"Grosse\"))",
         "truefalse\n"},
    });
    EXPECT_FALSE(host::Host::shared().profile().caseInsensitiveKeys); // of a program only
}

TEST_F(Library, ArraysCanBeSearchedFromAnIndexOn)
{
    expectOutputs({
        {"Dim a() As String = Array(\"x\", \"y\", \"X\")\nPrint Str(a.IndexOf(\"X\")) + Str(a.IndexOf(\"x\", 1)) + "
         "Str(a.IndexOf(\"z\"))",
         "02-1\n"},
        {"Dim a() As Integer = Array(1, 2, 3)\na.Shuffle\na.Sort\nPrint Str(a(0)) + Str(a(2))", "13\n"},
        {"Dim a(2) As Integer\nRedim a(-1)\nPrint Str(Ubound(a))", "-1\n"},
    });
}
