// The functions behind the members of `NSUserDefaultsKTZ`, which the tables of the class name.
//
// Every method takes the host object first. Strings, dictionaries and other handles that come in are
// borrowed and may be null; a handle that goes out carries one lock for host code. Integers are 32 bits
// wide, a boolean is a byte. What Cocoa raises is raised in host code, and the method then gives 0, false,
// null or nothing.
#pragma once

#include "hostapi/types.h"

// The life of an instance (userdefaults/lifecycle.mm)
void NSUserDefaultsConstructor(REALobject self);
void NSUserDefaultsDestructor(REALobject self);
void Constructor(REALobject self);
void ConstructorUser(REALobject self, REALstring username);

// "_exception as NSExceptionKTZ" (userdefaults/exceptions.cpp): always null. It is there so that the class's
// interface names the exceptions that it raises.
REALobject DummyException(REALobject self);

// Shared members (userdefaults/shared_members.mm)
REALstring getNSGlobalDomain();
REALstring getNSArgumentDomain();
REALstring getNSRegistrationDomain();
REALstring getNSUserDefaultsDidChangeNotification();
void resetStandardUserDefaults();
REALobject standardUserDefaults();

// What is stored under a key (userdefaults/scalar_accessors.mm, userdefaults/text_accessors.mm,
// userdefaults/object_accessors.mm, userdefaults/array_accessors.mm). boolForKey gives the byte, sign-extended.
template <typename Value>
using Getter = Value(REALobject self, REALstring key);
template <typename Value>
using Setter = void(REALobject self, REALstring key, Value value);

// clang-format off
Getter<int32_t>         integerForKey;                  Setter<int32_t>         setIntegerForKey;
Getter<float>           floatForKey;                    Setter<float>           setFloatForKey;
Getter<double>          doubleForKey;                   Setter<double>          setDoubleForKey;
Getter<int32_t>         boolForKey;                     Setter<int8_t>          setBoolForKey;
Getter<REALstring>      stringForKey, URLForKey;        Setter<REALstring>      setStringForKey, setURLForKey;
Getter<REALmemoryBlock> dataForKey;                     Setter<REALmemoryBlock> setDataForKey;
Getter<REALobject>      objectForKey;                   Setter<REALobject>      setObjectForKey;
Getter<REALfolderItem>  fileForKey;                     Setter<REALfolderItem>  setFileForKey;
Getter<REALdictionary>  dictionaryForKey;               Setter<REALdictionary>  setDictionaryForKey;
Getter<REALarray>       stringArrayForKey, arrayForKey; Setter<REALarray>       setStringArrayForKey, setArrayForKey;
// clang-format on

// Domains, suites and the whole database (userdefaults/domains.mm)
RBBoolean synchronize(REALobject self);
void removeObjectForKey(REALobject self, REALstring defaultName);
void removeVolatileDomainForName(REALobject self, REALstring domainName);
void removePersistentDomainForName(REALobject self, REALstring domainName);
void addSuiteNamed(REALobject self, REALstring suiteName);
void removeSuiteNamed(REALobject self, REALstring suiteName);
void registerDefaults(REALobject self, REALdictionary dictionary);
REALdictionary dictionaryRepresentation(REALobject self);
RBBoolean objectIsForcedForKey(REALobject self, REALstring key);
RBBoolean objectIsForcedForKey2(REALobject self, REALstring key, REALstring domain);
void setPersistentDomain(REALobject self, REALdictionary domain, REALstring domainName);
void setVolatileDomain(REALobject self, REALdictionary domain, REALstring domainName);
REALarray persistentDomainNames(REALobject self);
REALdictionary persistentDomainForName(REALobject self, REALstring domainName);
REALarray volatileDomainNames(REALobject self);
REALdictionary volatileDomainForName(REALobject self, REALstring domainName);
