#include "bench/ground.h"

#include "tools/machorun/host_loader.h"

#include <ground.h> // of the build: where its files are

#include <Foundation/Foundation.h>

#include <cstdlib>
#include <stdexcept>

namespace bench {

// clang-format off
static const Configuration kConfigurations[] = {
    // name                 profile    CFStrings  wrapped  all cases
    {"2013.03",             "2013.03", true,      true,    true},
    {"2013.03, no CFString", "2013.03", false,    true,    false},
    {"2014.1",              "2014.1",  true,      true,    false},
    {"2011.4",              "2011.4",  false,     true,    false},
    {"2011.4, CFString",    "2011.4",  true,      true,    false},
    {"2013.03, no wrapper", "2013.03", true,      false,   false},
};
// clang-format on

const Configuration *configurationNamed(const std::string &name)
{
    for (const Configuration &configuration : kConfigurations)
        if (configuration.name == name)
            return &configuration;
    return nullptr;
}

static host::Profile profileOf(const Configuration &configuration)
{
    host::Profile profile = host::Profile::named(configuration.profile).value();
    if (configuration.hostMakesCFStrings)
        profile.with.insert("REALGetStringCFString");
    else
        profile.without.insert("REALGetStringCFString");
    if (!configuration.objectsAreWrapped)
        profile.familyLeavesOut.insert("KTZREALobjectWrapper");
    return profile;
}

Ground::Ground(const Configuration &configuration) : configuration(configuration), host(host::Host::shared())
{
    host.use(profileOf(configuration));
    host.addLoader(machorun::HostLoader());
    host.load(std::string(kBuildDir) + "/Family.so");
    const char *other = getenv("PLUGIN_UNDER_TEST"); // the macOS file, or another build
    plugin = &host.open(other && *other ? other : std::string(kBuildDir) + "/NSUserDefaults.so");
    code = codeAround(plugin->symbol("REALPluginMain"));
}

void *Ground::functionOf(const std::string &declaration, bool isShared)
{
    const host::MethodDescription *method = host.findMethod("NSUserDefaultsKTZ", declaration, isShared);
    if (!method)
        throw std::invalid_argument("the class has no method " + declaration);
    return method->function;
}

void *Ground::self()
{
    if (_standard.isNil())
        _standard = host.callShared("NSUserDefaultsKTZ", "standardUserDefaults");
    return _standard.handle();
}

void giveBack(void *handle)
{
    host::Value::adopt(handle);
}

void *newPool()
{
    return [NSAutoreleasePool new];
}

void endPool(void *pool)
{
    [static_cast<NSAutoreleasePool *>(pool) release];
}

void addSteady(Cases &cases, Ground &ground, Extent extent)
{
    if (!ground.configuration.objectsAreWrapped) {
        addUnlistedHostObject(cases, ground);
        return;
    }
    addStrings(cases, ground, extent);
    if (ground.host.profile().versionNumber() >= 2013)
        addCollections(cases, ground, extent);
    if (ground.configuration.allCases) {
        addData(cases, ground, extent);
        addObjects(cases, ground);
        addMembers(cases, ground);
    }
}

} // namespace bench
