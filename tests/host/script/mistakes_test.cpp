// What is found before anything runs. Each sample is a line, the mistake's column and width, and the message.
#include <algorithm>

#include "tests/host/script/program.h"

namespace {

struct Mistake {
    const char *line;
    int column;
    int width;
    const char *message;
};

class Mistakes : public script_test::Programs {
protected:
    // The mistakes stand in the last line, behind a Print that must not run.
    static void expectMistakes(const std::vector<Mistake> &mistakes, const std::string &declarations = "")
    {
        std::string before = "Print \"never\"\n" + declarations;
        auto lineNumber = std::count(before.begin(), before.end(), '\n') + 1;
        std::vector<script_test::Sample> samples;
        for (const Mistake &mistake : mistakes)
            samples.push_back({before + mistake.line, "p:" + std::to_string(lineNumber) + ":" +
                                                          std::to_string(mistake.column) + ": " + mistake.message +
                                                          "\n" + mistake.line + "\n" +
                                                          std::string(size_t(mistake.column - 1), ' ') + "^" +
                                                          std::string(size_t(mistake.width - 1), '~') + "\n"});
        expectErrors(samples);
    }
};

} // namespace

TEST_F(Mistakes, InWordsAndSigns)
{
    expectMistakes({
        {"Print \"open", 7, 5, "this text has no closing quotation mark on its line"},
        {"Print Str(12ab)", 11, 4, "\"12ab\" is no number"},
        {"Print Str(&hXY)", 11, 4, "\"&hXY\" is no literal; they begin with &h, &b, &o, &c or &u"},
        {"Print Str(&b12)", 11, 4, "\"&b12\" is no literal; they begin with &h, &b, &o, &c or &u"},
        {"Print \"a\" & \"b\"", 11, 1, "\"&\" does not join texts here; write +"},
        {"Print Str(&cFFF)", 11, 5, "a colour has six digits, &cRRGGBB"},
        {"Print Str(1 # 2)", 13, 1, "\"#\" has no meaning here"},
        {"Print Str(99999999999999999999)", 11, 20, "99999999999999999999 is too large for an integer of 64 bits"},
    });
}

TEST_F(Mistakes, InTheGrammar)
{
    expectMistakes({
        {"Dim x", 6, 1, "expected As after the name of a variable, found the end"},
        {"Dim As Integer", 5, 2, "\"As\" is a word of the language and cannot be the name of a variable"},
        {"Dim 5 As Integer", 5, 1, "expected the name of a variable, found \"5\""},
        {"Dim x As", 9, 1, "expected the name of a type, found the end"},
        {"Dim x As Integer = ", 20, 1, "expected a value, found the end"},
        {"Const k", 8, 1, "expected \"=\" after the name of a constant, found the end"},
        {"Print Str(1", 12, 1, "expected \")\" after the arguments, found the end"},
        {"Print (\"a\"", 11, 1, "expected \")\" after the expression in brackets, found the end"},
        {"Print \"a\" \"b\"", 11, 3, "expected the end of the line, found \"\"b\"\""},
        {"Print \"a\".", 11, 1, "expected the name of a member after \".\", found the end"},
        {"If True", 8, 1, "expected Then after the condition, found the end"},
        {"If True Then", 1, 2, "this If has no End If"},
        {"For i As Integer = 1 To 2", 1, 3, "this For has no Next"},
        {"For i As Integer = 1", 21, 1, "expected To after the first value of For, found the end"},
        {"For Each s As String", 21, 1, "expected In after the variable of For Each, found the end"},
        {"While True", 1, 5, "this While has no Wend"},
        {"Do", 1, 2, "this Do has no Loop"},
        {"Try", 1, 3, "this Try has no End Try"},
        {"Select Case 1", 14, 1, "expected End after the statements, found the end"},
        {"Sub S", 1, 3, "this Sub has no End Sub"},
        {"Function F() As Integer", 1, 8, "this Function has no End Function"},
        {"Function F()", 13, 1, "expected As after the parameters of a Function, found the end"},
        {"Sub S(a)", 8, 1, "expected As after the name of a parameter, found \")\""},
        {"Class C", 1, 5, "this Class has no End Class"},
        {"Wend", 1, 4, "expected a statement, found \"Wend\""},
        {"5", 1, 1, "a value alone is no statement"},
        {"= 5", 1, 1, "expected a value, found \"=\""},
        {"Redim x", 7, 1, "Redim takes an array with its new upper bound, as in Redim names(9)"},
        {"New = 5", 1, 3, "expected a statement, found \"New\""},
        {"Dim Print As Integer", 5, 5, "\"Print\" is a word of the language and cannot be the name of a variable"},
    });
}

