#include "host/runtime/entry_points.h"

#include <cstring>

#include "host/exception.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host::runtime {

const std::vector<Door *> &doors()
{
    using namespace entries;
    static const auto *const all = [] {
        auto *made = new std::vector<Door *>;
        for (Doors (*table)() :
             {objectDoors, stringDoors, variantDoors, arrayDoors, memoryBlockDoors, fileDoors, familyDoors})
            for (Door *door : table())
                made->push_back(door);
        return made;
    }();
    return *all;
}

Door &doorNamed(const std::string &name)
{
    for (Door *door : doors())
        if (door->name == name)
            return *door;
    throw CallError("this host knows no entry point " + name);
}

bool Door::isOffered() const
{
    const Profile &profile = state().profile;
    if (hidden || profile.without.count(name))
        return false;
    return profile.versionNumber() >= since || profile.with.count(name) != 0;
}

void *Door::lookUp()
{
    ++lookups;
    return isOffered() ? entry : nullptr;
}

void *lookUp(const char *name)
{
    if (!name)
        return nullptr;
    state().lookupLog.push_back(name);
    for (Door *door : doors())
        if (!door->declaration && strcmp(door->name, name) == 0)
            return door->lookUp();
    return nullptr;
}

void *lookUpGlobalMethod(const char *declaration)
{
    std::optional<Declaration> wanted = wantedDeclaration(declaration, "REALLoadGlobalMethod");
    for (Door *door : doors())
        if (wanted && door->declaration && parseDeclaration(door->declaration).matches(*wanted))
            return door->lookUp();
    return nullptr;
}

std::optional<Declaration> wantedDeclaration(const char *text, const char *user)
{
    try {
        return parseDeclaration(text);
    } catch (const DeclarationError &error) {
        noteFault(std::string(user) + ": " + error.what());
        return std::nullopt;
    }
}

} // namespace host::runtime
