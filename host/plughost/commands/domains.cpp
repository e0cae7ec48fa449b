// plughost domains [NAME], dump [DOMAIN], load FILE [--into DOMAIN]
#include <cstdio>
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/files.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"
#include "host/plughost/storable.h"

namespace plughost {

static void print(const host::Value &domain)
{
    puts(jsonOf(domain, JsonLayout::Indented).c_str());
}

static void printNames(const char *heading, const host::Value &names)
{
    puts(heading);
    for (int32_t i = 0; i < names.count(); i++)
        printf("  %s\n", names.at(i).text().c_str());
}

void addDomains(Program &program)
{
    CLI::App *command = program.add("domains", "List the persistent and volatile domains, or print one");
    auto name = std::make_shared<std::string>();
    CLI::Option *one = addPlainArgument(command, "NAME", *name, "Print this domain as JSON; null when there is none");
    program.onSession(command, [=](Session &session) {
        if (!one->count()) {
            printNames("persistent", session.call("persistentDomainNames"));
            printNames("volatile", session.call("volatileDomainNames"));
            return;
        }
        host::Value domain = session.call("persistentDomainForName", {*name});
        print(domain.isNil() ? session.call("volatileDomainForName", {*name}) : domain);
    });
}

void addDump(Program &program)
{
    CLI::App *command = program.add("dump", "Print all values as JSON, for plughost load");
    auto domain = std::make_shared<std::string>();
    CLI::Option *one = addPlainArgument(command, "DOMAIN", *domain, "Only what this persistent domain holds");
    command->footer("Without DOMAIN, every value that the search list gives, the system's own among them.");
    program.onSession(command, [=](Session &session) {
        host::Value dumped = one->count() ? session.call("persistentDomainForName", {*domain})
                                          : session.call("dictionaryRepresentation");
        if (one->count() && dumped.isNil())
            throw InputError("there is no persistent domain \"" + *domain + "\"");
        print(dumped);
    });
}

// Answers how many values were stored.
static int32_t storeDomain(Session &session, const host::Value &values, const std::string &file,
                           const std::string &domain)
{
    requireStorable(values, nameOfFile(file));
    session.call("setPersistentDomain", {values, domain});
    return values.count();
}

// A dump holds what the system provides, too, and that is not to become the application's own: values that read the
// same already, and those of GNUstep's configuration, which a dump made elsewhere has otherwise (paths).
static int32_t storeDifferences(Session &session, const host::Value &values, const std::string &file)
{
    host::Value configuration = session.call("volatileDomainForName", {"GSConfigDomain"});
    std::vector<host::Arguments> differences; // a key and a value each
    for (int32_t i = 0; i < values.count(); i++) {
        host::Value key = values.keyAt(i);
        if (!key.isString())
            throw InputError("the key " + jsonOf(key) + " is no text");
        host::Value value = values.lookup(key);
        if (!configuration.isNil() && configuration.hasKey(key))
            continue;
        if (jsonOf(value) == jsonOf(session.call("variantForKey", {key})))
            continue;
        requireStorable(value, nameOfFile(file) + ": /" + key.text());
        differences.push_back({key, value});
    }
    for (const host::Arguments &difference : differences)
        session.call("setVariantValue", difference);
    return int32_t(differences.size());
}

void addLoad(Program &program)
{
    CLI::App *command = program.add("load", "Store the values of a JSON file, such as plughost dump prints");
    auto file = std::make_shared<std::string>(), domain = std::make_shared<std::string>();
    addPlainArgument(command, "FILE", *file, "The file; - is standard input")->required();
    CLI::Option *into = command->add_option("--into", *domain, "Make the file the whole of this persistent domain")
                            ->type_name("DOMAIN");
    command->footer("Without --into, values that differ from what their keys give now are stored in the application's\n"
                    "domain. Nothing is stored when any value cannot be; null, data of no bytes and the\n"
                    "like, which would remove values, are refused where there is a value.");
    program.onSession(command, [=](Session &session) {
        host::Value values = dictionaryOfJson(readFile(*file), nameOfFile(*file));
        int32_t stored =
            into->count() ? storeDomain(session, values, *file, *domain) : storeDifferences(session, values, *file);
        session.save();
        printf("%d of %d values stored\n", int(stored), int(values.count()));
    });
}

} // namespace plughost
