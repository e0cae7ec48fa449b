// What happens to values when the file of their domain can be neither written nor read.
#include "tests/platform/foundation/support.h"

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>

namespace {

std::string logged;

void keepLog(NSString *line)
{
    logged += [line UTF8String];
}

size_t linesLogged()
{
    return size_t(std::count(logged.begin(), logged.end(), '\n'));
}

bool wasLogged(const std::string &text)
{
    return logged.find(text) != std::string::npos;
}

class DomainFiles : public DefaultsTest {
protected:
    const std::string file = fileOf(domain());
    const bool isRoot = geteuid() == 0;

    DomainFiles()
    {
        _NSLog_printf_handler = keepLog;
        logged.clear();
    }

    ~DomainFiles() override
    {
        EXPECT_EQ(0, seteuid(getuid()));
        chmod(folder().c_str(), 0700);
    }

    // Root may do everything; what an ordinary user may not is seen by one only.
    void becomeOrdinary() const
    {
        if (!isRoot)
            return;
        for (const std::string &path : {folder(), folder() + "/.lck", file})
            if (access(path.c_str(), F_OK) == 0)
                ASSERT_EQ(0, chown(path.c_str(), 12345, 12345)) << path;
        ASSERT_EQ(0, seteuid(12345));
    }

    void store(NSString *value)
    {
        [standard setObject:value forKey:@"key"];
        ASSERT_TRUE([standard synchronize]);
    }

    // With the disk as it is now: the next value is told not to be written, stays in memory, and leaves the disk alone.
    void expectNotWritten(const std::string &why)
    {
        std::string before = namesAndContents();
        logged.clear();
        [standard setObject:@"new" forKey:@"key"];
        EXPECT_FALSE([standard synchronize]);
        EXPECT_TRUE(wasLogged("/" + std::string([domain() UTF8String]) + ".plist cannot be written: " + why)) << logged;
        EXPECT_FALSE([standard synchronize]) << "also when nothing has changed since";
        EXPECT_EQ("new", textOf([standard stringForKey:@"key"]));
        EXPECT_EQ(before, namesAndContents());
    }

    void expectWrittenNow()
    {
        EXPECT_TRUE([standard synchronize]);
        EXPECT_EQ("new", textOf([fresh() stringForKey:@"key"]));
    }

    // That no temporary file is left is part of it. The folder of Foundation's lock is there once it was needed.
    std::string namesAndContents() const
    {
        std::set<std::string> all;
        for (const auto &entry : std::filesystem::directory_iterator(folder()))
            if (entry.path().filename() != ".lck")
                all.insert(entry.path().filename().string() + ": " +
                           (entry.is_regular_file() ? contentsOf(entry.path()) : "no file"));
        std::string text;
        for (const std::string &each : all)
            text += each + "\n";
        return text;
    }
};

TEST_F(DomainFiles, ADiskThatIsFullKeepsTheOldFileAndTheValueIsWrittenLater)
{
    store(@"old");
    signal(SIGXFSZ, SIG_IGN);
    rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = {10, before.rlim_max};
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &small));
    expectNotWritten("File too large");
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &before));
    EXPECT_EQ("old", textOf([fresh() stringForKey:@"key"]));
    expectWrittenNow();
}

TEST_F(DomainFiles, AFolderInTheFilesPlaceStays)
{
    ASSERT_EQ(0, mkdir(file.c_str(), 0700));
    expectNotWritten("Is a directory");
    ASSERT_EQ(0, rmdir(file.c_str()));
    expectWrittenNow();
}

TEST_F(DomainFiles, AFolderThatMayNotBeWrittenIsReadAndTakesNoValues)
{
    store(@"old");
    becomeOrdinary();
    ASSERT_EQ(0, chmod(folder().c_str(), 0500));
    expectNotWritten("Permission denied");
    EXPECT_EQ("old", textOf([fresh() stringForKey:@"key"]));
    ASSERT_EQ(0, chmod(folder().c_str(), 0700));
    expectWrittenNow();
}

// There GNUstep would try for a minute to make a lock, and before that read nothing at all.
TEST_F(DomainFiles, AFolderThatCannotBeLockedIsReadAtOnceAndTakesNoValues)
{
    store(@"old");
    becomeOrdinary();
    std::string locks = folder() + "/.lck";
    ASSERT_EQ(0, chmod(locks.c_str(), 0500));
    ASSERT_EQ(0, chmod(folder().c_str(), 0500));
    auto start = std::chrono::steady_clock::now();
    expectNotWritten("Permission denied");
    NSUserDefaults *reader = fresh();
    EXPECT_EQ("old", textOf([reader stringForKey:@"key"]));
    [reader setObject:@"of the reader" forKey:@"other"];
    EXPECT_FALSE([reader synchronize]);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    chmod(folder().c_str(), 0700);
    chmod(locks.c_str(), 0700);
    expectWrittenNow();
    EXPECT_TRUE([reader synchronize]);
    EXPECT_EQ("of the reader", textOf([fresh() stringForKey:@"other"]));
}

TEST_F(DomainFiles, NothingFailsWhereNothingIsToBeWritten)
{
    becomeOrdinary();
    chmod((folder() + "/.lck").c_str(), 0500);
    ASSERT_EQ(0, chmod(folder().c_str(), 0500));
    EXPECT_TRUE([fresh() synchronize]);
    EXPECT_EQ("", logged);
}

class FileOfAnotherUser : public DomainFiles, public testing::WithParamInterface<mode_t> {};

