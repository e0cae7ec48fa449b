// A plug-in whose methods write down what they are given. It chooses its record version as plug-ins do.
#include "tests/host/test_plugin.h"

#include "host/interface/records.h"

#include <initializer_list>

namespace {

using namespace host::interface;

test_plugin::Seen seen;
Resolver resolve;

template <class Result, class... Arguments>
Result hostCall(const char *name, Arguments... arguments)
{
    return reinterpret_cast<Result (*)(Arguments...)>(resolve(name))(arguments...);
}

void initialise(void *self)
{
    ++seen.initialised;
    seen.self = self;
}

void finalise(void *)
{
    ++seen.finalised;
}

void construct(void *self)
{
    static_cast<int32_t *>(static_cast<void *>(static_cast<char *>(self) + kInstanceDataOffset))[0] = 1;
}

void constructWith(void *self, int32_t number)
{
    static_cast<int32_t *>(static_cast<void *>(static_cast<char *>(self) + kInstanceDataOffset))[0] = number;
}

void takeAll(void *self, int32_t integer, int64_t wide, float single, double real, uint8_t boolean, void *handle)
{
    seen = {self, integer, wide, single, real, boolean, handle, seen.initialised, seen.finalised};
}

int32_t data(void *self)
{
    return static_cast<int32_t *>(static_cast<void *>(static_cast<char *>(self) + kInstanceDataOffset))[0];
}

float halfOf(void *, float value)
{
    return value / 2;
}

double thirdOf(void *, double value)
{
    return value / 3;
}

int64_t nextOf(void *, int64_t value)
{
    return value + 1;
}

// Only the lowest byte of a boolean result counts; the rest of the word is not the callee's to clear.
uint32_t no(void *)
{
    return 0xABCDEF00;
}

uint32_t yes(void *)
{
    return 0xABCDEF01;
}

int32_t overloadedNumber(void *, int32_t)
{
    return 1;
}

int32_t overloadedText(void *, void *)
{
    return 2;
}

int32_t overloadedPair(void *, void *, void *)
{
    return 3;
}

int32_t itemFor(void *, void *key)
{
    seen.handle = key;
    return seen.integer;
}

void setItemFor(void *, void *key, int32_t value)
{
    seen.handle = key;
    seen.integer = value;
}

void *sameString(void *, void *string)
{
    if (string)
        hostCall<void>("REALLockString", string);
    return string;
}

void *sameVariant(void *, void *variant)
{
    seen.handle = variant;
    if (variant)
        hostCall<void>("REALLockObject", variant);
    return variant;
}

void *wrongResult(void *)
{
    return hostCall<void *>("PluginNewInstance", "Date");
}

void raiseTwice(void *)
{
    for (const char *name : {"OutOfMemoryException", "RuntimeException"}) {
        auto *exception = hostCall<void *>("PluginNewInstance", name);
        auto *message = hostCall<void *>("REALBuildString", name, int32_t(5));
        hostCall<void>("REALSetStringEncoding", message, uint32_t(0x0600));
        hostCall<uint8_t>("REALSetPropValueString", exception, "Message", message);
        hostCall<uint8_t>("REALSetPropValueInt", exception, "ErrorNumber", int32_t(7));
        hostCall<void>("RuntimeRaiseException", exception);
        hostCall<void>("REALUnlockObject", exception);
        hostCall<void>("REALUnlockString", message);
    }
}

void leakString(void *, int32_t count)
{
    for (int32_t i = 0; i < count; ++i)
        hostCall<void *>("REALBuildString", "lost", int32_t(4));
}

void unlockTwice(void *)
{
    auto *string = hostCall<void *>("REALBuildString", "twice", int32_t(5));
    hostCall<void>("REALUnlockString", string);
    hostCall<void>("REALUnlockString", string);
}

void unlockArgument(void *, void *object)
{
    hostCall<void>("REALUnlockObject", object);
}

int32_t sharedSum(int32_t a, int32_t b)
{
    return a + b;
}

template <class Function>
void *pointer(Function *function)
{
    return reinterpret_cast<void *>(function);
}

// clang-format off
const MethodRecord9 methods[] = {
    {pointer(construct), nullptr, "Constructor", 4},
    {pointer(constructWith), nullptr, "Constructor(number as integer)", 4},
    {pointer(takeAll), nullptr,
     "takeAll(i as integer, w as int64, s as single, d as double, b as boolean, o as dictionary)", 4},
    {pointer(data), nullptr, "data as integer", 4},
    {pointer(halfOf), nullptr, "halfOf(value as single) as single", 4},
    {pointer(thirdOf), nullptr, "thirdOf(value as double) as double", 4},
    {pointer(nextOf), nullptr, "nextOf(value as int64) as int64", 4},
    {pointer(no), nullptr, "no as boolean", 4},
    {pointer(yes), nullptr, "yes as boolean", 4},
    {pointer(overloadedNumber), nullptr, "overloaded(value as integer) as integer", 4},
    {pointer(overloadedText), nullptr, "overloaded(value as string) as integer", 4},
    {pointer(overloadedPair), nullptr, "overloaded(value as string, other as string) as integer", 4},
    {pointer(itemFor), pointer(setItemFor), "itemFor(key as string) as integer", 4},
    {pointer(sameString), nullptr, "sameString(s as string) as string", 4},
    {pointer(sameVariant), nullptr, "sameVariant(v as variant) as variant", 4},
    {pointer(wrongResult), nullptr, "wrongResult as dictionary", 4},
    {pointer(raiseTwice), nullptr, "raiseTwice", 4},
    {pointer(leakString), nullptr, "leakString(count as integer)", 4},
    {pointer(unlockTwice), nullptr, "unlockTwice", 4},
    {pointer(unlockArgument), nullptr, "unlockArgument(o as object)", 4},
    {nullptr, nullptr, "cannot be read (", 4},
};
const MethodRecord9 sharedMethods[] = {
    {pointer(sharedSum), nullptr, "sum(a as integer, b as integer) as integer", 4},
};
// clang-format on

MethodRecord widened[sizeof methods / sizeof methods[0]];
MethodRecord widenedShared[1];
ClassRecord record;

void fillRecord(int32_t version)
{
    bool isOld = version == kOldestRecordVersion;
    for (size_t i = 0; i < sizeof methods / sizeof methods[0]; ++i)
        widened[i] = {{methods[i].function, methods[i].setterFunction, methods[i].declaration, 4}, 0, nullptr};
    widenedShared[0] = {{sharedMethods[0].function, nullptr, sharedMethods[0].declaration, 4}, 0, nullptr};
    record = {};
    record.version = version;
    record.name = "TestClass";
    record.dataSize = 16;
    record.constructor = initialise;
    record.destructor = finalise;
    record.methods = isOld ? const_cast<MethodRecord9 *>(methods) : static_cast<void *>(widened);
    record.methodCount = sizeof methods / sizeof methods[0];
    record.sharedMethods = isOld ? const_cast<MethodRecord9 *>(sharedMethods) : static_cast<void *>(widenedShared);
    record.sharedMethodCount = 1;
    record.mFlags = 4;
}

} // namespace

extern "C" __attribute__((visibility("default"))) test_plugin::Seen *TestPluginSeen()
{
    return &seen;
}

extern "C" __attribute__((visibility("default"))) const ClassRecord *TestPluginRecord()
{
    return &record;
}

extern "C" __attribute__((visibility("default"))) void REALPluginMain(Resolver resolver)
{
    resolve = resolver;
    auto getVersion = reinterpret_cast<double (*)()>(resolver("REALGetRBVersion"));
    int32_t version = getVersion && getVersion() >= 2012.0 ? kNewestRecordVersion : kOldestRecordVersion;
    hostCall<void>("RegisterPluginVersion", version);
    fillRecord(version);
    hostCall<void>("PluginRegisterClass", static_cast<void *>(&record));
}
