#include "host/validate/runner.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <filesystem>
#include <list>
#include <memory>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "host/validate/ground.h"

// There in a build under LeakSanitizer only: looks for lost memory now, reports it and tells whether there was some.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace validate {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

// What a child tells its parent, a line each: the number of a case begun, or passed, or failed and why. The last line
// of a child that did everything is kDone.
constexpr char kBegun = 'B', kPassed = 'P', kFailed = 'F', kDone = 'D';

void tell(int pipe, char what, size_t number, std::string why = "")
{
    std::replace(why.begin(), why.end(), '\n', ' ');
    std::string line = what + std::to_string(number) + " " + why + "\n";
    for (size_t sent = 0; sent < line.size();) {
        ssize_t count = write(pipe, line.data() + sent, line.size() - sent);
        if (count < 0 && errno != EINTR)
            _exit(1); // the parent is gone
        sent += size_t(std::max<ssize_t>(count, 0));
    }
}

// The case's own folder lies where Foundation looks for the defaults: "defaults" in the current folder.
class Folder {
public:
    Folder()
    {
        const char *base = access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp";
        std::string pattern = std::string(base) + "/validate-XXXXXX";
        if (!mkdtemp(pattern.data()))
            throw std::runtime_error(std::string("cannot make a folder for a case: ") + strerror(errno));
        path = pattern;
    }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    std::string path;
};

// Looked for once in a process, since the search takes longer than many cases; the report names the place.
std::string memoryLost()
{
    return __lsan_do_recoverable_leak_check && __lsan_do_recoverable_leak_check()
               ? "memory is lost, here or by a case before in the same process"
               : "";
}

[[noreturn]] void runChild(const Batch &batch, size_t first, const std::string &folder, int pipe)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setpgid(0, 0); // a case's own children end with it
    rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    if (chdir(folder.c_str()) != 0)
        _exit(1);

    tell(pipe, kBegun, first);
    std::string why = batch.prepare ? whyItFails(batch.prepare) : "";
    for (size_t i = first; i < batch.cases.size(); i++) {
        if (i > first)
            tell(pipe, kBegun, i);
        std::string failure = why.empty() ? whyItFails(batch.cases[i].body) : "cannot be prepared: " + why;
        if (failure.empty() && i + 1 == batch.cases.size() && !batch.losesMemory)
            failure = memoryLost();
        tell(pipe, failure.empty() ? kPassed : kFailed, i, failure);
    }
    tell(pipe, kDone, 0);
    _exit(0);
}

std::string endOf(int status)
{
    if (WIFSIGNALED(status))
        return std::string("the process was ended by signal ") + std::to_string(WTERMSIG(status)) + " (" +
               strsignal(WTERMSIG(status)) + ")";
    return "the process ended by itself with status " + std::to_string(WEXITSTATUS(status));
}

// A batch under way.
class Run {
public:
    Run(const Batch &batch, const Settings &settings, Report &report)
        : _batch(batch), _report(report), _limit(settings.timeLimit > 0 ? settings.timeLimit : batch.secondsPerCase)
    {
        start(0);
    }

    int pipe() const { return _pipe; }
    bool isOver() const { return _over; }

    Clock::time_point deadline() const { return _deadline; }

    void readMore()
    {
        char buffer[65536];
        ssize_t count = read(_pipe, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            return;
        if (count > 0)
            _unread.append(buffer, size_t(count));
        for (size_t end; (end = _unread.find('\n')) != std::string::npos; _unread.erase(0, end + 1))
            take(_unread.substr(0, end));
        if (count <= 0)
            childEnded("");
    }

    void giveUp()
    {
        kill(-_child, SIGKILL);
        kill(_child, SIGKILL);
        childEnded("hangs: no end after " + std::to_string(_limit) + " s");
    }

private:
    void start(size_t first)
    {
        _folder = std::make_unique<Folder>();
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error(std::string("cannot make a pipe: ") + strerror(errno));
        _child = fork();
        if (_child < 0)
            throw std::runtime_error(std::string("cannot start a process: ") + strerror(errno));
        if (_child == 0) {
            close(ends[0]);
            runChild(_batch, first, _folder->path, ends[1]);
        }
        close(ends[1]);
        _pipe = ends[0];
        _unread.clear();
        _current = first;
        _done = false;
        setDeadline();
    }

    void setDeadline() { _deadline = Clock::now() + std::chrono::seconds(_limit); }

    void take(const std::string &line)
    {
        size_t space = line.find(' ');
        size_t number = size_t(atol(line.c_str() + 1));
        if (line[0] == kBegun)
            _current = number;
        else if (line[0] == kPassed)
            _report.passed(_batch.cases[_current++].name);
        else if (line[0] == kFailed)
            _report.failed(_batch.cases[_current++].name, line.substr(space + 1));
        else
            _done = true;
        setDeadline();
    }

    void childEnded(const std::string &why)
    {
        close(_pipe);
        int status = 0;
        while (waitpid(_child, &status, 0) < 0 && errno == EINTR)
            ;
        kill(-_child, SIGKILL); // what it left behind
        _over = _done || _current >= _batch.cases.size();
        if (_over)
            return;
        _report.failed(_batch.cases[_current].name, why.empty() ? endOf(status) : why);
        if (_current + 1 < _batch.cases.size())
            start(_current + 1);
        else
            _over = true;
    }

    const Batch &_batch;
    Report &_report;
    const int _limit; // seconds
    std::unique_ptr<Folder> _folder;
    pid_t _child = 0;
    int _pipe = -1;
    std::string _unread;
    size_t _current = 0; // the case that is running
    bool _done = false;
    bool _over = false;
    Clock::time_point _deadline;
};

void waitForNews(std::list<Run> &runs)
{
    std::vector<pollfd> descriptors;
    Clock::time_point earliest = Clock::time_point::max();
    for (const Run &run : runs) {
        descriptors.push_back({run.pipe(), POLLIN, 0});
        earliest = std::min(earliest, run.deadline());
    }
    auto patience = std::chrono::duration_cast<std::chrono::milliseconds>(earliest - Clock::now()).count();
    poll(descriptors.data(), descriptors.size(), int(std::clamp<long long>(patience + 1, 0, 60000)));

    auto descriptor = descriptors.begin();
    for (Run &run : runs) {
        if ((descriptor++)->revents)
            run.readMore();
        else if (Clock::now() >= run.deadline())
            run.giveUp();
    }
    runs.remove_if([](const Run &run) { return run.isOver(); });
}

} // namespace

std::vector<Batch> selected(std::vector<Batch> batches, const std::string &only)
{
    for (Batch &batch : batches)
        batch.cases.erase(std::remove_if(batch.cases.begin(), batch.cases.end(),
                                         [&](const Case &each) { return each.name.rfind(only, 0) != 0; }),
                          batch.cases.end());
    batches.erase(
        std::remove_if(batches.begin(), batches.end(), [](const Batch &batch) { return batch.cases.empty(); }),
        batches.end());
    return batches;
}

void runBatches(const std::vector<Batch> &batches, const Settings &settings, Report &report)
{
    size_t jobs = settings.jobs > 0 ? size_t(settings.jobs) : std::max(1u, std::thread::hardware_concurrency());
    std::list<Run> runs;
    auto next = batches.begin();
    while (next != batches.end() || !runs.empty()) {
        while (next != batches.end() && runs.size() < jobs)
            runs.emplace_back(*next++, settings, report);
        waitForNews(runs);
    }
}

} // namespace validate
