// plughost describe
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "host/plughost/program.h"

namespace plughost {

static void printMethods(const char *heading, const std::vector<host::MethodDescription> &methods)
{
    printf("\n%zu %s\n", methods.size(), heading);
    for (const host::MethodDescription &method : methods)
        printf("  %c %s\n", method.setter ? '=' : ' ', method.text.c_str());
}

static void printDescription(Session &session)
{
    const host::ClassDescription &description = session.defaultsClass();
    printf("class %s\n", description.name.c_str());
    printf("  host %s, class record in layout version %d\n", session.host().profile().name.c_str(),
           int(description.recordVersion));
    printf("  %d bytes of instance data, %d bytes into each object\n", int(description.dataSize),
           int(description.dataOffset));
    printMethods("methods (= can be assigned to)", description.methods);
    printMethods("shared methods", description.sharedMethods);
}

static nlohmann::ordered_json methodsAsJson(const std::vector<host::MethodDescription> &methods)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const host::MethodDescription &method : methods)
        list.push_back({{"declaration", method.text}, {"assignable", method.setter != nullptr}});
    return list;
}

static void printJson(Session &session)
{
    const host::ClassDescription &description = session.defaultsClass();
    nlohmann::ordered_json json = {
        {"class", description.name},
        {"host", session.host().profile().name},
        {"recordVersion", description.recordVersion},
        {"dataSize", description.dataSize},
        {"dataOffset", description.dataOffset},
        {"methods", methodsAsJson(description.methods)},
        {"sharedMethods", methodsAsJson(description.sharedMethods)},
    };
    puts(json.dump(2).c_str());
}

void addDescribe(Program &program)
{
    CLI::App *command = program.add("describe", "Print the registered class as host code sees it");
    auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "Print JSON");
    program.onSession(command, [json](Session &session) { *json ? printJson(session) : printDescription(session); });
}

} // namespace plughost