TEST_F(Mistakes, OfBlocksThatEndWithAnotherWord)
{
    expectErrors({
        {"If True Then\nPrint \"a\"\nEnd Sub", "p:3:5: expected If after End, found \"Sub\"\nEnd Sub\n    ^~~\n"},
        {"Try\nPrint \"a\"\nEnd Try",
         "p:3:1: expected Catch or Finally after the statements of Try, found \"End\"\nEnd Try\n^~~\n"},
        {"Class C\nPrint \"a\"\nEnd Class",
         "p:2:1: expected Dim, Const, Sub, Function or End Class, found \"Print\"\nPrint \"a\"\n^~~~~\n"},
        {"If True Then Print \"a\"\nEnd If", "p:2:1: expected a statement, found \"End\"\nEnd If\n^~~\n"},
    });
}

TEST_F(Mistakes, OfNestingWithoutEnd)
{
    script_test::Ran ran = run("Print Str(" + std::string(5000, '(') + "1");
    EXPECT_FALSE(ran.isDone);
    EXPECT_NE(ran.errors.find(": this is nested too deeply\n"), std::string::npos);
    ran = run("Print Str(" + std::string(5000, '-') + "1)");
    EXPECT_NE(ran.errors.find(": this is nested too deeply\n"), std::string::npos);
}

TEST_F(Mistakes, InNames)
{
    const std::string declarations = "Dim dic As Dictionary\nDim list() As String\nDim number As Integer\n"
                                     "Dim any As Variant\nConst kMost = 5\nSub Show(text As String)\nEnd Sub\n";
    expectMistakes(
        {
            {"Print unknownThing", 7, 12, "there is nothing named \"unknownThing\""},
            {"Print Str(nmber)", 11, 5, "there is nothing named \"nmber\"; did you mean \"number\"?"},
            {"number = numbr", 10, 5, "there is nothing named \"numbr\"; did you mean \"number\"?"},
            {"Sho(\"x\")", 1, 3, "there is nothing named \"Sho\"; did you mean \"Show\"?"},
            {"Dim x As Intger", 10, 6, "there is no type \"Intger\"; did you mean \"Integer\"?"},
            {"Dim x As Zyxwvu", 10, 6, "there is no type \"Zyxwvu\""},
            {"Dim x() As Byte", 12, 4, "there are no arrays of Byte"},
            {"Dim x() As String()", 5, 1, "there are no arrays of arrays"},
            {"Dim x As Ptr", 10, 3, "Types of system functions are not part of this language here"},
            {"Dim number As String", 5, 6, "there is a variable \"number\" already"},
            {"Dim show As String", 5, 4, "there is a \"show\" already"},
            {"dic.HasKy(1)", 5, 5, "Dictionary has no member \"HasKy\"; did you mean \"HasKey\"?"},
            {"Print dic.Nonsense", 11, 8, "Dictionary has no member \"Nonsense\""},
            {"list.Apend \"x\"", 6, 5, "an array has no member \"Apend\"; did you mean \"Append\"?"},
            {"Print number.Text", 14, 4, "an Integer has no members"},
            {"Print any.Append", 11, 6,
             "a Variant has no member \"Append\"; assign it to a variable of its class first"},
            {"dic = New Dictionry", 11, 9, "there is no class \"Dictionry\"; did you mean \"Dictionary\"?"},
            {"Print Str(dic IsA Dictionry)", 19, 9, "there is no class \"Dictionry\"; did you mean \"Dictionary\"?"},
            {"Print Dictionary", 7, 10, "\"Dictionary\" is a class; New makes an object of it"},
            {"kMost = 6", 1, 5, "\"kMost\" is a constant"},
            {"dic.Count = 1", 5, 5, "\"Count\" of Dictionary can only be read"},
            {"Show = \"x\"", 1, 4, "Show(text As String): cannot be assigned to"},
            {"1 = 2", 1, 1, "nothing can be assigned to this"},
            {"Print Self", 7, 4, "Self is known in the methods of a class only"},
            {"Exit", 1, 4, "Exit stands in a loop only here"},
            {"Continue", 1, 8, "Continue stands in a loop only here"},
        },
        declarations);
}

