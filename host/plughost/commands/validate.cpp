#include "host/plughost/commands/validate.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "ground.h"
#include "host/plughost/environment.h"
#include "host/plughost/errors.h"
#include "host/plughost/program.h"
#include "host/validate/validator.h"

namespace plughost {

namespace {

namespace fs = std::filesystem;

// Set to the id of the process that it was made for: a child process of another kind makes its own.
const char kConfigured[] = "PLUGHOST_VALIDATES";

std::string ownConfiguration()
{
    std::ifstream source(kGnustepConfigFile);
    std::ostringstream text;
    for (std::string line; std::getline(source, line);)
        if (line.rfind("GNUSTEP_USER_DEFAULTS_DIR=", 0) != 0)
            text << line << '\n';
    text << "GNUSTEP_USER_DEFAULTS_DIR=\"" << validate::kDefaultsFolder << "\"\n";
    return text.str();
}

std::vector<char *> ownArguments(std::string &text)
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), {});
    std::vector<char *> arguments;
    for (size_t i = 0; i < text.size(); i += strlen(&text[i]) + 1)
        arguments.push_back(&text[i]);
    arguments.push_back(nullptr);
    return arguments;
}

// Foundation reads its configuration before main, so the program is executed again with one in which every child
// process has the defaults database in its own current folder.
void configureFoundation()
{
    std::string self = std::to_string(getpid());
    const char *configured = getenv(kConfigured);
    if (configured && self == configured)
        return;
    std::string text = ownConfiguration();
    int file = memfd_create("GNUstep.conf", 0);
    if (file < 0 || fchmod(file, 0600) != 0 || write(file, text.data(), text.size()) != ssize_t(text.size()))
        throw InputError(std::string("cannot keep Foundation's configuration: ") + strerror(errno));
    setenv("GNUSTEP_CONFIG_FILE", ("/proc/self/fd/" + std::to_string(file)).c_str(), 1);
    setenv("GNUSTEP_TZ", "UTC", 1);
    setenv(kConfigured, self.c_str(), 1);
    std::string words;
    execv("/proc/self/exe", ownArguments(words).data());
    throw InputError(std::string("cannot execute the program again: ") + strerror(errno));
}

std::string absolutePath(const std::string &path)
{
    std::error_code error;
    fs::path absolute = fs::weakly_canonical(path, error);
    return error ? path : absolute.string();
}

int runValidator(const Options &options, validate::Settings settings)
{
    configureFoundation();
    settings.plugin = absolutePath(options.plugin.empty() ? besideProgram("NSUserDefaults.so") : options.plugin);
    settings.family = besideProgram("Family.so");
    if (!settings.jsonFile.empty())
        settings.jsonFile = absolutePath(settings.jsonFile);
    settings.program = fs::read_symlink("/proc/self/exe");
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
