#include "host/script/objects.h"

#include <unordered_map>

#include "host/host.h"

namespace script {

using Fields = std::unordered_map<void *, std::vector<host::Value>>;

static Fields &allFields()
{
    static Fields *fields = new Fields;
    return *fields;
}

// What the fields hold may die with them and come back here, so they leave the table first.
static void forgetFields(void *object)
{
    auto found = allFields().find(object);
    if (found == allFields().end())
        return;
    std::vector<host::Value> fields = std::move(found->second);
    allFields().erase(found);
}

void defineScriptClass(const ClassDefinition &definition)
{
    host::HostClass made;
    made.name = definition.name.text;
    made.superName = definition.superName ? definition.superName->text : "";
    made.finaliser = forgetFields;
    host::Host::shared().defineClass(made);
}

std::vector<host::Value> &fieldsOf(const host::Value &object)
{
    return allFields()[object.handle()];
}

} // namespace script
