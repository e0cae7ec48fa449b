#include "host/plughost/commands/validate.h"

#include <filesystem>
#include <memory>

#include "host/isolation/configuration.h"
#include "host/plughost/errors.h"
#include "host/plughost/program.h"
#include "host/validate/validator.h"

namespace plughost {

namespace {

namespace fs = std::filesystem;

std::string absolutePath(const std::string &path)
{
    std::error_code error;
    fs::path absolute = fs::weakly_canonical(path, error);
    return error ? path : absolute.string();
}

int runValidator(const Options &options, validate::Settings settings)
{
    isolation::keepDefaultsInCurrentFolder();
    settings.plugin = absolutePath(options.pluginFile());
    settings.family = options.familyFile();
    if (!settings.jsonFile.empty())
        settings.jsonFile = absolutePath(settings.jsonFile);
    settings.program = options.programFolder + "/plughost";
    return validate::run(settings) ? kDone : kBadInput;
}

} // namespace

void addValidate(Program &program)
{
    CLI::App *command = program.add("validate", "Try to break the plug-in: thousands of cases, each in a process that "
                                                "may crash or hang");
    auto settings = std::make_shared<validate::Settings>();
    command->add_option("--level", settings->level, "How many of the cases: 5 for daily use, 10 for a release")
        ->check(CLI::Range(1, 10))
        ->capture_default_str();
    command->add_option("--only", settings->only, "The cases whose names begin so")->type_name("PREFIX");
    command->add_option("--seed", settings->seed, "Decides every random choice")->capture_default_str();
    command->add_option("--repeat", settings->repeat, "Run everything so many times")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    command->add_flag("--shuffle", settings->shuffle, "In an order that the seed decides");
    command->add_option("--jobs", settings->jobs, "Processes at a time [one for each processor]")
        ->check(CLI::PositiveNumber);
    command->add_option("--time-limit", settings->timeLimit, "Seconds for a case [20; more for those that take long]")
        ->check(CLI::PositiveNumber);
    command->add_option("--json", settings->jsonFile, "Write the outcome to this file, too")->type_name("FILE");
    command->add_flag("--list", settings->list, "Print the names of the cases and run none");
    command->footer("Each failure prints the line that reproduces it. The last line counts.");
    command->callback([&program, settings] {
        program.chosen = [&program, settings] { return runValidator(program.options, *settings); };
    });
}

} // namespace plughost
