#include "host/script/help.h"

#include "host/host.h"
#include "host/script/arrays.h"
#include "host/script/host_members.h"
#include "host/script/library.h"

namespace script {

// Methods as they are declared, properties with their types; a name that is both is told once.
static std::vector<std::string> membersOf(const std::string &className, const std::string &only)
{
    std::vector<std::string> lines;
    auto isWanted = [&](const std::string &name) { return only.empty() || host::equalIgnoringCase(name, only); };
    for (bool isShared : {true, false})
        for (const std::string &name : memberNames(className, isShared)) {
            if (!isWanted(name))
                continue;
            for (const host::MethodDescription *method : methodsNamed(className, name, isShared))
                lines.push_back(className + "." + method->text);
            if (std::optional<PropertyFacts> property = isShared ? std::nullopt : findProperty(className, name))
                lines.push_back(className + "." + property->name + " As " + nameOf(property->type));
        }
    return lines;
}

std::vector<std::string> declarationsOf(const std::string &name)
{
    std::vector<std::string> lines;
    bool isClass = false;
    for (const std::string &className : classNames()) {
        bool isNamed = host::equalIgnoringCase(className, name);
        isClass = isClass || isNamed;
        std::vector<std::string> members = membersOf(className, isNamed ? "" : name);
        if (isNamed)
            lines = members;
        else if (!isClass)
            lines.insert(lines.end(), members.begin(), members.end());
    }
    for (const LibraryRow &row : libraryRows()) {
        bool isNamed = host::equalIgnoringCase(row.declaration.name, name) && !isClass;
        if (isNamed || host::equalIgnoringCase(row.owner, name))
            lines.push_back(row.text);
    }
    if (const ArrayMember *member = isClass ? nullptr : arrayMember(name))
        lines.push_back(std::string("array.") + member->name);
    return lines;
}

} // namespace script
