#include "host/plughost/command_line.h"

#include <algorithm>

#include "host/declaration.h"
#include "host/plughost/errors.h"
#include "host/script/host_members.h"

namespace plughost {

// The library takes a word that begins with a dash and a letter for options, so these go through it in disguise.
static const char kMask = '\x1F';

static bool looksLikeOptions(const std::string &word)
{
    for (const char *number : {"-infinity", "-inf", "-nan"})
        if (host::equalIgnoringCase(word, number))
            return true;
    return false;
}

static std::string masked(const std::string &word)
{
    return looksLikeOptions(word) ? kMask + word : word;
}

static std::string unmasked(const std::string &word)
{
    return !word.empty() && word[0] == kMask && looksLikeOptions(word.substr(1)) ? word.substr(1) : word;
}

static const CLI::App &innermost(const CLI::App &app)
{
    std::vector<const CLI::App *> chosen = app.get_subcommands([](const CLI::App *each) { return each->parsed(); });
    return chosen.empty() ? app : innermost(*chosen.back());
}

static std::vector<std::string> commandNames(const CLI::App &app)
{
    std::vector<std::string> names;
    for (const CLI::App *command : app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    return names;
}

static std::vector<std::string> optionNames(const CLI::App &app)
{
    std::vector<std::string> names;
    for (const CLI::App *each = &app; each; each = each->get_parent())
        for (const CLI::Option *option : each->get_options(nullptr))
            if (!option->get_positional())
                names.push_back("--" + option->get_single_name());
    return names;
}

// What was meant, or what there is.
static std::string commandHint(const std::string &word, const std::vector<std::string> &commands)
{
    std::string hint = script::suggestion(word, commands);
    if (hint.empty())
        for (const std::string &command : commands)
            hint += (hint.empty() ? "; commands are " : ", ") + command;
    return hint;
}

// An option that there is not, or a word in the place of a command that is none.
static void refuseUnknown(const CLI::App &app)
{
    const CLI::App &command = innermost(app);
    std::vector<std::string> words = app.remaining(true);
    auto isOption = [](const std::string &word) { return word.rfind("--", 0) == 0; };
    auto option = std::find_if(words.begin(), words.end(), isOption);
    if (option != words.end()) {
        std::string name = option->substr(0, option->find('='));
        throw UsageError("there is no option \"" + name + "\"" + script::suggestion(name, optionNames(command)));
    }
    std::vector<std::string> commands = commandNames(command);
    if (!commands.empty() && !words.empty())
        throw UsageError("there is no command \"" + words[0] + "\"" + commandHint(words[0], commands));
}

void readArguments(CLI::App &app, int count, char **arguments)
{
    std::vector<std::string> words; // from the last to the first
    for (int i = count - 1; i > 0; i--)
        words.push_back(masked(arguments[i]));
    try {
        app.parse(words);
    } catch (const CLI::Success &) { // help and version
        throw;
    } catch (const CLI::ParseError &) {
        refuseUnknown(app);
        throw;
    }
}

CLI::Option *addPlainArgument(CLI::App *command, const std::string &name, std::function<void(const std::string &)> take,
                              const std::string &description)
{
    CLI::callback_t takeFirst = [take](const CLI::results_t &results) {
        take(unmasked(results.front()));
        return true;
    };
    return command->add_option(name, takeFirst, description)->type_size(1)->expected(1)->allow_extra_args(false);
}

CLI::Option *addPlainArgument(CLI::App *command, const std::string &name, std::string &text,
                              const std::string &description)
{
    return addPlainArgument(
        command, name, [&text](const std::string &given) { text = given; }, description);
}

} // namespace plughost