TEST_P(FileOfAnotherUser, StaysAsItIs)
{
    if (isRoot) {
        store(@"old");
        becomeOrdinary();
        ASSERT_EQ(0, seteuid(0));
        ASSERT_EQ(0, chown(file.c_str(), 0, 0));
        ASSERT_EQ(0, chmod(file.c_str(), GetParam()));
        ASSERT_EQ(0, seteuid(12345));
    } else {
        ASSERT_EQ(0, symlink("/etc/passwd", file.c_str()));
    }
    expectNotWritten("Operation not permitted");
    unlink(file.c_str());
    expectWrittenNow();
}

INSTANTIATE_TEST_SUITE_P(ReadableOrNot, FileOfAnotherUser, testing::Values(0644, 0600));

TEST_F(DomainFiles, TheFileOfAnotherUserIsStillTheirsWhenRootHasWrittenIt)
{
    store(@"old");
    uid_t owner = isRoot ? 12345 : geteuid();
    ASSERT_EQ(0, chown(file.c_str(), owner, gid_t(-1)));
    store(@"new");
    struct stat there;
    ASSERT_EQ(0, stat(file.c_str(), &there));
    EXPECT_EQ(owner, there.st_uid);
    EXPECT_EQ(0600u, there.st_mode & 0777);
}

TEST_F(DomainFiles, ALinkStaysOne)
{
    TemporaryFolder elsewhere;
    ASSERT_EQ(0, symlink((elsewhere / "target").c_str(), file.c_str()));
    writeFile(elsewhere / "target", "{ key = old; }");
    [standard synchronize];
    EXPECT_EQ("old", textOf([standard stringForKey:@"key"]));
    store(@"new");
    EXPECT_TRUE(std::filesystem::is_symlink(file));
    EXPECT_EQ("bplist00", contentsOf(elsewhere / "target").substr(0, 8));
}

TEST_F(DomainFiles, ADomainThatCannotBeRemovedIsToldAndRemovedLater)
{
    NSString *other = @"com.example.other";
    [standard setPersistentDomain:@{@"key" : @"value"} forName:other];
    ASSERT_TRUE([standard synchronize]);
    becomeOrdinary();
    if (isRoot)
        ASSERT_EQ(-1, chown(fileOf(other).c_str(), 0, 0));
    ASSERT_EQ(0, chmod(folder().c_str(), 0500));
    [standard removePersistentDomainForName:other];
    EXPECT_FALSE([standard synchronize]);
    EXPECT_TRUE(wasLogged("/com.example.other.plist cannot be written: ")) << logged;
    ASSERT_EQ(0, seteuid(getuid()));
    ASSERT_EQ(0, chmod(folder().c_str(), 0700));
    EXPECT_TRUE([standard synchronize]);
    EXPECT_NE(0, access(fileOf(other).c_str(), F_OK));
}

class UnreadableFile : public DomainFiles, public testing::WithParamInterface<std::string> {};

TEST_P(UnreadableFile, IsToldInOneLineAndKeptBeside)
{
    writeFile(file, GetParam());
    [standard synchronize];
    EXPECT_EQ(nil, [fresh() objectForKey:@"key"]);
    EXPECT_EQ(GetParam(), contentsOf(file)) << "reading changes nothing";
    store(@"new");
    EXPECT_EQ("new", textOf([fresh() stringForKey:@"key"]));
    EXPECT_EQ(GetParam(), contentsOf(file + ".unreadable"));
    EXPECT_EQ(1u, linesLogged()) << logged;
    EXPECT_TRUE(wasLogged(file + " cannot be read; it is kept as platform_test.plist.unreadable")) << logged;
}

INSTANTIATE_TEST_SUITE_P(OfEveryKind, UnreadableFile,
                         testing::Values("", "garbage", "{ key = ", std::string("\0\1\2", 3), "bplist00",
                                         std::string("bplist00\xD1\1\2SkeyUvalue\x08\x0B", 20),
                                         "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict><key>key</key><str",
                                         "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><array/></plist>"));

TEST_F(DomainFiles, ASecondUnreadableFileIsKeptBesideTheFirst)
{
    for (const char *garbage : {"first", "second"}) {
        writeFile(file, garbage);
        [fresh() synchronize];
        store([NSString stringWithUTF8String:garbage]);
    }
    EXPECT_EQ("first", contentsOf(file + ".unreadable"));
    EXPECT_EQ("second", contentsOf(file + ".unreadable-2"));
    EXPECT_EQ(2u, linesLogged()) << logged;
}

TEST_F(DomainFiles, AFileThatMayNotBeReadIsKeptBeside)
{
    store(@"old");
    std::string content = contentsOf(file);
    becomeOrdinary();
    ASSERT_EQ(0, chmod(file.c_str(), 0));
    NSUserDefaults *other = fresh();
    EXPECT_EQ(nil, [other objectForKey:@"key"]);
    [other setObject:@"new" forKey:@"key"];
    EXPECT_TRUE([other synchronize]);
    EXPECT_TRUE(wasLogged(" cannot be read; it is kept as ")) << logged;
    ASSERT_EQ(0, seteuid(getuid()));
    chmod((file + ".unreadable").c_str(), 0600);
    EXPECT_EQ(content, contentsOf(file + ".unreadable"));
}

TEST_F(DomainFiles, WhatTheProcessKnowsStaysWhenTheFileBecomesUnreadable)
{
    [standard setObject:@"old" forKey:@"other"];
    store(@"old");
    writeFile(file, "garbage");
    store(@"new");
    EXPECT_EQ("old", textOf([fresh() stringForKey:@"other"]));
    EXPECT_EQ("garbage", contentsOf(file + ".unreadable"));
}

} // namespace
