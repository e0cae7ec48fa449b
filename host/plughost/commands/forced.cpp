// plughost forced KEY [DOMAIN]
#include <cstdio>
#include <memory>

#include "host/plughost/program.h"
#include "host/plughost/text_value.h"

namespace plughost {

void addForced(Program &program)
{
    CLI::App *command = program.add("forced", "Print whether an administrator has fixed the value of a key");
    auto key = std::make_shared<std::string>();
    auto domain = std::make_shared<std::string>();
    addPlainArgument(command, "KEY", *key, "The key")->required();
    CLI::Option *inDomain = addPlainArgument(command, "DOMAIN", *domain, "Asked of this domain only");
    program.onSession(command, [=](Session &session) {
        host::Arguments arguments = {*key};
        if (inDomain->count())
            arguments.push_back(*domain);
        puts(textOfValue(session.call("objectIsForcedForKey", arguments)).c_str());
    });
}

} // namespace plughost
