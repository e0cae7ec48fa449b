// What is stored stays. A process that writes through the plug-in is killed at a random moment: every key that a
// completed synchronize covered is there for the next process, and the database can be read. Several processes that
// write keys of their own lose none.
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/validate/case.h"
#include "host/validate/ground.h"

namespace validate {

using host::Value;

namespace {

constexpr int kKeysOfOneProcess = 60;
constexpr int kSecondsForAProcess = 60;

// A process of the case's own; what it writes is read with `readLine`.
class Process {
public:
    explicit Process(const std::function<void(int output)> &body)
    {
        int ends[2];
        expect(pipe(ends) == 0, strerror(errno));
        _id = fork();
        expect(_id >= 0, strerror(errno));
        if (_id == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            alarm(kSecondsForAProcess);
            close(ends[0]);
            std::string why = whyItFails([&] { body(ends[1]); });
            if (!why.empty())
                dprintf(ends[1], "failed %s\n", why.c_str());
            _exit(why.empty() ? 0 : 1);
        }
        close(ends[1]);
        _output = fdopen(ends[0], "r");
    }
    ~Process()
    {
        end();
        fclose(_output);
    }
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    bool readLine(std::string &line)
    {
        char buffer[4096];
        if (!fgets(buffer, sizeof buffer, _output))
            return false;
        line = buffer;
        if (!line.empty() && line.back() == '\n')
            line.pop_back();
        return true;
    }

    void end()
    {
        if (_id <= 0)
            return;
        kill(_id, SIGKILL);
        wait();
    }

    int wait()
    {
        int status = 0;
        while (waitpid(_id, &status, 0) < 0 && errno == EINTR)
            ;
        _id = 0;
        return status;
    }

private:
    pid_t _id = 0;
    FILE *_output = nullptr;
};

// GNUstep would wait 18 seconds for the lock of a process that is no more.
void clearLocks()
{
    namespace fs = std::filesystem;
    if (!fs::exists("defaults"))
        return;
    std::vector<fs::path> locks;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator("defaults"))
        if (entry.path().extension() == ".lck")
            locks.push_back(entry.path());
    for (const fs::path &lock : locks)
        fs::remove_all(lock);
}

Value openDefaults()
{
    startHost({"2013.03"});
    theHost().callShared(kClass, "resetStandardUserDefaults");
    return standardUserDefaults();
}

std::string keyOf(int writer, int number)
{
    return "Writer" + std::to_string(writer) + "Key" + std::to_string(number);
}

// A value of another kind for each key, and text that only a binary property list keeps.
void store(const Value &defaults, const std::string &key, int number)
{
    switch (number % 3) {
    case 0:
        call(defaults, "setIntegerValue", {key, number});
        break;
    case 1:
        call(defaults, "setStringValue", {key, "\xF0\x9F\x98\x80 " + std::to_string(number)});
        break;
    case 2:
        call(defaults, "setDictionaryValue", {key, Value::dictionary({{"number", number}})});
        break;
    }
}

// Whole numbers come from the disk with 64 bits, but for a few small ones.
void expectStored(const Value &defaults, const std::string &key, int number)
{
    static const char *const getters[] = {"integerForKey", "stringForKey", "dictionaryForKey"};
    const std::string digits = std::to_string(number);
    const std::string expected[] = {"int32 " + digits, "\"\xF0\x9F\x98\x80 " + digits + "\"",
                                    "{\"number\": " + std::string(number <= 12 ? "int32 " : "int64 ") + digits + "}"};
    expectEqual(shown(call(defaults, getters[number % 3], {key})), expected[number % 3], key);
}

bool synchronizes(const Value &defaults)
{
    return call(defaults, "synchronize").boolean();
}

// Writes for ever, and says after each synchronize how many keys are safe.
void writeUntilKilled(int output)
{
    Value defaults = openDefaults();
    for (int number = 0;; number++) {
        store(defaults, keyOf(0, number), number);
        if (number % 2 == 0)
            continue;
        expect(synchronizes(defaults), "synchronize answered false");
        dprintf(output, "%d\n", number + 1);
    }
}

int killAtRandomMoment(std::mt19937 &random)
{
    Process writer(writeUntilKilled);
    std::string line;
    int reports = 1 + int(random() % 12);
    int safe = 0;
    while (reports-- > 0) {
        expect(writer.readLine(line), "the writer ended by itself");
        expect(line.rfind("failed", 0) != 0, "the writer " + line);
        safe = atoi(line.c_str());
    }
    usleep(random() % 8000); // into the middle of the next round
    writer.end();
    while (writer.readLine(line)) // said before it was killed
        safe = std::max(safe, atoi(line.c_str()));
    return safe;
}

void expectLines(Process &process)
{
    std::string line;
    while (process.readLine(line))
        throw Failure(line);
    expect(process.wait() == 0, "a process did not end well");
}

void killWriter(uint32_t seed)
{
    std::mt19937 random(seed);
    int safe = killAtRandomMoment(random);
    clearLocks();
    Process reader([safe](int) {
        Value defaults = openDefaults();
        for (int number = 0; number < safe; number++)
            expectStored(defaults, keyOf(0, number), number);
        store(defaults, "After", 1);
        expect(synchronizes(defaults), "the database cannot be written any more");
    });
    expectLines(reader);
}

void writeTogether(int writers)
{
    std::vector<std::unique_ptr<Process>> processes;
    for (int writer = 0; writer < writers; writer++)
        processes.push_back(std::make_unique<Process>([writer](int) {
            Value defaults = openDefaults();
            for (int number = 0; number < kKeysOfOneProcess; number++) {
                store(defaults, keyOf(writer, number), number);
                if (number % 5 == 4)
                    expect(synchronizes(defaults), "synchronize answered false");
            }
        }));
    for (auto &process : processes)
        expectLines(*process);
    Process reader([writers](int) {
        Value defaults = openDefaults();
        for (int writer = 0; writer < writers; writer++)
            for (int number = 0; number < kKeysOfOneProcess; number++)
                expectStored(defaults, keyOf(writer, number), number);
    });
    expectLines(reader);
}

} // namespace

void addPersistence(const Settings &settings, Batches &batches)
{
    constexpr int kSeconds = 3 * kSecondsForAProcess;
    int kills = settings.level >= 10 ? 200 : settings.level * 6;
    for (int i = 0; i < kills; i++) {
        uint32_t seed = settings.seed * 1000 + uint32_t(i);
        addAlone(batches, "persistence/killed/" + std::to_string(i), kSeconds, [seed] { killWriter(seed); });
    }
    int rounds = settings.level >= 7 ? 5 : 1;
    for (int round = 0; round < rounds; round++)
        for (int writers : {2, 4})
            addAlone(batches, "persistence/together-" + std::to_string(writers) + "/" + std::to_string(round), kSeconds,
                     [writers] { writeTogether(writers); });
}

} // namespace validate
