// A plug-in with faults: the real one, with some of its methods replaced between it and the host.
#include "host/interface/records.h"

#include <cstring>
#include <dlfcn.h>
#include <unistd.h>

using namespace host::interface;

static Resolver hostResolver = nullptr;
static void *(*wholeStringForKey)(void *self, void *key) = nullptr;

static int32_t crash(void *, void *)
{
    return *static_cast<volatile int32_t *>(nullptr);
}

static uint8_t hang(void *, void *)
{
    for (;;)
        pause();
}

static float answerWrongly(void *, void *)
{
    return 3.0f;
}

static void leaveOut(void *, void *) {}

static void *lockOnceTooMany(void *self, void *key)
{
    void *string = wholeStringForKey(self, key);
    auto lockString = reinterpret_cast<void (*)(void *)>(hostResolver("REALLockString"));
    if (string)
        lockString(string);
    return string;
}

static bool declares(const MethodRecord &method, const char *name)
{
    size_t length = strlen(name);
    return strncmp(method.declaration, name, length) == 0 && method.declaration[length] == '(';
}

template <class Function>
static void replace(MethodRecord &method, const char *name, Function *function)
{
    if (declares(method, name))
        method.function = reinterpret_cast<void *>(function);
}

static void registerBroken(ClassRecord9 *record)
{
    // A copy: the table itself cannot be written.
    static MethodRecord methods[64];
    memcpy(methods, record->methods, size_t(record->methodCount) * sizeof *methods);
    record->methods = methods;
    for (int32_t i = 0; i < record->methodCount; i++) {
        if (declares(methods[i], "stringForKey"))
            wholeStringForKey = reinterpret_cast<void *(*)(void *, void *)>(methods[i].function);
        replace(methods[i], "integerForKey", crash);
        replace(methods[i], "boolForKey", hang);
        replace(methods[i], "floatForKey", answerWrongly);
        replace(methods[i], "removeObjectForKey", leaveOut);
        replace(methods[i], "stringForKey", lockOnceTooMany);
    }
    reinterpret_cast<void (*)(ClassRecord9 *)>(hostResolver("PluginRegisterClass"))(record);
}

static void *resolve(const char *name)
{
    if (strcmp(name, "PluginRegisterClass") == 0)
        return reinterpret_cast<void *>(registerBroken);
    return hostResolver(name);
}

extern "C" __attribute__((visibility("default"))) void REALPluginMain(Resolver resolver)
{
    hostResolver = resolver;
    void *whole = dlopen(WHOLE_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    if (!whole)
        return; // no class is registered, and every case fails
    reinterpret_cast<PluginMain>(dlsym(whole, kPluginMainName))(resolve);
}
