// plughost domains [NAME]
#include <cstdio>
#include <memory>

#include "host/plughost/json_value.h"
#include "host/plughost/program.h"

namespace plughost {

static void printNames(const char *heading, const host::Value &names)
{
    puts(heading);
    for (int32_t i = 0; i < names.count(); i++)
        printf("  %s\n", names.at(i).text().c_str());
}

static void printDomain(Session &session, const std::string &name)
{
    host::Value domain = session.call("persistentDomainForName", {name});
    if (domain.isNil())
        domain = session.call("volatileDomainForName", {name});
    puts(jsonOf(domain, JsonLayout::Indented).c_str());
}

void addDomains(Program &program)
{
    CLI::App *command = program.add("domains", "List the persistent and volatile domains, or print one");
    auto name = std::make_shared<std::string>();
    CLI::Option *one = addPlainArgument(command, "NAME", *name, "Print this domain as JSON; null when there is none");
    program.onSession(command, [=](Session &session) {
        if (one->count())
            return printDomain(session, *name);
        printNames("persistent", session.call("persistentDomainNames"));
        printNames("volatile", session.call("volatileDomainNames"));
    });
}

} // namespace plughost
