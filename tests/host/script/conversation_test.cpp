// Lines that share what they declare.
#include "host/script/script.h"
#include "tests/host/script/program.h"

using script::Conversation;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

class Conversations : public script_test::Programs {
protected:
    script_test::Ran enter(const std::string &text, Conversation::Answer expected = Conversation::Answer::Done)
    {
        SCOPED_TRACE(text);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(int(conversation->enter(text)), int(expected));
        script_test::Ran ran;
        ran.output = testing::internal::GetCapturedStdout();
        ran.errors = testing::internal::GetCapturedStderr();
        return ran;
    }
    void SetUp() override
    {
        script_test::Programs::SetUp();
        conversation = std::make_unique<Conversation>();
    }
    void TearDown() override
    {
        conversation.reset();
        script_test::Programs::TearDown();
    }

    std::unique_ptr<Conversation> conversation;
};

} // namespace

TEST_F(Conversations, PrintTheValueOfAnExpression)
{
    EXPECT_EQ(enter("1 + 2").output, "3\n");
    EXPECT_EQ(enter("\"a\"\"b\"").output, "\"a\"\"b\"\n");
    EXPECT_EQ(enter("Nil").output, "nil\n");
    EXPECT_EQ(enter("1 = 1").output, "true\n");
    EXPECT_EQ(enter("Array(1, 2)").output, "[1, 2]\n");
    EXPECT_EQ(enter("Call Len(\"abc\")").output, "");
    EXPECT_EQ(enter("Len(\"abc\")").output, "3\n");
    EXPECT_EQ(enter("").output, "");
}

TEST_F(Conversations, KeepVariablesMethodsAndClasses)
{
    enter("Dim n As Integer = 4");
    enter("Function Twice(i As Integer) As Integer\nReturn i * 2\nEnd Function");
    enter("n = Twice(n)");
    EXPECT_EQ(enter("n").output, "8\n");
    enter("Class Own\nDim Text As String = \"t\"\nEnd Class");
    enter("Dim o As New Own");
    EXPECT_EQ(enter("o.Text").output, "\"t\"\n");
}

TEST_F(Conversations, AVariableCanBeDeclaredAnew)
{
    enter("Dim n As Integer = 4");
    enter("Function Old() As Integer\nReturn n\nEnd Function");
    enter("Dim n As String = \"text\"");
    EXPECT_EQ(enter("n").output, "\"text\"\n");
    EXPECT_EQ(enter("Old").output, "4\n");
}

TEST_F(Conversations, AMethodCanBeDeclaredAnew)
{
    enter("Function Size() As Integer\nReturn 1\nEnd Function");
    enter("Function Twice() As Integer\nReturn Size * 2\nEnd Function");
    enter("Function Size() As Integer\nReturn 5\nEnd Function");
    EXPECT_EQ(enter("Size").output, "5\n");
    EXPECT_EQ(enter("Twice").output, "2\n"); // what knew the old one keeps it, as with variables
}

TEST_F(Conversations, WantMoreUntilABlockIsClosed)
{
    using Answer = Conversation::Answer;
    for (const char *open : {"If True Then", "If True Then\nPrint \"a\"\nElse", "For i As Integer = 1 To 2\n", "Sub S",
                             "Class C\nDim a As Integer", "Try\nPrint \"a\"", "Print Str(1 +", "Select Case 1\nCase 1"})
        EXPECT_EQ(enter(open, Answer::WantsMore).errors, "");
    EXPECT_EQ(enter("For i As Integer = 1 To 2\nPrint Str(i)\nNext").output, "1\n2\n");
}

TEST_F(Conversations, AMistakeLeavesEverythingAsItWas)
{
    using Answer = Conversation::Answer;
    EXPECT_EQ(enter("Dim n As Integer = \"a\"", Answer::Mistaken).errors,
              "input:1:20: \"n\" must be an Integer, not a String\nDim n As Integer = \"a\"\n                   ^~~\n");
    EXPECT_EQ(enter("n", Answer::Mistaken).errors, "input:1:1: there is nothing named \"n\"\nn\n^\n");
    enter("Class Own\nDim a As Nowhere\nEnd Class", Answer::Mistaken);
    enter("Class Own\nDim a As Integer\nEnd Class");
    EXPECT_EQ(enter("Print )", Answer::Mistaken).errors,
              "input:1:7: expected a value, found \")\"\nPrint )\n      ^\n");
}

