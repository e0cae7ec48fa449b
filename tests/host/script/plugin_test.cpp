// The plug-in's class in programs.
#include "tests/host/script/program.h"
#include "tests/support/log_capture.h"

using PluginInPrograms = script_test::Programs;

static const std::string d = "Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults\n";

TEST_F(PluginInPrograms, AccessorsInBothForms)
{
    expectOutputs({
        {d + "d.integerForKey(\"n\") = 5\nd.setIntegerValue(\"m\", 6)\nd.setIntegerValue \"o\", 7\n"
             "Print Str(d.integerForKey(\"n\") + d.integerForKey(\"m\") + d.integerForKey(\"o\"))",
         "18\n"},
        {d + "d.floatForKey(\"f\") = 0.1\nd.doubleForKey(\"d\") = 0.1\nPrint Str(d.floatForKey(\"f\")) + \" \" + "
             "Str(d.doubleForKey(\"d\"))",
         "0.1 0.1\n"},
        {d + "d.boolForKey(\"b\") = True\nPrint Str(d.boolForKey(\"b\")) + Str(d.boolForKey(\"none\"))", "truefalse\n"},
        {d + "d.stringForKey(\"s\") = \"grüß dich 👋\"\nPrint d.stringForKey(\"s\") + d.stringForKey(\"none\")",
         "grüß dich 👋\n"},
        {d + "d.URLForKey(\"u\") = \"http://example.com/a\"\nPrint d.urlforkey(\"u\")", "http://example.com/a\n"},
        {d + "d.fileForKey(\"f\") = GetFolderItem(\"/etc/hosts\")\nPrint d.fileForKey(\"f\").ShellPath",
         "/etc/hosts\n"},
        {d + "Dim m As New MemoryBlock(2)\nm.Byte(1) = 255\nd.dataForKey(\"m\") = m\n"
             "Print Str(d.dataForKey(\"m\").Byte(1)) + Str(d.dataForKey(\"m\").Size)",
         "2552\n"},
        {d + "d.setStringArrayValue(\"a\", Array(\"x\", \"y\"))\nPrint Join(d.stringArrayForKey(\"a\"), \"+\")",
         "x+y\n"},
        {d + "d.setArrayValue(\"a\", Array(1, 2))\nDim a() As Variant = d.arrayForKey(\"a\")\nPrint a(1)", "2\n"},
        {d + "d.variantForKey(\"v\") = New Date(2012, 2, 29, 12, 0, 0)\nDim w As Date = d.variantForKey(\"v\")\n"
             "Print w.SQLDateTime",
         "2012-02-29 12:00:00\n"},
        {d + "Dim w As New Dictionary\nw.Value(\"k\") = Array(\"a\")\nd.dictionaryForKey(\"w\") = w\n"
             "Print Str(d.dictionaryForKey(\"w\").Count) + Str(d.dictionaryForKey(\"none\") = Nil)",
         "1true\n"},
    });
}

TEST_F(PluginInPrograms, SharedMembersAndObjects)
{
    expectOutputs({
        {"Print NSUserDefaultsKTZ.NSGlobalDomain", "NSGlobalDomain\n"},
        {d + "Print Str(d Is NSUserDefaultsKTZ.standardUserDefaults)", "true\n"},
        {"Dim e As New NSUserDefaultsKTZ\nPrint Str(e Is NSUserDefaultsKTZ.standardUserDefaults)", "false\n"},
        {"Dim e As New NSUserDefaultsKTZ(\"nobody-has-this-name\")\nPrint Str(e.synchronize)", "false\n"},
        {d + "Print Str(d._exception = Nil)", "true\n"},
        {d + "Call d.synchronize\nNSUserDefaultsKTZ.resetStandardUserDefaults", ""},
    });
}

TEST_F(PluginInPrograms, OverloadsAreChosenByTheirArguments)
{
    expectOutputs({
        {d + "Print Str(d.objectIsForcedForKey(\"k\")) + Str(d.objectIsForcedForKey(\"k\", \"domain\"))",
         "falsefalse\n"},
    });
}

TEST_F(PluginInPrograms, ExceptionsArriveInTheProgram)
{
    support::LogCapture log;
    expectOutputs({
        {d + "Try\nd.Constructor\nCatch e As UnsupportedOperationException\nPrint e.Message\nEnd Try",
         "Constructor called too often. Object is already initialized.\n"},
        {d + "Class Own\nEnd Class\nTry\nd.variantForKey(\"k\") = New Own\nCatch e As NSExceptionKTZ\nPrint e.name\n"
             "End Try",
         "NSInvalidArgumentException\n"},
    });
    script_test::Ran ran = run(d + "d.setVolatileDomain(New Dictionary, \"V\")\n"
                                   "d.setVolatileDomain(New Dictionary, \"V\")");
    EXPECT_FALSE(ran.isDone);
    EXPECT_EQ(ran.errors.rfind("p:3:3: NSExceptionKTZ: ", 0), 0u) << ran.errors;
    EXPECT_NE(ran.errors.find("\nd.setVolatileDomain(New Dictionary, \"V\")\n  ^~~~~~~~~~~~~~~~~\n"), std::string::npos)
        << ran.errors;
}

TEST_F(PluginInPrograms, AnObjectOfOnesOwnComesBackAsItself)
{
    expectOutputs({
        {d + "Class Own\nDim N As Integer\nEnd Class\nDim o As New Own\no.N = 4\nDim s As New Dictionary\n"
             "s.Value(\"o\") = o\nd.setVolatileDomain(s, \"Session\")\n"
             "Dim back As Own = d.volatileDomainForName(\"Session\").Value(\"o\")\nPrint Str(back.N) + Str(back Is o)\n"
             "d.removeVolatileDomainForName(\"Session\")",
         "4true\n"},
    });
}
