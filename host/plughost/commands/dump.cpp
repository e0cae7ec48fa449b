// plughost dump [DOMAIN]
#include <cstdio>
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"

namespace plughost {

static host::Value dumped(Session &session, const std::string *domain)
{
    if (!domain)
        return session.call("dictionaryRepresentation");
    host::Value dictionary = session.call("persistentDomainForName", {*domain});
    if (dictionary.isNil())
        throw InputError("there is no persistent domain \"" + *domain + "\"");
    return dictionary;
}

void addDump(Program &program)
{
    CLI::App *command = program.add("dump", "Print all values as JSON, for plughost load");
    auto domain = std::make_shared<std::string>();
    CLI::Option *one = addPlainArgument(command, "DOMAIN", *domain, "Only what this persistent domain holds");
    command->footer("Without DOMAIN, every value that the search list gives, the system's own among them.");
    program.onSession(command, [=](Session &session) {
        puts(jsonOf(dumped(session, one->count() ? domain.get() : nullptr), JsonLayout::Indented).c_str());
    });
}

} // namespace plughost
