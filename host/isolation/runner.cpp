#include "host/isolation/runner.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <list>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/isolation/folder.h"

namespace isolation {

using Clock = std::chrono::steady_clock;

namespace {

// What a child tells its parent, a line each: the number of a case begun, or passed, or failed and why.
constexpr char kBegun = 'B', kPassed = 'P', kFailed = 'F';

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

[[noreturn]] void failed(const char *what)
{
    throw std::runtime_error(std::string("cannot ") + what + ": " + strerror(errno));
}

// A batch under way.
class Run {
public:
    Run(const Batch &batch, const Manner &manner, const std::function<void(const Outcome &)> &ended)
        : _batch(batch), _manner(manner), _ended(ended)
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
        childEnded("hangs: no end after " + std::to_string(_batch.secondsPerCase) + " s");
    }

private:
    void start(size_t first)
    {
        _folder = std::make_unique<Folder>();
        _output = _manner.keepsOutput ? memfd_create("output", MFD_CLOEXEC) : open("/dev/null", O_WRONLY | O_CLOEXEC);
        int ends[2];
        if (_output < 0 || ::pipe2(ends, O_CLOEXEC) != 0)
            failed("make a pipe");
        fflush(nullptr); // or the child would write it once more
        _child = fork();
        if (_child < 0)
            failed("start a process");
        if (_child == 0) {
            close(ends[0]);
            runChild(first, ends[1]);
        }
        close(ends[1]);
        _pipe = ends[0];
        _unread.clear();
        _current = first;
        _verdict.clear();
        setDeadline();
    }

    [[noreturn]] void runChild(size_t first, int pipe)
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setpgid(0, 0); // a case's own children end with it
        rlimit none = {0, 0};
        setrlimit(RLIMIT_CORE, &none);
        dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
        dup2(_output, STDOUT_FILENO);
        dup2(_output, STDERR_FILENO);
        _folder->enter();
        for (size_t i = first; i < _batch.names.size(); i++) {
            tell(pipe, kBegun, i);
            std::string why = _batch.whyItFails(i, i == first);
            tell(pipe, why.empty() ? kPassed : kFailed, i, why);
        }
        if (_manner.endsAsProgramsDo)
            exit(0);
        _exit(0);
    }

    void setDeadline() { _deadline = Clock::now() + std::chrono::seconds(_batch.secondsPerCase); }

    void take(const std::string &line)
    {
        if (line[0] == kBegun) {
            settle();
            _current = size_t(atol(line.c_str() + 1));
        } else {
            _verdict = line;
        }
        setDeadline();
    }

    // A verdict stands when the next case begins, or when the process has ended as it should.
    void settle()
    {
        if (_verdict.empty())
            return;
        report(_verdict[0] == kPassed ? "" : _verdict.substr(_verdict.find(' ') + 1));
        _verdict.clear();
    }

    void report(const std::string &why)
    {
        Outcome outcome = {_batch.names[_current], why, ""};
        if (_manner.keepsOutput && !why.empty())
            outcome.output = writtenUpToNow();
        _ended(outcome);
    }

    std::string writtenUpToNow() const
    {
        std::string text(size_t(std::max<off_t>(lseek(_output, 0, SEEK_END), 0)), '\0');
        ssize_t count = pread(_output, text.data(), text.size(), 0);
        text.resize(size_t(std::max<ssize_t>(count, 0)));
        return text;
    }

    void childEnded(const std::string &otherwise)
    {
        close(_pipe);
        int status = 0;
        while (waitpid(_child, &status, 0) < 0 && errno == EINTR)
            ;
        kill(-_child, SIGKILL); // what it left behind
        std::string why = otherwise.empty() ? abnormalEnd(status) : otherwise;
        if (why.empty() && _verdict.empty())
            why = "the process ended by itself with status 0";
        if (why.empty() || (!_verdict.empty() && _verdict[0] == kFailed))
            settle();
        else
            report(why);
        close(_output);
        _over = _current + 1 >= _batch.names.size();
        if (!_over)
            start(_current + 1);
    }

    const Batch &_batch;
    const Manner &_manner;
    const std::function<void(const Outcome &)> &_ended;
    std::unique_ptr<Folder> _folder;
    pid_t _child = 0;
    int _pipe = -1, _output = -1;
    std::string _unread;
    size_t _current = 0;  // the case that is running
    std::string _verdict; // on that case, as the child told it
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

void run(const std::vector<Batch> &batches, const Manner &manner, const std::function<void(const Outcome &)> &ended)
{
    std::list<Run> runs;
    auto next = batches.begin();
    while (next != batches.end() || !runs.empty()) {
        while (next != batches.end() && runs.size() < std::max(1u, manner.jobs))
            runs.emplace_back(*next++, manner, ended);
        waitForNews(runs);
    }
}

std::string abnormalEnd(int waitStatus)
{
    if (WIFSIGNALED(waitStatus))
        return std::string("the process was ended by signal ") + std::to_string(WTERMSIG(waitStatus)) + " (" +
               strsignal(WTERMSIG(waitStatus)) + ")";
    int status = WEXITSTATUS(waitStatus);
    return status == 0 ? "" : "the process ended by itself with status " + std::to_string(status);
}

} // namespace isolation
