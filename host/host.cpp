#include "host/host.h"

#include <utility>

#include "host/runtime/entry_points.h"
#include "host/runtime/objects.h"
#include "host/runtime/state.h"

namespace host {

using namespace runtime;

// --- The host -------------------------------------------------------------------------------------------------------

Host &Host::shared()
{
    static Host *host = new Host;
    return *host;
}

Host::Host()
{
    addVariantClass();
    addDateClass();
    addDictionaryClass();
    addMemoryBlockClass();
    addFolderItemClass();
    addExceptionClasses();
}

void Host::use(const Profile &profile)
{
    state().profile = profile;
}

const Profile &Host::profile() const
{
    return state().profile;
}

interface::Resolver Host::resolver()
{
    return lookUp;
}

// --- Entry points ---------------------------------------------------------------------------------------------------

void Host::hide(const std::string &name)
{
    entryPointNamed(name).hidden = true;
}

void Host::show(const std::string &name)
{
    entryPointNamed(name).hidden = false;
}

void Host::showAll()
{
    for (EntryPoint *point : runtime::entryPoints())
        point->hidden = false;
    state().hiddenMethods.clear();
    state().hiddenProperties.clear();
}

void Host::replace(const std::string &name, void *function)
{
    entryPointNamed(name).replacement = function;
}

void Host::beforeCall(const std::string &name, std::function<void()> observer)
{
    entryPointNamed(name).observer = std::move(observer);
}

void Host::hideMethod(const std::string &className, const std::string &declaration)
{
    state().hiddenMethods.emplace_back(className, parseDeclaration(declaration));
}

void Host::hideProperty(const std::string &className, const std::string &property)
{
    state().hiddenProperties.emplace_back(className, property);
}

std::vector<EntryPointInfo> Host::entryPoints() const
{
    std::vector<EntryPointInfo> infos;
    for (const EntryPoint *point : runtime::entryPoints())
        infos.push_back({point->name, point->declaration != nullptr, point->isOffered(), point->hidden, point->lookups,
                         point->calls});
    return infos;
}

long Host::lookups(const std::string &name) const
{
    return entryPointNamed(name).lookups;
}

long Host::calls(const std::string &name) const
{
    return entryPointNamed(name).calls;
}

void Host::resetCounts()
{
    for (EntryPoint *point : runtime::entryPoints())
        point->lookups = point->calls = 0;
    state().lookupLog.clear();
    state().creations.clear();
}

const std::vector<std::string> &Host::lookupLog() const
{
    return state().lookupLog;
}

// --- Faults on request ----------------------------------------------------------------------------------------------

void Host::failCreation(Creation sort, int k, int times)
{
    state().plannedFaults[sort] = {k, times};
}

void Host::throwWhileBuildingString(int k, int times)
{
    state().stringBuildingFault = {k, times};
}

long Host::creations(Creation sort) const
{
    return state().creations[sort];
}

// --- Classes --------------------------------------------------------------------------------------------------------

const ClassDescription *Host::findClass(const std::string &name) const
{
    return runtime::findClass(name);
}

std::vector<const ClassDescription *> Host::classes(bool fromPluginsOnly) const
{
    std::vector<const ClassDescription *> descriptions;
    for (const Class *each : allClasses())
        if (each->fromPlugin || !fromPluginsOnly)
            descriptions.push_back(each);
    return descriptions;
}

std::vector<PropertyDescription> Host::properties(const std::string &className) const
{
    std::vector<PropertyDescription> descriptions;
    for (const Class *each = runtime::findClass(className); each; each = each->super)
        for (const Property &property : each->properties)
            descriptions.push_back({property.name, property.set != nullptr});
    return descriptions;
}

void Host::defineClass(const HostClass &definition)
{
    auto defined = std::make_unique<Class>();
    defined->name = definition.name;
    defined->superName = definition.superName;
    defined->dataSize = definition.dataSize;
    defined->initialiser = definition.initialiser;
    defined->finaliser = definition.finaliser;
    for (const HostMethod &method : definition.methods)
        defined->methods.push_back(describeMethod(method, false));
    for (const HostMethod &method : definition.sharedMethods)
        defined->sharedMethods.push_back(describeMethod(method, true));
    addClass(std::move(defined));
}

void Host::removeClass(const std::string &name)
{
    forgetClasses([&](const Class &each) { return equalIgnoringCase(each.name, name); });
}

const MethodDescription *Host::findMethod(const std::string &className, const std::string &nameOrDeclaration,
                                          bool isShared) const
{
    const Class *hostClass = runtime::findClass(className);
    if (!hostClass)
        return nullptr;
    Declaration wanted = parseDeclaration(nameOrDeclaration);
    auto candidates = methodsNamed(*hostClass, wanted.name, isShared);
    for (const MethodDescription *candidate : candidates)
        if (candidate->declaration.matches(wanted))
            return candidate;
    bool isBareName = wanted.parameters.empty() && wanted.result.passing == Passing::Nothing;
    return isBareName && candidates.size() == 1 ? candidates.front() : nullptr;
}

} // namespace host
