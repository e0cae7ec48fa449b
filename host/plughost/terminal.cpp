#include "host/plughost/terminal.h"

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <editline/readline.h>
#include <filesystem>
#include <poll.h>
#include <unistd.h>

#include "host/script/interruption.h"

namespace plughost {

namespace {

constexpr int kKeptLines = 1000;

// In the user's state folder; empty when there is none.
std::string historyFile()
{
    const char *state = getenv("XDG_STATE_HOME");
    const char *home = getenv("HOME");
    std::string folder = state && *state ? state : home && *home ? std::string(home) + "/.local/state" : "";
    if (folder.empty())
        return folder;
    std::error_code error;
    std::filesystem::create_directories(folder + "/plughost", error);
    return error ? "" : folder + "/plughost/history";
}

// libedit asks functions without a context of their own.
Terminal::Completions completing;
std::deque<wchar_t> waitingKeys; // of a line that has begun
bool isCancelled = false;

char *nextCompletion(const char *, int state)
{
    static std::vector<std::string> names;
    static size_t next;
    if (state == 0) {
        names = completing(std::string(rl_line_buffer, size_t(rl_point)));
        next = 0;
    }
    return next < names.size() ? strdup(names[next++].c_str()) : nullptr;
}

char **complete(const char *text, int, int)
{
    rl_attempted_completion_over = 1; // no names of files
    return rl_completion_matches(text, nextCompletion);
}

// False when Ctrl-C comes first, also while nobody waits: it is held back except in the wait itself.
bool waitForInput()
{
    sigset_t interrupts, before;
    sigemptyset(&interrupts);
    sigaddset(&interrupts, SIGINT);
    sigprocmask(SIG_BLOCK, &interrupts, &before);
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    bool isThere = false;
    while (!isThere && !(isCancelled = script::Interruption::take()))
        isThere = ppoll(&input, 1, nullptr, &before) > 0;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return isThere;
}

// libedit's own function would take a read that a signal has ended up again.
int nextKey(FILE *)
{
    if (!waitingKeys.empty()) {
        wchar_t key = waitingKeys.front();
        waitingKeys.pop_front();
        return key;
    }
    mbstate_t state = {};
    for (char byte; waitForInput() && ::read(STDIN_FILENO, &byte, 1) == 1;) {
        wchar_t key;
        size_t length = mbrtowc(&key, &byte, 1, &state);
        if (length == size_t(-1))
            return static_cast<unsigned char>(byte);
        if (length != size_t(-2))
            return key;
    }
    return EOF;
}

// Called before the prompt is shown. libedit by itself takes the terminal over only after that: a Ctrl-D between the
// two would end a line for the terminal's own line discipline, and come as a null character.
int takeTerminal()
{
    rl_prep_terminal(1);
    return 0;
}

std::deque<wchar_t> keysOf(const std::string &line)
{
    std::deque<wchar_t> keys;
    mbstate_t state = {};
    for (size_t at = 0; at < line.size();) {
        wchar_t key;
        size_t length = mbrtowc(&key, &line[at], line.size() - at, &state);
        if (length == 0 || length > line.size())
            break;
        keys.push_back(key == L'\t' ? L' ' : key); // a tab would complete a name
        at += length;
    }
    return keys;
}

} // namespace

Terminal::Terminal(Completions completions) : _history(historyFile())
{
    completing = std::move(completions);
    // Keys that make characters outside of ASCII, also where the environment names no character set.
    if (!setlocale(LC_CTYPE, "") || MB_CUR_MAX == 1)
        setlocale(LC_CTYPE, "C.UTF-8");
    static char name[] = "plughost";
    static char breaks[] = " \t\n.()\"=<>,+-*/\\^";
    rl_readline_name = name;
    rl_catch_signals = 0;
    rl_getc_function = nextKey;
    rl_pre_input_hook = takeTerminal;
    rl_initialize();
    rl_completer_word_break_characters = breaks;
    rl_basic_word_break_characters = breaks;
    rl_attempted_completion_function = complete;
    rl_completion_append_character = '\0';
    using_history();
    stifle_history(kKeptLines);
    if (!_history.empty() && read_history(_history.c_str()) == 0)
        write_history(_history.c_str()); // no more than is kept
}

Terminal::Input Terminal::read(const std::string &prompt, std::string &line, const std::string &begun)
{
    script::Interruption::take(); // one that came too late for the program that has ended
    isCancelled = false;
    waitingKeys = keysOf(begun);
    char *entered = readline(prompt.c_str());
    if (entered)
        line = entered;
    free(entered);
    if (isCancelled) {
        puts("^C");
        return Input::Cancelled;
    }
    if (!entered) {
        puts("");
        return Input::End;
    }
    if (!line.empty())
        remember(line);
    return Input::Line;
}

// At once: nothing is lost, however the session ends.
void Terminal::remember(const std::string &line)
{
    add_history(line.c_str());
    if (!_history.empty())
        append_history(1, _history.c_str());
}

} // namespace plughost
