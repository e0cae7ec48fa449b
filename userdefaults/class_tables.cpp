#include "userdefaults/class_tables.h"

#include "userdefaults/class_members.h"

#include <iterator>

// Function pointers go into the host's records as plain addresses, and only a cast that stays a constant
// keeps the tables free of start-up code.
#define FUNCTION(function) ((const void *)(function))
#define METHOD(declaration, function)                                                                                  \
    {                                                                                                                  \
        FUNCTION(function), nullptr, declaration, kMemberFlags, 0, nullptr                                             \
    }
#define ASSIGNABLE(declaration, getter, setter)                                                                        \
    {                                                                                                                  \
        FUNCTION(getter), FUNCTION(setter), declaration, kMemberFlags, 0, nullptr                                      \
    }

// clang-format off

// A getter that can be assigned to carries its setter; the same setter is a method of its own further
// down. The two array getters cannot be assigned to: host programs rely on their declarations as they are.
static const REALmethodDefinition methods[] = {
    METHOD("_exception as NSExceptionKTZ", DummyException),
    METHOD("Constructor", Constructor),
    METHOD("Constructor(username as string)", ConstructorUser),
    METHOD("synchronize as boolean", synchronize),
    METHOD("removeObjectForKey(defaultName as string)", removeObjectForKey),
    METHOD("removeVolatileDomainForName(domainName as string)", removeVolatileDomainForName),
    METHOD("removePersistentDomainForName(domainName as string)", removePersistentDomainForName),
    METHOD("addSuiteNamed(suiteName as string)", addSuiteNamed),
    METHOD("removeSuiteNamed(suiteName as string)", removeSuiteNamed),
    ASSIGNABLE("integerForKey(key as string) as integer", integerForKey, setIntegerForKey),
    ASSIGNABLE("floatForKey(key as string) as single", floatForKey, setFloatForKey),
    ASSIGNABLE("doubleForKey(key as string) as double", doubleForKey, setDoubleForKey),
    ASSIGNABLE("boolForKey(key as string) as boolean", boolForKey, setBoolForKey),
    ASSIGNABLE("stringForKey(key as string) as string", stringForKey, setStringForKey),
    ASSIGNABLE("dataForKey(key as string) as memoryblock", dataForKey, setDataForKey),
    ASSIGNABLE("variantForKey(key as string) as variant", objectForKey, setObjectForKey),
    ASSIGNABLE("fileForKey(key as string) as folderitem", fileForKey, setFileForKey),
    ASSIGNABLE("URLForKey(key as string) as string", URLForKey, setURLForKey),
    METHOD("stringArrayForKey(key as string) as string()", stringArrayForKey),
    ASSIGNABLE("dictionaryForKey(key as string) as dictionary", dictionaryForKey, setDictionaryForKey),
    METHOD("arrayForKey(key as string) as variant()", arrayForKey),
    METHOD("setIntegerValue(key as string, value as integer)", setIntegerForKey),
    METHOD("setFloatValue(key as string, value as single)", setFloatForKey),
    METHOD("setDoubleValue(key as string, value as double)", setDoubleForKey),
    METHOD("setBoolValue(key as string, value as boolean)", setBoolForKey),
    METHOD("setStringValue(key as string, value as string)", setStringForKey),
    METHOD("setDataValue(key as string, value as memoryblock)", setDataForKey),
    METHOD("setVariantValue(key as string, value as variant)", setObjectForKey),
    METHOD("setFileValue(key as string, value as folderitem)", setFileForKey),
    METHOD("setURLValue(key as string, value as string)", setURLForKey),
    METHOD("setStringArrayValue(key as string, values() as string)", setStringArrayForKey),
    METHOD("setDictionaryValue(key as string, value as dictionary)", setDictionaryForKey),
    METHOD("setArrayValue(key as string, values() as variant)", setArrayForKey),
    METHOD("registerDefaults(dic as dictionary)", registerDefaults),
    METHOD("dictionaryRepresentation as dictionary", dictionaryRepresentation),
    METHOD("objectIsForcedForKey(key as string) as boolean", objectIsForcedForKey),
    METHOD("objectIsForcedForKey(key as string, domain as string) as boolean", objectIsForcedForKey2),
    METHOD("setPersistentDomain(domain as dictionary, domainName as string)", setPersistentDomain),
    METHOD("setVolatileDomain(domain as dictionary, domainName as string)", setVolatileDomain),
    METHOD("persistentDomainNames as string()", persistentDomainNames),
    METHOD("persistentDomainForName(domainName as string) as dictionary", persistentDomainForName),
    METHOD("volatileDomainNames as string()", volatileDomainNames),
    METHOD("volatileDomainForName(domainName as string) as dictionary", volatileDomainForName),
};

static const REALmethodDefinition sharedMethods[] = {
    METHOD("NSGlobalDomain as string", getNSGlobalDomain),
    METHOD("NSArgumentDomain as string", getNSArgumentDomain),
    METHOD("NSRegistrationDomain as string", getNSRegistrationDomain),
    METHOD("NSUserDefaultsDidChangeNotification as string", getNSUserDefaultsDidChangeNotification),
    METHOD("resetStandardUserDefaults", resetStandardUserDefaults),
    METHOD("standardUserDefaults as NSUserDefaultsKTZ", standardUserDefaults),
};

// The record as it is before any registration; it is never changed.
static const REALclassDefinition original = {
    kNewestRecordVersion,
    "NSUserDefaultsKTZ",
    nullptr,                                    // superName: none
    sizeof(void *),                             // dataSize: the carried NSUserDefaults object
    0,                                          // forSystemUse
    FUNCTION(NSUserDefaultsConstructor),
    FUNCTION(NSUserDefaultsDestructor),
    nullptr, 0,                                 // properties
    methods, std::size(methods),
    nullptr, 0,                                 // events
    nullptr, 0,                                 // eventInstances
    nullptr,                                    // interfaces
    nullptr, 0,                                 // bindDescriptions
    nullptr, 0,                                 // constants
    kMemberFlags,
    nullptr, 0,                                 // sharedProperties
    sharedMethods, std::size(sharedMethods),
    nullptr, 0,                                 // delegates
    nullptr, 0,                                 // enums
};

// clang-format on

REALclassDefinition userDefaultsClass;

void RestoreUserDefaultsClass()
{
    const int32_t instanceDataOffset = userDefaultsClass.forSystemUse;
    userDefaultsClass = original;
    userDefaultsClass.forSystemUse = instanceDataOffset;
}