TEST_F(Mistakes, InTypes)
{
    const std::string declarations = "Dim dic As Dictionary\nDim list() As String\nDim number As Integer\n"
                                     "Dim day As Date\nDim yes As Boolean\n"
                                     "Function Half(n As Double) As Double\nReturn n / 2\nEnd Function\n";
    expectMistakes(
        {
            {"Dim x As Integer = \"5\"", 20, 3, "\"x\" must be an Integer, not a String"},
            {"Dim x As String = 5", 19, 1, "\"x\" must be a String, not an Integer"},
            {"Dim x As String = Nil", 19, 3, "\"x\" must be a String, not Nil"},
            {"Dim x As Boolean = 1", 20, 1, "\"x\" must be a Boolean, not an Integer"},
            {"Dim x As Color = 255", 18, 3, "\"x\" must be a Color, not an Integer"},
            {"Dim x As Date = New Dictionary", 17, 14, "\"x\" must be a Date, not a Dictionary"},
            {"Dim x() As String = Array(\"a\", 1)", 32, 1, "an element must be a String, not an Integer"},
            {"Dim x() As Integer = list", 22, 4, "\"x\" must be an Integer(), not a String()"},
            {"Dim x As Byte = 256", 17, 3, "\"x\" does not fit a Byte"},
            {"Dim x As Byte = -1", 17, 2, "\"x\" does not fit a Byte"},
            {"number = 3000000000", 10, 10, "\"number\" does not fit an Integer"},
            {"number = list", 10, 4, "\"number\" must be an Integer, not a String()"},
            {"list(\"a\") = \"b\"", 6, 3, "the index must be an Integer, not a String"},
            {"list(0) = 5", 11, 1, "\"list\" must be a String, not an Integer"},
            {"list(0, 1) = \"x\"", 1, 4, "arrays of more than one dimension are not part of this language here"},
            {"number(0) = 5", 1, 6, "\"number\" is an Integer, which takes no arguments"},
            {"Print Str(1 + \"a\")", 13, 1, "+ needs two numbers or two texts, not an Integer and a String"},
            {"Print \"a\" - \"b\"", 11, 1, "- needs two numbers, not a String and a String"},
            {"Print Str(dic * 2)", 15, 1, "* needs two numbers, not a Dictionary and an Integer"},
            {"Print Str(yes / 2)", 15, 1, "/ needs two numbers, not a Boolean and an Integer"},
            {"Print Str(1 = \"1\")", 13, 1, "= needs values of one type, not an Integer and a String"},
            {"Print Str(dic = day)", 15, 1, "= needs values of one type, not a Dictionary and a Date"},
            {"Print Str(dic < dic)", 15, 1,
             "< needs two numbers, two texts or two Dates, not a Dictionary and a Dictionary"},
            {"Print Str(1 Is 1)", 13, 2, "Is needs two objects, not an Integer and an Integer"},
            {"Print Str(1 IsA Date)", 11, 1, "IsA needs an object, not an Integer"},
            {"Print Str(yes And 1)", 15, 3, "And needs two Booleans or two integers, not a Boolean and an Integer"},
            {"Print Str(Not \"a\")", 15, 3, "Not needs a Boolean, not a String"},
            {"Print Str(-\"a\")", 12, 3, "- needs a number, not a String"},
            {"Print 5", 7, 1, "what is printed must be a String, not an Integer"},
            {"Assert(1)", 8, 1, "the condition must be a Boolean, not an Integer"},
            {"Assert(yes, 1)", 13, 1, "the message must be a String, not an Integer"},
            {"If 1 Then Print \"a\"", 4, 1, "the condition must be a Boolean, not an Integer"},
            {"Raise dic", 7, 3, "what is raised must be a RuntimeException, not a Dictionary"},
            {"Return 5", 8, 1, "the program returns no value"},
            {"Redim number(5)", 7, 6, "Redim needs an array, not an Integer"},
            {"Half(1)", 1, 4, "the result of Half is not used; write Call in front to leave it"},
            {"Print Half(\"a\")", 12, 3, "Half(n As Double) As Double: n must be a Double, not a String"},
            {"Print Str(Half(1, 2))", 11, 4, "Half(n As Double) As Double: takes 1 argument, not 2"},
            {"Print Left(\"a\")", 7, 4, "Left(text As String, count As Integer) As String: takes 2 arguments, not 1"},
            {"Print Date(dic).SQLDateTime", 12, 3, "a Dictionary is never a Date"},
            {"day = New Date(1, 2, 3, 4, 5, 6, 7)", 11, 4,
             "Date(year, month, day, hour, minute, second): takes 1 to 6 arguments, not 7"},
            {"dic = New Dictionary(5)", 7, 17, "Dictionary has no constructor with arguments"},
            {"day.Year = \"2012\"", 12, 6, "\"Year\" must be an Integer, not a String"},
            {"number", 1, 6, "a value alone is no statement"},
        },
        declarations);
}

