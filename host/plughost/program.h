// The program as its commands see it. A command is one function of a file in commands/, listed below, that adds the
// subcommand to the command line and says what to do when it is chosen.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "host/plughost/command_line.h"
#include "host/plughost/options.h"
#include "host/plughost/session.h"

namespace plughost {

struct Program {
    CLI::App app;
    Options options;
    std::function<int()> chosen; // what the command line asks for; answers the exit status

    // A subcommand that takes the common options, too.
    CLI::App *add(const std::string &name, const std::string &description);
    // The body runs in a session when the subcommand was chosen.
    void onSession(CLI::App *command, std::function<void(Session &)> body);
};

void addDescribe(Program &program);
void addGet(Program &program);
void addSet(Program &program);
void addRemove(Program &program);
void addCall(Program &program);
void addDomains(Program &program);
void addSuite(Program &program);
void addRegister(Program &program);
void addRun(Program &program);
void addForced(Program &program);
void addDump(Program &program);
void addLoad(Program &program);
void addTour(Program &program);

} // namespace plughost
