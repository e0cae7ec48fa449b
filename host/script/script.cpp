#include "host/script/script.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <exception>
#include <functional>

#include "host/script/arrays.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"
#include "host/script/interpreter.h"
#include "host/script/parser.h"
#include "host/script/raised.h"
#include "host/script/running.h"
#include "host/script/shortened.h"

namespace script {

// --- Messages ------------------------------------------------------------------------------------------------------

static void print(const Place &place, const std::string &message)
{
    fflush(stdout);
    fputs(report(place, shortened(message)).c_str(), stderr);
}

// The innermost calls and the outermost one; between them there may be hundreds.
static void print(const Calls &calls)
{
    constexpr size_t most = 8;
    for (size_t i = 0; i < calls.size(); i++) {
        if (i == most && calls.size() > most + 1) {
            fprintf(stderr, "  … %zu more calls\n", calls.size() - most - 1);
            i = calls.size() - 1;
        }
        fprintf(stderr, "  in %s, called at %s\n", calls[i].method.c_str(), nameOf(calls[i].place).c_str());
    }
}

static void print(const Raised &exception)
{
    std::string message = exception.object.className() + ": " + exception.object.property("Message").text();
    if (int32_t number = exception.object.property("ErrorNumber").int32())
        message += " (error number " + std::to_string(number) + ")";
    print(exception.place, message);
    print(exception.calls);
}

static void print(const AssertionFailed &failed)
{
    print(failed.place, failed.message.empty() ? "this does not hold" : "this does not hold: " + failed.message);
    print(failed.calls);
}

static void print(const ProblemsFound &found)
{
    for (const Problem &problem : found.problems)
        print(problem.place, problem.message);
}

// True when the body came to its end.
static bool reporting(const std::function<void()> &body)
{
    try {
        body();
        return true;
    } catch (const ProblemsFound &found) {
        print(found);
    } catch (const Raised &exception) {
        print(exception);
    } catch (const AssertionFailed &failed) {
        print(failed);
    } catch (const Interrupted &interrupted) {
        fprintf(stderr, "stopped at %s\n", nameOf(interrupted.place).c_str());
    } catch (const std::exception &error) { // of the host itself, such as no memory
        fprintf(stderr, "%s\n", shortened(error.what()).c_str());
    }
    return false;
}

// --- Rules ---------------------------------------------------------------------------------------------------------

// As long as it lives, text keys of Dictionaries compare as texts of the language do.
struct LanguageRules {
    LanguageRules() : _before(host::Host::shared().profile().caseInsensitiveKeys) { set(true); }
    ~LanguageRules() { set(_before); }
    LanguageRules(const LanguageRules &) = delete;
    LanguageRules &operator=(const LanguageRules &) = delete;

private:
    static void set(bool ignoresCase)
    {
        host::Profile profile = host::Host::shared().profile();
        profile.caseInsensitiveKeys = ignoresCase;
        host::Host::shared().use(profile);
    }
    bool _before;
};

// --- Programs ------------------------------------------------------------------------------------------------------

// The host forgets the classes of a program that has ended, so that the next one can use their names.
static void removeClasses(const Symbols &symbols)
{
    for (const auto &[name, definition] : symbols.classes)
        host::Host::shared().removeClass(name);
}

// No method runs by itself, whatever its name is.
static void needStatements(const Program &program)
{
    if (program.statements.empty() && !program.functions.empty())
        fail(program.functions.front().name.place, "nothing runs: no statement stands outside of the methods");
}

bool runProgram(const std::string &name, const std::string &text)
{
    LanguageRules rules;
    Source source;
    std::unique_ptr<Program> program;
    Symbols symbols;
    Interpreter interpreter;
    Running running;
    bool isDone = reporting([&] {
        source = sourceOf(name, text);
        program = parse(source);
        Checker(symbols).check(*program);
        needStatements(*program);
        interpreter.run(*program);
    });
    removeClasses(symbols);
    return isDone;
}

// --- Conversations -------------------------------------------------------------------------------------------------

struct Conversation::State {
    explicit State(Show show) : interpreter(std::move(show)) {}

