// plughost suite add|remove NAME
#include <memory>

#include "host/plughost/commands/change.h"
#include "host/plughost/program.h"

namespace plughost {

static void addChange(Program &program, CLI::App *suite, const char *name, const char *description, const char *method)
{
    CLI::App *command = suite->add_subcommand(name, description);
    command->fallthrough();
    auto domain = std::make_shared<std::string>();
    addPlainArgument(command, "NAME", *domain, "The suite's domain")->required();
    program.onSession(command,
                      [=](Session &session) { printChange(session, [&] { session.call(method, {*domain}); }); });
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

} // namespace plughost
