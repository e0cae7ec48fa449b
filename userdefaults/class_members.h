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

// Numbers, booleans and text (userdefaults/scalar_accessors.mm, userdefaults/text_accessors.mm)
int32_t integerForKey(REALobject self, REALstring key);
void setIntegerForKey(REALobject self, REALstring key, int32_t value);
float floatForKey(REALobject self, REALstring key);
void setFloatForKey(REALobject self, REALstring key, float value);
double doubleForKey(REALobject self, REALstring key);
void setDoubleForKey(REALobject self, REALstring key, double value);
int32_t boolForKey(REALobject self, REALstring key); // the byte, sign-extended
void setBoolForKey(REALobject self, REALstring key, int8_t value);
REALstring stringForKey(REALobject self, REALstring key);
void setStringForKey(REALobject self, REALstring key, REALstring value);
REALstring URLForKey(REALobject self, REALstring key);
void setURLForKey(REALobject self, REALstring key, REALstring value);

// Objects and collections (userdefaults/object_accessors.mm, userdefaults/array_accessors.mm)
REALmemoryBlock dataForKey(REALobject self, REALstring key);
void setDataForKey(REALobject self, REALstring key, REALmemoryBlock value);
REALobject objectForKey(REALobject self, REALstring key);
void setObjectForKey(REALobject self, REALstring key, REALobject value);
REALfolderItem fileForKey(REALobject self, REALstring key);
void setFileForKey(REALobject self, REALstring key, REALfolderItem value);
REALarray stringArrayForKey(REALobject self, REALstring key);
void setStringArrayForKey(REALobject self, REALstring key, REALarray values);
REALdictionary dictionaryForKey(REALobject self, REALstring key);
void setDictionaryForKey(REALobject self, REALstring key, REALdictionary value);
REALarray arrayForKey(REALobject self, REALstring key);
void setArrayForKey(REALobject self, REALstring key, REALarray values);

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