    LanguageRules rules;
    // Everything that was entered stays, since methods and messages refer to it.
    std::deque<Source> sources;
    std::vector<std::unique_ptr<Program>> programs;
    Symbols symbols;
    Interpreter interpreter;
    size_t mistakenLine = 0;
};

void printValue(const host::Value &value)
{
    writeLine(stdout, value.describe());
}

Conversation::Conversation(Show show) : _state(std::make_unique<State>(std::move(show))) {}

Conversation::~Conversation()
{
    removeClasses(_state->symbols);
}

Conversation::Answer Conversation::enter(const std::string &text, size_t firstLine)
{
    Source &source = _state->sources.emplace_back(Source{"input", text, firstLine});
    try {
        std::unique_ptr<Program> program = parse(source, true);
        Checker(_state->symbols, true).check(*program);
        _state->programs.push_back(std::move(program));
    } catch (const ProblemsFound &found) {
        const Problem &first = found.problems.front();
        if (first.isIncomplete) {
            _state->sources.pop_back();
            return Answer::WantsMore;
        }
        print(found);
        _state->mistakenLine = lineOf(first.place);
        return Answer::Mistaken;
    }
    Running running;
    return reporting([&] { _state->interpreter.run(*_state->programs.back()); }) ? Answer::Done : Answer::Failed;
}

size_t Conversation::mistakenLine() const
{
    return _state->mistakenLine;
}

void Conversation::finish(const std::string &text, size_t firstLine)
{
    Source source{"input", text, firstLine};
    reporting([&] { parse(source, true); });
}

bool Conversation::knows(const std::string &name) const
{
    const Symbols &symbols = _state->symbols;
    return symbols.globals.count(name) || symbols.functions.count(name) || symbols.classes.count(name) ||
           symbols.enumerations.count(name);
}

std::vector<std::string> Conversation::variables() const
{
    std::vector<std::string> lines;
    for (const auto &[name, variable] : _state->symbols.globals)
        lines.push_back(variable.name.text + " As " + nameOf(variable.type) + " = " +
                        shortened(_state->interpreter.global(variable).describe()));
    return lines;
}

static bool isWordCharacter(char c)
{
    return isalnum(static_cast<unsigned char>(c)) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

// Members of what the word in front of a dot names. Behind a call, or when nobody knows what it is, those of the class
// that the plug-in adds.
static std::vector<std::string> membersBehind(const std::string &word, const Symbols &symbols)
{
    auto variable = symbols.globals.find(word);
    if (variable != symbols.globals.end())
        return symbols.membersOf(variable->second.type);
    auto enumeration = symbols.enumerations.find(word);
    if (enumeration != symbols.enumerations.end()) {
        std::vector<std::string> names;
        for (const Enumeration::Item &item : enumeration->second->items)
            names.push_back(item.name.text);
        return names;
    }
    std::vector<std::string> names = librarySharedNames(word);
    bool isClass = !word.empty() && host::Host::shared().findClass(word);
    for (const std::string &name : isClass ? memberNames(word, true) : std::vector<std::string>())
        names.push_back(name);
    if (isClass || !names.empty())
        return names;
    return memberNames("NSUserDefaultsKTZ", false);
}

std::vector<std::string> Conversation::completions(const std::string &line) const
{
    size_t start = line.size();
    while (start > 0 && isWordCharacter(line[start - 1]))
        start--;
    std::string begun = line.substr(start);
    std::vector<std::string> names;
    if (start > 0 && line[start - 1] == '.') {
        size_t baseStart = start - 1;
        while (baseStart > 0 && isWordCharacter(line[baseStart - 1]))
            baseStart--;
        names = membersBehind(line.substr(baseStart, start - 1 - baseStart), _state->symbols);
    } else {
        names = _state->symbols.bareNames();
        names.insert(names.end(), reservedWords().begin(), reservedWords().end());
    }
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&](const std::string &name) {
                                   return !host::equalIgnoringCase(name.substr(0, begun.size()), begun);
                               }),
                names.end());
    std::sort(names.begin(), names.end(), IgnoringCase());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace script
