// A program with nothing in it but a loader: `plain_program FILE` opens a plug-in, runs its entry function and checks
// that it registered its class. Status 0 when all went well, else 1 with one line that says what did not.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>

static int32_t reportedVersion;
static const void *const *registeredRecord;

static void registerPluginVersion(int32_t version)
{
    reportedVersion = version;
}
static void registerClass(const void *const *record)
{
    registeredRecord = record;
}
static double hostVersion()
{
    return 2013.03;
}

static void *resolve(const char *name)
{
    if (!strcmp(name, "RegisterPluginVersion"))
        return reinterpret_cast<void *>(registerPluginVersion);
    if (!strcmp(name, "PluginRegisterClass"))
        return reinterpret_cast<void *>(registerClass);
    if (!strcmp(name, "REALGetRBVersion"))
        return reinterpret_cast<void *>(hostVersion);
    return nullptr;
}

static int failed(const char *what, const char *why)
{
    fprintf(stderr, "%s: %s\n", what, why);
    return 1;
}

int main(int, char **arguments)
{
    void *plugin = dlopen(arguments[1], RTLD_NOW);
    if (!plugin)
        return failed("not loaded", dlerror());
    auto entry = reinterpret_cast<void (*)(void *(*)(const char *))>(dlsym(plugin, "REALPluginMain"));
    if (!entry)
        return failed("no entry function", dlerror());
    entry(resolve);
    if (reportedVersion != 12)
        return failed("record version", "not 12");
    if (!registeredRecord || strcmp(static_cast<const char *>(registeredRecord[1]), "NSUserDefaultsKTZ") != 0)
        return failed("class", "not registered");
    return 0;
}
