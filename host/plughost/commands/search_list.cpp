// plughost suite add|remove NAME, register FILE: what a change of the search list brings into view and hides
#include <cstdio>
#include <map>
#include <memory>

#include "host/plughost/files.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"

namespace plughost {

using Values = std::map<std::string, std::string>; // key to JSON

static Values valuesInView(Session &session)
{
    host::Value all = session.call("dictionaryRepresentation");
    Values values;
    for (int32_t i = 0; i < all.count(); i++)
        values[all.keyAt(i).text()] = jsonOf(all.lookup(all.keyAt(i)));
    return values;
}

// Makes the change and prints, a line each, the keys whose values are other than before: with their new value, or as
// gone.
static void printChange(Session &session, const std::string &method, const host::Value &argument)
{
    Values before = valuesInView(session);
    session.call(method, {argument});
    Values after = valuesInView(session);
    for (const auto &[key, value] : after)
        if (before.count(key) == 0 || before[key] != value)
            printf("%s = %s\n", key.c_str(), value.c_str());
    for (const auto &[key, value] : before)
        if (after.count(key) == 0)
            printf("%s is gone\n", key.c_str());
}

static void addChange(Program &program, CLI::App *suite, const char *name, const char *description, const char *method)
{
    CLI::App *command = suite->add_subcommand(name, description);
    command->fallthrough();
    auto domain = std::make_shared<std::string>();
    addPlainArgument(command, "NAME", *domain, "The suite's domain")->required();
    program.onSession(command, [=](Session &session) { printChange(session, method, *domain); });
}

void addSuite(Program &program)
{
    CLI::App *command = program.add("suite", "Add a suite to the search list or remove one, and print what changes");
    command->require_subcommand(1);
    command->footer("A suite is searched for as long as a defaults object lives, which here is one command:\n"
                    "give --suite NAME to any other command that is to search it.");
    addChange(program, command, "add", "Search a suite, too", "addSuiteNamed");
    addChange(program, command, "remove", "Search a suite (of --suite) no longer", "removeSuiteNamed");
}

void addRegister(Program &program)
{
    CLI::App *command = program.add("register", "Register defaults from a JSON file, and print those that take effect");
    auto file = std::make_shared<std::string>();
    addPlainArgument(command, "FILE", *file, "The file, a JSON object; - is standard input")->required();
    command->footer("Registered defaults are never written to disk. They live as long as the process:\n"
                    "give --register FILE to any other command that is to see them.");
    program.onSession(command, [file](Session &session) {
        printChange(session, "registerDefaults", dictionaryOfJson(readFile(*file), nameOfFile(*file)));
    });
}

} // namespace plughost
