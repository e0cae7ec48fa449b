// plughost get TYPE KEY, set TYPE KEY VALUE, remove KEY, forced KEY [DOMAIN]
#include <cstdio>
#include <memory>

#include "host/plughost/errors.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"
#include "host/plughost/storable.h"

namespace plughost {

namespace {

struct Asked {
    std::string type, key, value, domain;
    bool json = false;
    bool mustExist = false;
};

void addKey(CLI::App *command, Asked &asked)
{
    addPlainArgument(command, "KEY", asked.key, "The key")->required();
}

// A name that is no type is wrong usage.
void addTypeAndKey(CLI::App *command, Asked &asked)
{
    auto check = [](const std::string &name) {
        std::string names;
        for (const ValueType &type : valueTypes())
            names += (names.empty() ? "" : ", ") + std::string(type.name);
        return valueTypeNamed(name) ? "" : "there is no type \"" + name + "\"; types are " + names;
    };
    command->add_option("TYPE", asked.type, "The type of the value")->required()->check(check);
    addKey(command, asked);
}

// For the end of a help text.
std::string typesHelp()
{
    std::string help = "Types and how their values are written:\n";
    for (const ValueType &type : valueTypes()) {
        std::string name = type.name;
        help += "  " + name + std::string(13 - name.size(), ' ') + type.written + "\n";
    }
    return help;
}

void get(Session &session, const Asked &asked)
{
    const ValueType &wanted = *valueTypeNamed(asked.type);
    if (asked.mustExist && session.call("variantForKey", {asked.key}).isNil())
        throw InputError("\"" + asked.key + "\" has no value");
    host::Value value = session.call(wanted.getter, {asked.key});
    if (wanted.kind == ValueType::Date && !value.isNil() && !value.isA("Date"))
        throw InputError("\"" + asked.key + "\" holds no date, but " + value.typeName());
    puts((asked.json ? jsonOf(value) : textOfValue(value)).c_str());
}

void set(Session &session, const Asked &asked)
{
    const ValueType &wanted = *valueTypeNamed(asked.type);
    host::Value stored = valueOfText(wanted.kind, asked.value, asked.key);
    requireStorable(wanted, stored, asked.key);
    session.call(wanted.setter, {asked.key, stored});
    session.save();
}

} // namespace

void addGet(Program &program)
{
    CLI::App *command = program.add("get", "Print the value of a key, as the getter of that type gives it");
    auto asked = std::make_shared<Asked>();
    addTypeAndKey(command, *asked);
    command->add_flag("--json", asked->json, "Print JSON; what JSON cannot tell apart carries a tag such as \"$date\"");
    command->add_flag("--must-exist", asked->mustExist, "Status 1 when the key has no value");
    command->footer(typesHelp() + "\nA missing key gives what host code gets: 0, false, an empty text or nil.\n"
                                  "--must-exist tells it from a value.");
    program.onSession(command, [asked](Session &session) { get(session, *asked); });
}

void addSet(Program &program)
{
    CLI::App *command = program.add("set", "Store a value under a key, with the setter of that type");
    auto asked = std::make_shared<Asked>();
    addTypeAndKey(command, *asked);
    addPlainArgument(command, "VALUE", asked->value, "The value")->required();
    command->footer(typesHelp() + "\nJSON values may carry the tags that `plughost get --json` prints, such as\n"
                                  "{\"$date\": \"2012-02-29T10:20:30\"}, {\"$data\": \"00ff\"}, {\"$single\": 0.1}.\n"
                                  "Put -- before a value that starts with a dash and is no number. Values that the "
                                  "class would not store (null, data of no\n"
                                  "bytes, a text that is no URL) are refused: plughost remove KEY removes one.");
    program.onSession(command, [asked](Session &session) { set(session, *asked); });
}

void addRemove(Program &program)
{
    CLI::App *command = program.add("remove", "Remove the value of a key from the application's domain");
    auto asked = std::make_shared<Asked>();
    addKey(command, *asked);
    program.onSession(command, [asked](Session &session) {
        session.call("removeObjectForKey", {asked->key});
        session.save();
    });
}

void addForced(Program &program)
{
    CLI::App *command = program.add("forced", "Print whether an administrator has fixed the value of a key");
    auto asked = std::make_shared<Asked>();
    addKey(command, *asked);
    CLI::Option *inDomain = addPlainArgument(command, "DOMAIN", asked->domain, "Asked of this domain only");
    program.onSession(command, [=](Session &session) {
        host::Arguments arguments = {asked->key};
        if (inDomain->count())
            arguments.push_back(asked->domain);
        puts(textOfValue(session.call("objectIsForcedForKey", arguments)).c_str());
    });
}

} // namespace plughost
