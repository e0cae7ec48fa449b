#include "host/plughost/interactive.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <unistd.h>

#include "host/plughost/errors.h"
#include "host/plughost/member_help.h"
#include "host/plughost/terminal.h"
#include "host/script/help.h"
#include "host/script/interruption.h"
#include "host/script/script.h"

namespace plughost {

namespace {

const char kWelcome[] =
    "The host's language, line by line. help tells more; Tab completes names; Ctrl-D or Exit ends.\n";
const char kHelp[] =
    "help NAME  what the reference says of a member of NSUserDefaultsKTZ; or the declarations of a function,\n"
    "           a member or the members of a class\n"
    "vars       the variables, with their types and values\n"
    "Exit       ends, and so does Ctrl-D\n"
    "\n"
    "The value of an expression that stands alone is printed. A block goes on until it is closed, and can\n"
    "be mended where it has a mistake. Ctrl-C leaves the line, the block or the program that runs.\n";

// A conversation with a person at a terminal, or with lines from elsewhere.
class Talk {
public:
    Talk();
    // True when every line could be run.
    bool run();

private:
    using Input = Terminal::Input;
    using Answer = script::Conversation::Answer;

    Input read(size_t number, bool continues, std::string &line, const std::string &begun = "");
    bool command(const std::string &line);
    Answer enterBlock();
    bool mend();

    std::optional<script::Interruption> _interruption; // at a terminal; elsewhere Ctrl-C ends the process
    script::Conversation _conversation;
    std::unique_ptr<Terminal> _terminal; // null when the input is none
    std::vector<std::string> _block;
    size_t _firstLine = 1; // of the block
};

Talk::Talk()
{
    if (!isatty(STDIN_FILENO))
        return;
    _interruption.emplace();
    _terminal = std::make_unique<Terminal>([this](const std::string &line) { return _conversation.completions(line); });
}

Talk::Input Talk::read(size_t number, bool continues, std::string &line, const std::string &begun)
{
    if (_terminal)
        return _terminal->read(std::to_string(number) + (continues ? ". " : "> "), line, begun);
    return std::getline(std::cin, line) ? Input::Line : Input::End;
}

std::string trimmed(const std::string &line)
{
    size_t first = line.find_first_not_of(" \t");
    return first == std::string::npos ? "" : line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

void help(const std::string &name)
{
    std::string text = memberHelp(name);
    if (text.empty())
        for (const std::string &declaration : script::declarationsOf(name))
            text += declaration + "\n";
    fputs(text.empty() ? ("There is nothing named \"" + name + "\".\n").c_str() : text.c_str(), stdout);
}

// What is no part of the language; a name of the program's own comes first.
bool Talk::command(const std::string &line)
{
    std::istringstream words(line);
    std::string first, second, more;
    words >> first >> second >> more;
    if (_conversation.knows(first) || !more.empty())
        return false;
    if (host::equalIgnoringCase(first, "help"))
        second.empty() ? void(fputs(kHelp, stdout)) : help(second);
    else if (host::equalIgnoringCase(first, "vars") && second.empty())
        for (const std::string &variable : _conversation.variables())
            puts(variable.c_str());
    else
        return false;
    return true;
}

Talk::Answer Talk::enterBlock()
{
    std::string text;
    for (const std::string &line : _block)
        text += line + "\n";
    return _conversation.enter(text, _firstLine);
}

// Asks for the line with the mistake again. False when the person wants to leave the block.
bool Talk::mend()
{
    size_t number = std::min(_conversation.mistakenLine(), _firstLine + _block.size() - 1);
    std::string &wrong = _block[number - _firstLine], line;
    if (read(number, true, line, wrong) != Input::Line)
        return false;
    wrong = line;
    return true;
}

bool Talk::run()
{
    if (_terminal)
        fputs(kWelcome, stdout);
    bool allDone = true;
    std::string line;
    for (Input input;;) {
        bool continues = !_block.empty();
        input = read(_firstLine + _block.size(), continues, line);
        if (input == Input::End || (!continues && host::equalIgnoringCase(trimmed(line), "Exit")))
            break;
        _block.push_back(line);
        Answer answer = input == Input::Cancelled              ? Answer::Failed
                        : !continues && command(trimmed(line)) ? Answer::Done
                                                               : enterBlock();
        while (answer == Answer::Mistaken && _terminal && _block.size() > 1)
            answer = mend() ? enterBlock() : Answer::Failed;
        if (answer == Answer::WantsMore)
            continue;
        allDone = allDone && answer == Answer::Done;
        _firstLine += _block.size();
        _block.clear();
    }
    if (_block.empty())
        return allDone;
    std::string text; // what is missing now is an error
    for (const std::string &each : _block)
        text += each + "\n";
    _conversation.finish(text, _firstLine);
    return false;
}

} // namespace

int runInteractively(Program &program)
{
    return runInSession(program.options, [&program](Session &session) {
        if (!program.options.suites.empty() || !program.options.registrations.empty())
            session.defaults(); // applies them
        bool allDone = Talk().run();
        session.end();
        if (!allDone && !isatty(STDIN_FILENO))
            throw Reported();
    });
}

} // namespace plughost
