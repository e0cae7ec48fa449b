// The commands besides get and set.
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include "tests/host/plughost/program.h"
#include "tests/support/plugin_under_test.h"

using namespace plughost_test;

static size_t count(const std::string &text, const std::string &part)
{
    size_t found = 0;
    for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size())
        found++;
    return found;
}

static bool contains(const std::string &text, const std::string &part)
{
    return count(text, part) > 0;
}

TEST(Describe, ListsEveryDeclarationOfTheClass)
{
    std::string text = printed({"describe"});
    EXPECT_TRUE(contains(text, "class NSUserDefaultsKTZ\n  host 2013.03, class record in layout version 12\n")) << text;
    const size_t assignable = count(text, "\n  = "), others = count(text, "\n    ");
    const size_t shared = count(text.substr(text.find(" shared methods\n")), "\n    ");
    EXPECT_TRUE(
        contains(text, "\n" + std::to_string(assignable + others - shared) + " methods (= can be assigned to)\n"));
    EXPECT_TRUE(contains(text, "\n" + std::to_string(shared) + " shared methods\n"));
    EXPECT_TRUE(contains(text, "\n  = integerForKey(key as string) as integer\n"));
    EXPECT_TRUE(contains(text, "\n    setIntegerValue(key as string, value as integer)\n"));
}

TEST(Describe, ShowsTheRecordVersionThatTheHostGets)
{
    const struct {
        const char *host;
        const char *version;
    } rows[] = {{"2009", "9"}, {"2011.4", "9"}, {"2012.0", "10"}, {"2013.02", "11"}, {"2014.1", "12"}};
    for (const auto &row : rows)
        EXPECT_TRUE(contains(printed({"describe", "--host", row.host}), std::string("layout version ") + row.version))
            << row.host;
}

TEST(Describe, PrintsJson)
{
    std::string json = printed({"describe", "--json"});
    const std::string text = printed({"describe"});
    EXPECT_EQ(count(json, "\"declaration\":"), count(text, "\n  = ") + count(text, "\n    "));
    EXPECT_EQ(count(json, "\"assignable\": true"), count(text, "\n  = "));
    EXPECT_TRUE(contains(json, "\"recordVersion\": 12"));
}

TEST(Describe, SaysThatNoClassWasRegistered)
{
    Result result = plughost({"describe", "--without", "PluginRegisterClass"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "plughost: " + support::pluginUnderTest() + ": it registers no class NSUserDefaultsKTZ\n");
}

TEST(Call, ChoosesAmongOverloadsByTheNumberOfArguments)
{
    EXPECT_EQ(printed({"call", "objectIsForcedForKey", "Key"}), "false");
    EXPECT_EQ(printed({"call", "objectIsForcedForKey", "Key", "NSGlobalDomain"}), "false");
}

TEST(Call, TakesNamesInAnyCaseAndWholeDeclarations)
{
    printed({"set", "integer", "Runs", "5"});
    EXPECT_EQ(printed({"call", "INTEGERFORKEY", "Runs"}), "5");
    EXPECT_EQ(printed({"call", "integerForKey(key as string) as integer", "Runs"}), "5");
}

TEST(Call, AssignsToAMethod)
{
    EXPECT_EQ(printed({"call", "integerForKey", "Runs", "--assign", "-7"}), "");
    EXPECT_EQ(printed({"get", "integer", "Runs"}), "-7");
    EXPECT_EQ(printed({"call", "dictionaryForKey", "Window", "--assign", "{\"a\": [1]}"}), "");
    EXPECT_EQ(printed({"get", "dictionary", "Window"}), "{\"a\":[1]}");
}

TEST(Call, CallsSharedMethodsOnTheClass)
{
    EXPECT_EQ(printed({"call", "NSGlobalDomain"}), "NSGlobalDomain");
    EXPECT_EQ(printed({"call", "standardUserDefaults"}), "{\"$object\":\"NSUserDefaultsKTZ\"}");
    EXPECT_EQ(printed({"call", "resetStandardUserDefaults"}), "");
}

TEST(Call, TakesCollectionsAsTheyAreWritten)
{
    printed({"call", "setStringArrayValue", "List", "[\"a\",\"b\"]"});
    EXPECT_EQ(printed({"get", "stringarray", "List"}), "[\"a\",\"b\"]");
    printed({"call", "registerDefaults", "{}"});
    printed({"call", "setPersistentDomain", "{\"a\":1}", "com.example.other"});
    EXPECT_EQ(printed({"call", "persistentDomainForName", "com.example.other"}), "{\"a\":1}");
}

TEST(Call, RefusesWhatTheClassDoesNotHave)
{
    const struct {
        Words words;
        const char *message;
    } rows[] = {
        {{"call", "fly"}, "NSUserDefaultsKTZ has no method \"fly\""},
        {{"call", "integerForKy"}, "NSUserDefaultsKTZ has no method \"integerForKy\"; did you mean \"integerForKey\"?"},
        {{"call", "integerForKey"}, "\"integerForKey(key as string) as integer\" takes 1 argument, not 0"},
        {{"call", "synchronize", "now"}, "\"synchronize as boolean\" takes 0 arguments, not 1"},
        {{"call", "synchronize", "--assign", "true"}, "\"synchronize as boolean\" cannot be assigned to"},
        {{"call", "setIntegerValue", "Key", "five"}, "value: \"five\" is not of type integer"},
        {{"call", "registerDefaults", "[]"}, "dic: expected a JSON object, found a list"},
    };
    for (const auto &row : rows) {
        Result result = plughost(row.words);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.errors, std::string("plughost: ") + row.message + "\n");
        EXPECT_EQ(result.output, "");
    }
}