TEST_F(Mistakes, InCallsOfThePlugin)
{
    const std::string d = "Dim d As NSUserDefaultsKTZ\n";
    expectMistakes(
        {
            {"d.integerForKey(\"n\") = \"five\"", 24, 6,
             "integerForKey(key as string) as integer: the assigned value must be an Integer, not a String"},
            {"d.setIntegerValue(\"n\", \"five\")", 24, 6,
             "setIntegerValue(key as string, value as integer): value must be an Integer, not a String"},
            {"d.setIntegerValue 5, 5", 19, 1,
             "setIntegerValue(key as string, value as integer): key must be a String, not an Integer"},
            {"d.integerForKey(\"n\") = 3000000000", 24, 10,
             "integerForKey(key as string) as integer: the assigned value does not fit an Integer"},
            {"d.integerForKey() = 5", 3, 13, "integerForKey(key as string) as integer: takes 1 argument, not 0"},
            {"d.integrForKey(\"n\") = 5", 3, 12,
             "NSUserDefaultsKTZ has no member \"integrForKey\"; did you mean \"integerForKey\"?"},
            {"d.stringArrayForKey(\"a\") = Array(\"x\")", 3, 17,
             "stringArrayForKey(key as string) as string(): cannot be assigned to; "
             "setStringArrayValue(key as string, values() as string) stores one"},
            {"d.synchronize", 3, 11, "the result of synchronize is not used; write Call in front to leave it"},
            {"d.NSGlobalDomain = \"x\"", 3, 14,
             "\"NSGlobalDomain\" is a method of the class: NSUserDefaultsKTZ.NSGlobalDomain"},
            {"NSUserDefaultsKTZ.synchronise", 19, 11, "the class NSUserDefaultsKTZ has no member \"synchronise\""},
            {"NSUserDefaultsKTZ.synchronize", 19, 11,
             "\"synchronize\" is a method of NSUserDefaultsKTZ objects, not of the class"},
            {"d = New NSUserDefaultsKTZ(5)", 27, 1,
             "Constructor(username as string): username must be a String, not an Integer"},
            {"d.registerDefaults(Nil, 1)", 3, 16, "registerDefaults(dic as dictionary): takes 1 argument, not 2"},
            {"d.setStringArrayValue(\"a\", Array(1, 2))", 34, 1, "an element must be a String, not an Integer"},
        },
        d);
}

TEST_F(Mistakes, InDeclarations)
{
    expectErrors({
        {"Function F() As Integer\nReturn\nEnd Function", "p:2:1: Return needs an Integer here\nReturn\n^~~~~~\n"},
        {"Function F() As Integer\nReturn \"a\"\nEnd Function",
         "p:2:8: the result must be an Integer, not a String\nReturn \"a\"\n       ^~~\n"},
        {"Sub S\nReturn 5\nEnd Sub", "p:2:8: a Sub returns no value\nReturn 5\n       ^\n"},
        {"Sub S\nEnd Sub\nSub s\nEnd Sub",
         "p:3:5: there is a \"s\" already; overloaded methods are not part of this language here\nSub s\n    ^\n"},
        {"Class Dictionary\nEnd Class",
         "p:1:7: the host has a class \"Dictionary\" already\nClass Dictionary\n      ^~~~~~~~~~\n"},
        {"Class C Inherits Nowhere\nEnd Class",
         "p:1:18: there is no class \"Nowhere\"\nClass C Inherits Nowhere\n                 ^~~~~~~\n"},
        {"Class C\nDim a As Integer\nDim A As String\nEnd Class",
         "p:3:5: there is a \"A\" already\nDim A As String\n    ^\n"},
        {"Class C\nSub A\nEnd Sub\nSub a\nEnd Sub\nEnd Class",
         "p:4:5: there is a \"a\" already; overloaded methods are not part of this language here\nSub a\n    ^\n"},
        {"Try\nPrint \"a\"\nCatch e As Date\nEnd Try",
         "p:3:12: \"Date\" is no class of exceptions\nCatch e As Date\n           ^~~~\n"},
        {"For s As String = 1 To 2\nNext",
         "p:1:5: For counts with a number, not with a String\nFor s As String = 1 To 2\n    ^\n"},
        {"For Each s As String In 5\nNext",
         "p:1:25: For Each needs an array, not an Integer\nFor Each s As String In 5\n                        ^\n"},
        {"For Each s As String In Array(1)\nNext",
         "p:1:10: the array's elements are an Integer each, not a String\nFor Each s As String In Array(1)\n"
         "         ^\n"},
        {"Select Case 1\nCase \"a\"\nEnd Select",
         "p:2:6: the value must be an Integer, not a String\nCase \"a\"\n     ^~~\n"},
    });
}

