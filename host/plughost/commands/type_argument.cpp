#include "host/plughost/commands/type_argument.h"

namespace plughost {

static std::string typeNames()
{
    std::string names;
    for (const ValueType &type : valueTypes())
        names += (names.empty() ? "" : ", ") + std::string(type.name);
    return names;
}

CLI::Option *addTypeArgument(CLI::App *command, std::string &type)
{
    auto check = [](const std::string &name) {
        return valueTypeNamed(name) ? "" : "there is no type \"" + name + "\"; types are " + typeNames();
    };
    return command->add_option("TYPE", type, "The type of the value")->required()->check(check);
}

const ValueType &typeArgument(const std::string &name)
{
    return *valueTypeNamed(name);
}

std::string typesHelp()
{
    std::string help = "Types and how their values are written:\n";
    for (const ValueType &type : valueTypes()) {
        std::string name = type.name;
        help += "  " + name + std::string(13 - name.size(), ' ') + type.written + "\n";
    }
    return help;
}

} // namespace plughost
