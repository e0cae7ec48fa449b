// plughost tour [PART]
#include <cstdio>
#include <memory>
#include <sstream>

#include "ground.h"
#include "host/plughost/commands/tour_text.h"
#include "host/plughost/errors.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"
#include "host/plughost/text_value.h"
#include "host/script/script.h"
#include "host/script/text_functions.h"

namespace plughost {

namespace {

// Domain names stand in the text, so the tour has its own application.
const char kDomain[] = "Tour";

// A value as host code writes it, where it can be written.
std::string spelled(const host::Value &value)
{
    if (value.isNil())
        return "Nil";
    if (value.isString())
        return value.describe();
    if (value.kind() == host::Value::Kind::Boolean)
        return value.boolean() ? "True" : "False";
    if (value.isA("RuntimeException"))
        return value.className() + ": " + value.property("Message").text();
    for (const char *className : {"MemoryBlock", "FolderItem", "Date"})
        if (value.isA(className))
            return className + (" " + textOfValue(value));
    return textOfValue(value);
}

std::string outputOf(const std::string &commandLine)
{
    FILE *pipe = popen(commandLine.c_str(), "r");
    if (!pipe)
        return "cannot run " + commandLine;
    std::string output;
    char buffer[512];
    while (size_t length = fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, length);
    pclose(pipe);
    while (!output.empty() && output.back() == '\n')
        output.pop_back();
    return output;
}

class Tour {
public:
    void walk(const std::string &text)
    {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            size_t mark = std::min(line.find(" -> "), line.find(" !> "));
            std::string code = line.substr(0, mark), expected = mark < line.size() ? line.substr(mark + 4) : "";
            if (line[0] == '#')
                printf("\n%s\n", line.substr(2).c_str());
            else if (line[0] == '$')
                runCommand(line, lines);
            else if (mark == std::string::npos)
                print(line), run(line);
            else if (line[mark + 1] == '-')
                show(code, run("(" + code + ")"), expected);
            else
                showRaised(code, run("Try\n" + code + "\nCatch e As RuntimeException\ne\nEnd Try"), expected);
        }
    }

    // Runs host code without showing it, and gives what its expression gave.
    std::string run(const std::string &code)
    {
        _value.clear();
        using Answer = script::Conversation::Answer;
        _failures += _conversation.enter(code + "\n") != Answer::Done;
        return _value;
    }

    void show(const std::string &code, const std::string &result, const std::string &expected)
    {
        size_t used = script::charactersOf(code).size();
        print(code + std::string(used < kResultColumn ? kResultColumn - used : 1, ' ') + "-> " + result);
        compare(result, expected);
    }

    int failures() const { return _failures; }

private:
    static constexpr size_t kResultColumn = 62;

    static void print(std::string text)
    {
        for (size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 5)
            text.insert(at + 1, "    ");
        printf("    %s\n", text.c_str());
    }

    void compare(const std::string &result, const std::string &expected)
    {
        if (result == expected)
            return;
        _failures++;
        print("*** expected: " + expected);
    }

    void showRaised(const std::string &code, const std::string &raised, const std::string &expected)
    {
        print(code);
        print("  raises " + (raised.empty() ? "nothing" : raised));
        compare(raised, expected);
    }

    void runCommand(const std::string &line, std::istringstream &expectedLines)
    {
        static const std::string tool = "$ defaults ";
        std::string expected;
        for (std::string each; expectedLines.peek() == '|' && std::getline(expectedLines, each);)
            expected += (expected.empty() ? "" : "\n") + each.substr(1);
        print(line);
        std::string output = outputOf("'" + std::string(kDefaultsTool) + "' " + line.substr(tool.size()) + " 2>&1");
        if (!output.empty())
            print(output);
        compare(output, expected);
    }

    std::string _value; // of the expression that was run last
    int _failures = 0;
    script::Conversation _conversation{[this](const host::Value &value) { _value = spelled(value); }};
};

// Collections are equal by what they hold, which host code would have to look at piece by piece.
void compareDomains(Session &session, Tour &tour)
{
    host::Value own = session.call("persistentDomainForName", {kDomain});
    host::Value all = session.call("dictionaryRepresentation");
    for (int32_t i = 0; i < own.count(); i++) {
        std::string lookup = ".Value(\"" + own.keyAt(i).text() + "\")";
        bool isSame = jsonOf(all.lookup(own.keyAt(i))) == jsonOf(own.lookup(own.keyAt(i)));
        tour.show("all" + lookup + " = own" + lookup, spelled(isSame), "True");
    }
}

void runTour(Session &session, const std::string &part)
{
    printf("A host that reports version %s\n", session.host().profile().name.c_str());
    session.defaults();
    Tour tour;
    tour.run("Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults");
    tour.walk(part == "basics" ? kTourBasics : kTourValues);
    if (part == "values")
        compareDomains(session, tour);
    if (tour.failures())
        throw InputError("lines of the tour that are not as expected: " + std::to_string(tour.failures()));
}

} // namespace

void addTour(Program &program)
{
    CLI::App *command =
        program.add("tour", "Walk through the class and check every result, also with the defaults tool");
    auto part = std::make_shared<std::string>();
    command->add_option("PART", *part, "basics (numbers and text) or values (everything else)")
        ->required()
        ->check(CLI::IsMember({"basics", "values"}));
    command->footer("Needs --defaults-dir: the tour starts in an empty folder and fills it.");
    command->callback([&program, part] {
        program.options.domain = kDomain;
        program.chosen = [&program, part] {
            if (program.options.defaultsDir.empty())
                throw UsageError("tour: needs --defaults-dir DIR, an empty folder that it may fill");
            return runInSession(program.options, [part](Session &session) { runTour(session, *part); });
        };
    });
}

} // namespace plughost
