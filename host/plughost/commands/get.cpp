// plughost get TYPE KEY
#include <cstdio>
#include <memory>

#include "host/plughost/commands/type_argument.h"
#include "host/plughost/errors.h"
#include "host/plughost/json_value.h"
#include "host/plughost/program.h"

namespace plughost {

namespace {

struct Get {
    std::string type;
    std::string key;
    bool json = false;
    bool mustExist = false;

    void run(Session &session) const
    {
        const ValueType &wanted = typeArgument(type);
        if (mustExist && session.call("variantForKey", {key}).isNil())
            throw InputError("\"" + key + "\" has no value");
        host::Value value = session.call(wanted.getter, {key});
        if (wanted.kind == ValueType::Date && !value.isNil() && !value.isA("Date"))
            throw InputError("\"" + key + "\" holds no date, but " + value.typeName());
        puts((json ? jsonOf(value) : textOfValue(value)).c_str());
    }
};

} // namespace

void addGet(Program &program)
{
    CLI::App *command = program.add("get", "Print the value of a key, as the getter of that type gives it");
    auto get = std::make_shared<Get>();
    addTypeArgument(command, get->type);
    addPlainArgument(command, "KEY", get->key, "The key")->required();
    command->add_flag("--json", get->json, "Print JSON; what JSON cannot tell apart carries a tag such as \"$date\"");
    command->add_flag("--must-exist", get->mustExist, "Status 1 when the key has no value");
    command->footer(typesHelp() + "\nA missing key gives what host code gets: 0, false, an empty text or nil.\n"
                                  "--must-exist tells it from a value.");
    program.onSession(command, [get](Session &session) { get->run(session); });
}

} // namespace plughost