TEST_F(Mistakes, AreAllReportedInTheirOrder)
{
    expectErrors({
        {"Dim x As Integer = \"a\"\nSub S\nPrint 1\nEnd Sub\nPrint y\nx = \"b\"",
         "p:1:20: \"x\" must be an Integer, not a String\nDim x As Integer = \"a\"\n                   ^~~\n"
         "p:3:7: what is printed must be a String, not an Integer\nPrint 1\n      ^\n"
         "p:5:7: there is nothing named \"y\"\nPrint y\n      ^\n"
         "p:6:5: \"x\" must be an Integer, not a String\nx = \"b\"\n    ^~~\n"},
    });
}

TEST_F(Mistakes, InATypeAreToldOnceAndNotAtEachUseOfWhatHasIt)
{
    expectErrors({
        {"Dim s As Timer, t() As Timer\ns.Mode = 1\nPrint t(0).Name + Str(s)",
         "p:1:10: \"Timer\" is not part of this language here\nDim s As Timer, t() As Timer\n         ^~~~~\n"
         "p:1:24: \"Timer\" is not part of this language here\nDim s As Timer, t() As Timer\n                       "
         "^~~~~\n"},
        {"For Each s As Timer In Array(1)\ns.Reset\nNext",
         "p:1:15: \"Timer\" is not part of this language here\nFor Each s As Timer In Array(1)\n              ^~~~~\n"},
        {"Sub Add(t As Timer)\nt.Reset\nEnd Sub\nAdd(Nil)",
         "p:1:14: \"Timer\" is not part of this language here\nSub Add(t As Timer)\n             ^~~~~\n"},
        {"Function Made() As Timer\nReturn Nil\nEnd Function\nMade.Reset",
         "p:1:20: \"Timer\" is not part of this language here\nFunction Made() As Timer\n                   ^~~~~\n"},
        {"Class Own\nDim T As Timer\nDim N As Integer = \"n\"\nEnd Class\nDim o As New Own\no.T.Reset\nPrint Str(o.N)",
         "p:2:10: \"Timer\" is not part of this language here\nDim T As Timer\n         ^~~~~\n"
         "p:3:20: \"N\" must be an Integer, not a String\nDim N As Integer = \"n\"\n                   ^~~\n"},
    });
}

TEST_F(Mistakes, AProgramOfMethodsAloneWouldDoNothing)
{
    expectErrors({
        {"Sub Main\nPrint \"hi\"\nEnd Sub",
         "p:1:5: nothing runs: no statement stands outside of the methods\nSub Main\n    ^~~~\n"},
    });
    expectOutputs({{"", ""}, {"Sub Main\nPrint \"hi\"\nEnd Sub\nMain", "hi\n"}});
}

TEST_F(Mistakes, ColumnsCountCharactersAndTabsStay)
{
    expectErrors({
        {"Dim s As String = \"grüß\" + 5",
         "p:1:26: + needs two numbers or two texts, not a String and an Integer\nDim s As String = \"grüß\" + 5\n"
         "                         ^\n"},
        {"If True Then\n\tPrint\t5\nEnd If",
         "p:2:8: what is printed must be a String, not an Integer\n\tPrint\t5\n\t     \t^\n"},
        {"Print grün", "p:1:7: there is nothing named \"grün\"\nPrint grün\n      ^~~~\n"},
    });
}
