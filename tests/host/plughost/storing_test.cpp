// What becomes of values on their way to the disk: nothing is lost without a word, and no success is told where there
// is none.
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ground.h"
#include "tests/host/plughost/program.h"
#include "tests/support/plugin_under_test.h"

using namespace plughost_test;
using ::testing::EndsWith;

namespace {

// --- Disks that take nothing ---------------------------------------------------------------------------------------

const char kSynchronizes[] = "Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults\n"
                             "d.integerForKey(\"K\") = 7\n"
                             "Print Str(d.synchronize)\n"
                             "Print Str(d.integerForKey(\"K\"))\n";

class Disk : public testing::Test {
protected:
    const std::string folder = temporaryFolder("database");
    const std::string file = folder + "/plughost.plist";
    const Words here = {"--defaults-dir", folder};
};

class FolderInTheFilesPlace : public Disk {
protected:
    void SetUp() override { ASSERT_EQ(mkdir(file.c_str(), 0700), 0); }

    void expectNotWritten(const Result &result, const std::string &output)
    {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.errors, "plughost: " + file + " cannot be written: Is a directory\n");
    }
};

TEST_F(FolderInTheFilesPlace, FailsEveryCommandThatStores)
{
    std::string json = temporaryFile("values.json", "{\"K\": 6}");
    for (const Words &command :
         {Words{"set", "integer", "K", "6"}, Words{"load", json}, Words{"call", "integerForKey", "K", "--assign", "6"}})
        expectNotWritten(plughost(command + here), "");
}

TEST_F(FolderInTheFilesPlace, IsToldWhenValuesAreReadOnly)
{
    Result result = plughost(Words{"get", "integer", "K"} + here);
    EXPECT_EQ(result.output, "0\n");
    EXPECT_EQ(result.errors, "plughost: " + file + " cannot be read\n");
}

TEST_F(FolderInTheFilesPlace, MakesSynchronizeFalseAndFailsTheProgramAtItsEnd)
{
    expectNotWritten(plughost(Words{"run", "-"} + here, kSynchronizes), "false\n7\n");
    expectNotWritten(plughost(here, kSynchronizes), "false\n7\n");
}

// The output goes through a pipe, since the limit is one of files; counts of branches would be one more file.
TEST_F(Disk, AQuotaFailsTheWriteAndLeavesTheOldFile)
{
    printed(Words{"set", "string", "K", "old"} + here);
    std::string text = temporaryFile("text.json", "\"" + std::string(20000, 'x') + "\"");
    Result result = shell("(ulimit -f 16; LLVM_PROFILE_FILE=/dev/null '" + std::string(kBuildDir) +
                          "/plughost' --plugin '" + support::pluginUnderTest() + "' --defaults-dir '" + folder +
                          "' set variant K '@" + text + "'; echo status $?) 2>&1 | cat");
    EXPECT_EQ(result.output, "plughost: " + file + " cannot be written: File too large\nstatus 1\n");
    EXPECT_EQ(printed(Words{"get", "string", "K"} + here), "old");
}

TEST_F(Disk, AnOutputThatTakesNothingFailsTheCommand)
{
    Result result = shell("'" + std::string(kBuildDir) + "/plughost' describe > /dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "plughost: standard output could not be written\n");
}

TEST_F(Disk, AFileThatCannotBeReadIsKeptBeside)
{
    for (const char *garbage : {"garbage", "<?xml version=\"1.0\"?><plist><dict><key>K</key><int", "bplist00\xD1"}) {
        std::ofstream(file) << garbage;
        Result result = plughost(Words{"set", "integer", "K", "6"} + here);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "plughost: " + file +
                                     " cannot be read; it is kept as plughost.plist.unreadable when " +
                                     "values are written\n");
        EXPECT_EQ(printed(Words{"get", "integer", "K"} + here), "6");
        EXPECT_EQ(contentOf(file + ".unreadable"), garbage);
        unlink((file + ".unreadable").c_str());
    }
}

// --- Values that the class does not store --------------------------------------------------------------------------

struct Unstorable {
    const char *type;
    const char *value;
    const char *message;
};

class UnstorableValue : public testing::TestWithParam<Unstorable> {};

TEST_P(UnstorableValue, IsRefusedAndTheOneThereStays)
{
    printed({"set", "integer", "Key", "5"});
    Result result = plughost({"set", GetParam().type, "Key", GetParam().value});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "plughost: Key: " + std::string(GetParam().message) + "\n");
    EXPECT_EQ(printed({"get", "variant", "Key"}), "5");
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, UnstorableValue,
    testing::Values(Unstorable{"url", "not a url", "\"not a url\" is no URL"}, Unstorable{"url", "", "\"\" is no URL"},
                    Unstorable{"data", "", "data of no bytes cannot be stored"},
                    Unstorable{"variant", "null", "null cannot be stored"},
                    Unstorable{"variant", R"({"$data": ""})", "data of no bytes cannot be stored"},
                    Unstorable{"variant", R"("a\u0000b")", "text behind a null character cannot be stored"},
                    Unstorable{"array", "[1, null]", "/1: null cannot be stored"},
                    Unstorable{"array", R"([["a"], [{"$data": ""}]])", "/1/0: data of no bytes cannot be stored"},
                    Unstorable{"dictionary", R"({"a": [1, {"b": null}]})", "/a/1/b: null cannot be stored"}));

TEST(Values, ThatAreEmptyAreStoredWhereTheClassStoresThem)
{
    for (const auto &[type, value] :
         {std::pair("string", ""), {"array", "[]"}, {"dictionary", "{}"}, {"stringarray", "[\"\"]"}, {"url", "a/b"}}) {
        printed({"set", type, "Key", value});
        EXPECT_EQ(printed({"get", type, "Key", "--must-exist"}), value);
    }
}

// Calls are what host code does.
TEST(Values, AreRemovedByCallsAsHostCodeRemovesThem)
{
    printed({"set", "url", "Key", "http://example.com/"});
    printed({"call", "setURLValue", "Key", "not a url"});
    EXPECT_EQ(printed({"get", "variant", "Key"}), "nil");
}

TEST(Load, RefusesANullThatWouldRemoveAValue)
{
    printed({"set", "integer", "A", "5"});
    std::string file = temporaryFile("null.json", R"({"B": 1, "A": null})");
    Result result = plughost({"load", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "plughost: " + file + ": /A: null cannot be stored\n");
    EXPECT_EQ(printed({"get", "variant", "A"}), "5");
    EXPECT_EQ(printed({"get", "variant", "B"}), "nil");
    EXPECT_THAT(plughost({"load", file, "--into", "Other"}).errors, EndsWith(": /A: null cannot be stored\n"));
}

TEST(Load, CountsNoNullWhereThereIsNoValue)
{
    EXPECT_EQ(printed({"load", temporaryFile("null.json", R"({"A": null, "B": 1})")}), "1 of 2 values stored");
}

} // namespace
