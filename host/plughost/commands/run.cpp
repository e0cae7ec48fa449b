// plughost run FILE
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/files.h"
#include "host/plughost/program.h"
#include "host/script/script.h"

namespace plughost {

void addRun(Program &program)
{
    CLI::App *command = program.add("run", "Run a program in the host's language (docs/script.md)");
    auto file = std::make_shared<std::string>();
    addPlainArgument(command, "FILE", *file, "The program; \"-\" reads it from standard input")->required();
    program.onSession(command, [&program, file](Session &session) {
        if (!program.options.suites.empty() || !program.options.registrations.empty())
            session.defaults(); // applies them
        if (!script::runProgram(nameOfFile(*file), readFile(*file)))
            throw Reported();
        session.end();
    });
}

} // namespace plughost
