// plughost set TYPE KEY VALUE
#include <memory>

#include "host/plughost/commands/type_argument.h"
#include "host/plughost/program.h"
#include "host/plughost/storable.h"

namespace plughost {

namespace {

struct Set {
    std::string type;
    std::string key;
    std::string value;

    void run(Session &session) const
    {
        const ValueType &wanted = typeArgument(type);
        host::Value stored = valueOfText(wanted.kind, value, key);
        requireStorable(wanted, stored, key);
        session.call(wanted.setter, {key, stored});
        session.save();
    }
};

} // namespace

void addSet(Program &program)
{
    CLI::App *command = program.add("set", "Store a value under a key, with the setter of that type");
    auto set = std::make_shared<Set>();
    addTypeArgument(command, set->type);
    addPlainArgument(command, "KEY", set->key, "The key")->required();
    addPlainArgument(command, "VALUE", set->value, "The value")->required();
    command->footer(typesHelp() + "\nJSON values may carry the tags that `plughost get --json` prints, such as\n"
                                  "{\"$date\": \"2012-02-29T10:20:30\"}, {\"$data\": \"00ff\"}, {\"$single\": 0.1}.\n"
                                  "Put -- before a value that starts with a dash and is no number. Values that the "
                                  "class would not store (null, data of no\n"
                                  "bytes, a text that is no URL) are refused: plughost remove KEY removes one.");
    program.onSession(command, [set](Session &session) { set->run(session); });
}

} // namespace plughost
