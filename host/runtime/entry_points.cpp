#include "host/runtime/entry_points.h"

#include <cstring>

#include "host/exception.h"
#include "host/runtime/entries/entries.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host::runtime {

const std::vector<EntryPoint *> &entryPoints()
{
    using namespace entries;
    static const auto *const all = [] {
        auto *made = new std::vector<EntryPoint *>;
        for (EntryPoints (*table)() : {objectEntryPoints, stringEntryPoints, variantEntryPoints, arrayEntryPoints,
                                       memoryBlockEntryPoints, fileEntryPoints, familyEntryPoints})
            for (EntryPoint *point : table())
                made->push_back(point);
        return made;
    }();
    return *all;
}

EntryPoint &entryPointNamed(const std::string &name)
{
    for (EntryPoint *point : entryPoints())
        if (point->name == name)
            return *point;
    throw CallError("this host knows no entry point " + name);
}

bool EntryPoint::isOffered() const
{
    const Profile &profile = state().profile;
    if (hidden || profile.without.count(name))
        return false;
    return profile.versionNumber() >= since || profile.with.count(name) != 0;
}

void *EntryPoint::lookUp()
{
    ++lookups;
    return isOffered() ? entry : nullptr;
}

void *lookUp(const char *name)
{
    if (!name)
        return nullptr;
    state().lookupLog.push_back(name);
    for (EntryPoint *point : entryPoints())
        if (!point->declaration && strcmp(point->name, name) == 0)
            return point->lookUp();
    return nullptr;
}

void *lookUpGlobalMethod(const char *declaration)
{
    std::optional<Declaration> wanted = wantedDeclaration(declaration, "REALLoadGlobalMethod");
    for (EntryPoint *point : entryPoints())
        if (wanted && point->declaration && parseDeclaration(point->declaration).matches(*wanted))
            return point->lookUp();
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