TEST(Exceptions, ArePrintedAsHostCodeSeesThem)
{
    Result result = plughost({"call", "Constructor"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "plughost: UnsupportedOperationException: Constructor called too often. Object is already "
                             "initialized.\n");
    result = plughost({"call", "setVariantValue", "Key", "{\"a\": null}"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors.rfind("plughost: NSExceptionKTZ: ", 0), 0u) << result.errors;
    EXPECT_EQ(count(result.errors, "\n"), 1u) << result.errors;
    EXPECT_EQ(printed({"get", "variant", "Key"}), "nil");
}

TEST(Exceptions, AreInTheLogOnlyWhenAskedFor)
{
    Result result = plughost({"call", "setVariantValue", "Key", "{\"a\": null}", "--show-log"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(contains(result.errors, "] A NSInvalidArgumentException: ")) << result.errors;
}

TEST(Domains, AreListedAndPrinted)
{
    printed({"set", "integer", "Runs", "5"});
    std::string names = printed({"domains"});
    EXPECT_TRUE(contains(names, "persistent\n")) << names;
    EXPECT_TRUE(contains(names, "\n  plughost\n")) << names;
    EXPECT_TRUE(contains(names, "volatile\n")) << names;
    EXPECT_TRUE(contains(names, "  NSRegistrationDomain")) << names;
    EXPECT_EQ(printed({"domains", "plughost"}), "{\n  \"Runs\": 5\n}");
    EXPECT_EQ(printed({"domains", "NSArgumentDomain"}), "{}");
    EXPECT_EQ(printed({"domains", "com.example.none"}), "null");
}

TEST(Suites, ShowWhatComesIntoViewAndWhatGoes)
{
    printed({"set", "string", "Theme", "dark", "--domain", "com.example.shared"});
    EXPECT_EQ(printed({"get", "string", "Theme"}), "");
    EXPECT_EQ(printed({"suite", "add", "com.example.shared"}), "Theme = \"dark\"");
    EXPECT_EQ(printed({"get", "string", "Theme", "--suite", "com.example.shared"}), "dark");
    EXPECT_EQ(printed({"suite", "remove", "com.example.shared", "--suite", "com.example.shared"}), "Theme is gone");
}

TEST(Registering, ShowsTheDefaultsThatTakeEffect)
{
    printed({"set", "integer", "Runs", "5"});
    std::string file = temporaryFile("defaults.json", R"({"Runs": 0, "Columns": 80})");
    EXPECT_EQ(printed({"register", file}), "Columns = 80");
    EXPECT_EQ(printed({"get", "integer", "Columns"}), "0");
    EXPECT_EQ(printed({"get", "integer", "Columns", "--register", file}), "80");
    Result result = plughost({"register", "-"}, "[1]");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "plughost: standard input: expected a JSON object, found a list\n");
}

TEST(Forced, AnswersForOneKey)
{
    EXPECT_EQ(printed({"forced", "Key"}), "false");
    EXPECT_EQ(printed({"forced", "Key", "plughost"}), "false");
}

TEST(Options, AnotherDomainIsAnotherApplication)
{
    printed({"set", "integer", "Runs", "5", "--domain", "com.example.app"});
    EXPECT_EQ(printed({"get", "integer", "Runs"}), "0");
    EXPECT_EQ(printed({"--domain", "com.example.app", "get", "integer", "Runs"}), "5");
}

TEST(Options, CommandLineArgumentsAreNoDefaults)
{
    EXPECT_EQ(printed({"get", "string", "host", "--host", "2014.1"}), "");
    EXPECT_EQ(printed({"get", "string", "--host", "2014.1", "--", "-host"}), "");
}

// Without VarType a Variant's type is its property "Type"; without the entry that reads properties, too, it has none.
TEST(Options, SeveralEntryPointsCanBeLeftOut)
{
    printed({"--without", "VarType", "set", "variant", "Key", "5"});
    EXPECT_EQ(printed({"get", "variant", "Key"}), "5");
    printed({"set", "variant", "Key", "6", "--without", "VarType", "--without", "REALGetPropValueInt"});
    EXPECT_EQ(printed({"get", "variant", "Key"}), "nil");
}

TEST(Options, ADefaultsFolderIsMadeAndKeptApart)
{
    std::string folder = temporaryFolder("outer") + "/with space/inner";
    printed({"set", "integer", "Runs", "5", "--defaults-dir", folder});
    EXPECT_EQ(printed({"get", "integer", "Runs"}), "0");
    EXPECT_EQ(printed({"get", "integer", "Runs", "--defaults-dir", folder}), "5");
}

TEST(Options, TheCompanionLibraryCanBeLeftOut)
{
    printed({"set", "string", "Key", "text", "--no-family"});
    EXPECT_EQ(printed({"get", "string", "Key", "--no-family"}), "text");
}

TEST(Options, WithoutTheCompanionLibraryACocoaExceptionEndsTheHostInOneLine)
{
    const char program[] = "Print \"before\"\n"
                           "NSUserDefaultsKTZ.standardUserDefaults.setStringValue(\"\", \"text\")\n";
    Result set = startedPlughost({"set", "string", "", "text", "--no-family"});
    Result run = startedPlughost({"run", "-", "--no-family"}, program);
    Result lines = startedPlughost({"--no-family"}, program);
    EXPECT_EQ(set.output, "");
    EXPECT_EQ(run.output, "before\n");
    EXPECT_EQ(lines.output, "before\n");
    for (const Result &result : {set, run, lines}) {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.errors, "plughost: a Cocoa exception ended the host: NSInvalidArgumentException: attempt to "
                                 "set object with bad key ()\n");
    }
}

TEST(Options, AUsersDefaultsAreRead)
{
    std::string me = getpwuid(getuid())->pw_name;
    printed({"set", "string", "Key", "text"});
    EXPECT_EQ(printed({"get", "string", "Key", "--user", me}), "text");
    printed({"set", "string", "Key", "other", "--user", me});
    EXPECT_EQ(printed({"get", "string", "Key"}), "other");
}

TEST(Options, AnUnknownUserIsWrongUsage)
{
    for (const char *user : {"no such user", ""})
        for (const Words &command : {Words{"get", "integer", "Key"}, Words{"set", "integer", "Key", "5"}}) {
            Result result = plughost(command + Words{"--user", user});
            EXPECT_EQ(result.status, 2);
            EXPECT_EQ(result.errors, "plughost: --user: there is no user \"" + std::string(user) + "\"\n");
        }
}

TEST(Options, HandlesAreBalancedAfterEveryCommand)
{
    std::string file = temporaryFile("defaults.json", R"({"Columns": 80, "List": [1, "a", {"$data": "00"}]})");
    const Words commands[] = {{"set", "variant", "Key", R"({"a": [1, {"$date": "2012-02-29"}, {"$data": "00"}]})"},
                              {"get", "variant", "Key"},
                              {"set", "file", "Log", "/etc/hosts"},
                              {"get", "file", "Log"},
                              {"dump"},
                              {"domains"},
                              {"register", file},
                              {"load", file},
                              {"describe"}};
    for (const char *host : {"2009", "2012.0", "2014.1"})
        for (const Words &command : commands)
            printed(command + Words{"--check-handles", "--host", host});
}

TEST(Options, AHandleThatIsNotReleasedIsListed)
{
    Result result = plughost({"get", "array", "Key", "--register", temporaryFile("array.json", R"({"Key": [[1]]})"),
                              "--without", "REALUnlockObject", "--check-handles"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(contains(result.errors, "plughost: handle out of balance: ")) << result.errors;
}
