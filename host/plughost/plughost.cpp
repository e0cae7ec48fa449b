#include "host/plughost/plughost.h"

#include <csignal>
#include <cstdio>
#include <exception>

#include "ground.h"
#include "host/exception.h"
#include "host/plughost/commands/validate.h"
#include "host/plughost/errors.h"
#include "host/plughost/interactive.h"
#include "host/plughost/program.h"
#include "host/script/shortened.h"

namespace plughost {

static const char kOverview[] =
    "Loads the plug-in into an embedded host and uses its class NSUserDefaultsKTZ, one call of host code a command.";

static const char kExamples[] = "Exit status: 0 done, 1 bad input or a host exception, 2 wrong usage.\n"
                                "\n"
                                "Examples:\n"
                                "  plughost set string Greeting \"hello\"\n"
                                "  plughost get string Greeting\n"
                                "  plughost set variant Window '{\"frame\": [0, 0, 800, 600], \"open\": true}'\n"
                                "  plughost describe --host 2011.4\n"
                                "  plughost get integer Runs --without REALLockObject --check-handles";

static void addCommonOptions(CLI::App &app, Options &options)
{
    app.add_option("--host", options.host, "The host's version; \"2009\" has no version number")
        ->type_name("VERSION")
        ->capture_default_str();
    app.add_option("--without", options.without, "An entry point that this host lacks (repeatable)")
        ->type_name("ENTRYPOINT")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--plugin", options.plugin, "The plug-in to load [NSUserDefaults.so beside the program]")
        ->type_name("FILE");
    app.add_flag("--no-family", options.withoutFamily, "Without the companion library of the plug-in family");
    app.add_option("--domain", options.domain, "The application's name, which names its domain")
        ->type_name("NAME")
        ->capture_default_str();
    app.add_option("--user", options.user, "The defaults of this user instead of the standard ones")->type_name("NAME");
    app.add_option("--defaults-dir", options.defaultsDir, "The folder of the defaults database [the user's own]")
        ->type_name("DIR")
        ->envname("PLUGHOST_DEFAULTS_DIR");
    app.add_option("--suite", options.suites, "A suite to search, too (repeatable)")
        ->type_name("NAME")
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--register", options.registrations, "A JSON file of defaults to register first (repeatable)")
        ->type_name("FILE")
        ->take_all()
        ->allow_extra_args(false);
    app.add_flag("--check-handles", options.checkHandles, "List handles whose lock count is wrong; status 1 if any");
    app.add_flag("--show-log", options.showLog, "Show what the plug-in logs about exceptions that it raises");
}

static void addCommands(Program &program)
{
    addDescribe(program);
    addGet(program);
    addSet(program);
    addRemove(program);
    addCall(program);
    addDomains(program);
    addSuite(program);
    addRegister(program);
    addRun(program);
    addForced(program);
    addDump(program);
    addLoad(program);
    addTour(program);
    addValidate(program);
}

static int printError(const char *message, int status)
{
    fprintf(stderr, "plughost: %s\n", script::shortened(message).c_str());
    return status;
}

static int runCommand(const std::string &folder, int count, char **arguments)
{
    Program program;
    program.options.programFolder = folder;
    program.app.name("plughost");
    program.app.description(kOverview);
    program.app.footer(kExamples);
    program.app.get_formatter()->column_width(30);
    program.app.set_version_flag("--version", std::string("plughost ") + kVersion);
    program.app.require_subcommand(0, 1);
    addCommonOptions(program.app, program.options);
    addCommands(program);
    try {
        readArguments(program.app, count, arguments);
        return program.chosen ? program.chosen() : runInteractively(program);
    } catch (const CLI::Success &success) {
        return program.app.exit(success); // prints the help or the version
    } catch (const CLI::ParseError &error) {
        printError(error.what(), kWrongUsage);
        fputs("Run plughost --help, or plughost COMMAND --help.\n", stderr);
        return kWrongUsage;
    } catch (const UsageError &error) {
        return printError(error.what(), kWrongUsage);
    } catch (const std::exception &error) {
        return printError(error.what(), kBadInput);
    }
}

int run(const std::string &folder, int count, char **arguments)
{
    // A write beyond a limit of the shell's fails, and is told; it does not end the process in the middle.
    signal(SIGXFSZ, SIG_IGN);
    // A line is out when it is printed, whatever happens then.
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    int status = runCommand(folder, count, arguments);
    if (fflush(stdout) == 0 && !ferror(stdout))
        return status;
    fputs("plughost: standard output could not be written\n", stderr);
    return status == kDone ? kBadInput : status;
}

} // namespace plughost
