#include "host/plughost/program.h"

namespace plughost {

CLI::App *Program::add(const std::string &name, const std::string &description)
{
    CLI::App *command = app.add_subcommand(name, description);
    command->fallthrough();
    return command;
}

void Program::onSession(CLI::App *command, std::function<void(Session &)> body)
{
    command->callback([this, body] { chosen = [this, body] { return runInSession(options, body); }; });
}

} // namespace plughost
