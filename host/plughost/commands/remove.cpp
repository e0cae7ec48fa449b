// plughost remove KEY
#include <memory>

#include "host/plughost/program.h"

namespace plughost {

void addRemove(Program &program)
{
    CLI::App *command = program.add("remove", "Remove the value of a key from the application's domain");
    auto key = std::make_shared<std::string>();
    addPlainArgument(command, "KEY", *key, "The key")->required();
    program.onSession(command, [key](Session &session) {
        session.call("removeObjectForKey", {*key});
        session.save();
    });
}

} // namespace plughost