TEST_F(Conversations, AnExceptionEndsItsLineOnly)
{
    using Answer = Conversation::Answer;
    enter("Dim d As Dictionary\nSub Fail\nd.Clear\nEnd Sub");
    EXPECT_EQ(enter("Fail", Answer::Failed).errors, "input:3:1: NilObjectException: This is Nil.\nd.Clear\n^\n"
                                                    "  in Fail, called at input:1:1\n");
    enter("d = New Dictionary");
    EXPECT_EQ(enter("d.Count").output, "0\n");
}

TEST_F(Conversations, CompleteMembersAndNames)
{
    EXPECT_THAT(conversation->completions("d.intege"), ElementsAre("integerForKey"));
    enter("Dim d As NSUserDefaultsKTZ");
    enter("Dim dates() As Date");
    enter("Dim any As Variant");
    enter("Class Own\nDim Field As Integer\nSub Method\nEnd Sub\nEnd Class");
    enter("Dim own1 As Own");
    EXPECT_THAT(conversation->completions("x = d.setB"), ElementsAre("setBoolValue"));
    EXPECT_THAT(conversation->completions("d."), Contains("synchronize"));
    EXPECT_THAT(conversation->completions("d."), Not(Contains("standardUserDefaults")));
    EXPECT_THAT(conversation->completions("NSUserDefaultsKTZ.standard"), ElementsAre("standardUserDefaults"));
    EXPECT_THAT(conversation->completions("dates.U"), ElementsAre("Ubound"));
    EXPECT_THAT(conversation->completions("any.string"), ElementsAre("StringValue"));
    EXPECT_THAT(conversation->completions("own1."), ElementsAre("Field", "Method"));
    EXPECT_THAT(conversation->completions("dat"), ElementsAre("Date", "dates"));
    EXPECT_THAT(conversation->completions("Print Upp"), ElementsAre("Uppercase"));
    EXPECT_THAT(conversation->completions("whi"), ElementsAre("While"));
    EXPECT_THAT(conversation->completions("zzz"), ElementsAre());
    enter("Dim text As String");
    enter("Enum Quality\nDraft\nBest\nEnd Enum");
    EXPECT_THAT(conversation->completions("text.Tr"), ElementsAre("Trim"));
    EXPECT_THAT(conversation->completions("Print SpecialFolder.T"), ElementsAre("Temporary"));
    EXPECT_THAT(conversation->completions("Quality."), ElementsAre("Best", "Draft"));
}

TEST_F(Conversations, MistakesNameTheirLine)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(conversation->enter("For i As Integer = 1 To 2\nPrint i\nNext", 5), Conversation::Answer::Mistaken);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "input:6:7: what is printed must be a String, not an Integer\nPrint i\n      ^\n");
    EXPECT_EQ(conversation->mistakenLine(), 6u);
}

TEST_F(Conversations, TellTheirVariables)
{
    enter("Dim n As Integer = 4, names() As String = Array(\"a\")");
    enter("Dim d As Date");
    EXPECT_THAT(conversation->variables(),
                ElementsAre("d As Date = nil", "n As Integer = 4", "names As String() = [\"a\"]"));
    EXPECT_TRUE(conversation->knows("NAMES"));
    EXPECT_FALSE(conversation->knows("vars"));
}

TEST_F(Conversations, TakeCallsWithoutBrackets)
{
    enter("Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults");
    enter("d.setIntegerValue \"x\", 7");
    EXPECT_EQ(enter("d.integerForKey(\"x\")").output, "7\n");
    enter("Sub Say(a As String, b As String)\nPrint a + b\nEnd Sub");
    EXPECT_EQ(enter("Say \"a\", \"b\"").output, "ab\n");
    EXPECT_EQ(enter("MsgBox \"text\"").output, "text\n");
    EXPECT_EQ(enter("Call Len(\"a\")").output, "");
    EXPECT_EQ(enter("d IsA NSUserDefaultsKTZ").output, "true\n");
    EXPECT_EQ(enter("Len(\"a\") + 1").output, "2\n");
    EXPECT_EQ(enter("d.integerForKey(\"x\") = 7").output, ""); // stores, as in a program
    EXPECT_EQ(enter("#If TargetMacOS\nPrint \"mac\"\n#EndIf").output, "mac\n");
}
