// What is known of a name.
#include "host/script/help.h"
#include "tests/host/script/program.h"

using Help = script_test::Programs;
using testing::Contains;
using testing::ElementsAre;

TEST_F(Help, ShowsDeclarations)
{
    EXPECT_THAT(script::declarationsOf("sqrt"), ElementsAre("Sqrt(number As Double) As Double"));
    EXPECT_THAT(script::declarationsOf("InStr"),
                ElementsAre("InStr(text As String, find As String) As Integer",
                            "InStr(start As Integer, text As String, find As String) As Integer",
                            "String.InStr(start As Integer, find As String) As Integer"));
    EXPECT_THAT(script::declarationsOf("SQLDate"), ElementsAre("Date.SQLDate As String"));
    EXPECT_THAT(script::declarationsOf("Ubound"), ElementsAre("array.Ubound"));
    EXPECT_THAT(script::declarationsOf("dictionary"), Contains("Dictionary.HasKey(key As Variant) As Boolean"));
    EXPECT_THAT(script::declarationsOf("Date"), Contains("Date.Year As Integer"));
    EXPECT_THAT(script::declarationsOf("Date"), Contains("Date.SQLDate As String"));
    EXPECT_THAT(script::declarationsOf("no such name"), ElementsAre());
}
