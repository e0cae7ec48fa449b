#include "host/plughost/interactive.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <editline/readline.h>
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "host/plughost/errors.h"
#include "host/script/script.h"

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

// libedit asks a function without a context of its own.
script::Conversation *completing = nullptr;

char *nextCompletion(const char *, int state)
{
    static std::vector<std::string> names;
    static size_t next;
    if (state == 0) {
        names = completing->completions(std::string(rl_line_buffer, size_t(rl_point)));
        next = 0;
    }
    return next < names.size() ? strdup(names[next++].c_str()) : nullptr;
}

char **complete(const char *text, int, int)
{
    rl_attempted_completion_over = 1; // no names of files
    return rl_completion_matches(text, nextCompletion);
}

// Lines from a terminal.
class Terminal {
public:
    explicit Terminal(script::Conversation &conversation) : _history(historyFile())
    {
        completing = &conversation;
        // Keys that make characters outside of ASCII, also where the environment names no character set.
        if (!setlocale(LC_CTYPE, "") || MB_CUR_MAX == 1)
            setlocale(LC_CTYPE, "C.UTF-8");
        static char name[] = "plughost";
        static char breaks[] = " \t\n.()\"=<>,+-*/\\^";
        rl_readline_name = name;
        rl_initialize();
        rl_completer_word_break_characters = breaks;
        rl_basic_word_break_characters = breaks;
        rl_attempted_completion_function = complete;
        rl_completion_append_character = '\0';
        using_history();
        stifle_history(kKeptLines);
        if (!_history.empty())
            read_history(_history.c_str());
    }
    ~Terminal()
    {
        if (!_history.empty())
            write_history(_history.c_str());
    }

    bool read(std::string &line, bool continues)
    {
        char *entered = readline(continues ? "... " : "> ");
        if (!entered) {
            puts("");
            return false;
        }
        line = entered;
        if (!line.empty())
            add_history(entered);
        free(entered);
        return true;
    }

private:
    std::string _history;
};

// True when every line could be run. `read` fills in a line, or answers false at the end of the input.
bool converse(script::Conversation &conversation, const std::function<bool(std::string &line, bool continues)> &read)
{
    using Answer = script::Conversation::Answer;
    bool allDone = true;
    std::string entered, line;
    bool isOpen = false;
    while (read(line, isOpen)) {
        if (!isOpen && (line == "Exit" || line == "exit"))
            return allDone;
        entered += line + "\n";
        Answer answer = conversation.enter(entered);
        isOpen = answer == Answer::WantsMore;
        if (isOpen)
            continue;
        allDone = allDone && answer == Answer::Done;
        entered.clear();
    }
    if (isOpen) { // what is missing now is an error
        conversation.finish(entered);
        return false;
    }
    return allDone;
}

void run(Session &session)
{
    script::Conversation conversation;
    if (!isatty(STDIN_FILENO)) {
        auto read = [](std::string &line, bool) { return bool(std::getline(std::cin, line)); };
        bool allDone = converse(conversation, read);
        session.end();
        if (!allDone)
            throw Reported();
        return;
    }
    puts("The host's language, line by line. Tab completes names; Ctrl-D or Exit ends.");
    Terminal terminal(conversation);
    converse(conversation, [&](std::string &line, bool continues) { return terminal.read(line, continues); });
    session.end();
}

} // namespace

int runInteractively(Program &program)
{
    return runInSession(program.options, [&program](Session &session) {
        if (!program.options.suites.empty() || !program.options.registrations.empty())
            session.defaults(); // applies them
        run(session);
    });
}

} // namespace plughost
