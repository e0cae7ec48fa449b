// plughost register FILE
#include <memory>

#include "host/plughost/commands/change.h"
#include "host/plughost/files.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"

namespace plughost {

void addRegister(Program &program)
{
    CLI::App *command = program.add("register", "Register defaults from a JSON file, and print those that take effect");
    auto file = std::make_shared<std::string>();
    addPlainArgument(command, "FILE", *file, "The file, a JSON object; - is standard input")->required();
    command->footer("Registered defaults are never written to disk. They live as long as the process:\n"
                    "give --register FILE to any other command that is to see them.");
    program.onSession(command, [file](Session &session) {
        host::Value defaults = dictionaryOfJson(readFile(*file), nameOfFile(*file));
        printChange(session, [&] { session.call("registerDefaults", {defaults}); });
    });
}

} // namespace plughost
