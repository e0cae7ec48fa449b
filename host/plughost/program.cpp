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

CLI::Option *addPlainArgument(CLI::App *command, const std::string &name, std::string &text,
                              const std::string &description)
{
    CLI::callback_t take = [&text](const CLI::results_t &results) {
        text = results.front();
        return true;
    };
    return command->add_option(name, take, description)->type_size(1)->expected(1)->allow_extra_args(false);
}

} // namespace plughost
