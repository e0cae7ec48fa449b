// The carried defaults object as a whole: writing to disk, removing, domains, suites, registered and
// forced values.
#include "bridge/data/dictionary.h"
#include "bridge/data/string_array.h"
#include "hostapi/services.h"
#include "userdefaults/carried_defaults.h"
#include "userdefaults/filled_array.h"

RBBoolean synchronize(REALobject self)
{
    return guarded([=] { return RBBoolean([*DefaultsWord(self, kInstanceDataOffset) synchronize]); });
}

void removeObjectForKey(REALobject self, REALstring defaultName)
{
    guardedWith(defaultName, [=](NSString *name) { [defaultsOf(self) removeObjectForKey:name]; });
}

void removeVolatileDomainForName(REALobject self, REALstring domainName)
{
    guardedWith(domainName, [=](NSString *name) { [defaultsOf(self) removeVolatileDomainForName:name]; });
}

void removePersistentDomainForName(REALobject self, REALstring domainName)
{
    guardedWith(domainName, [=](NSString *name) { [defaultsOf(self) removePersistentDomainForName:name]; });
}

void addSuiteNamed(REALobject self, REALstring suiteName)
{
    guardedWith(suiteName, [=](NSString *name) { [defaultsOf(self) addSuiteNamed:name]; });
}

void removeSuiteNamed(REALobject self, REALstring suiteName)
{
    guardedWith(suiteName, [=](NSString *name) { [defaultsOf(self) removeSuiteNamed:name]; });
}

void registerDefaults(REALobject self, REALdictionary dictionary)
{
    guarded([=](HeldHandles &held) {
        NSDictionary *values = NewNSDictionary(dictionary, held);
        [defaultsOf(self) registerDefaults:values];
    });
}

REALdictionary dictionaryRepresentation(REALobject self)
{
    return guarded(
        [=](HeldHandles &held) { return NSDictionaryRB([defaultsOf(self) dictionaryRepresentation], held); });
}

RBBoolean objectIsForcedForKey(REALobject self, REALstring key)
{
    return guardedWith(key, [=](NSString *name) { return RBBoolean([defaultsOf(self) objectIsForcedForKey:name]); });
}

RBBoolean objectIsForcedForKey2(REALobject self, REALstring key, REALstring domain)
{
    return guardedWith(key, [=](NSString *name) {
        NSString *domainName = TextOf(domain);
        return RBBoolean([defaultsOf(self) objectIsForcedForKey:name inDomain:domainName]);
    });
}

void setPersistentDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guardedWith(domainName, [=](NSString *name, HeldHandles &held) {
        NSDictionary *values = NewNSDictionary(domain, held);
        [defaultsOf(self) setPersistentDomain:values forName:name];
    });
}

void setVolatileDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guardedWith(domainName, [=](NSString *name, HeldHandles &held) {
        NSDictionary *values = NewNSDictionary(domain, held);
        [defaultsOf(self) setVolatileDomain:values forName:name];
    });
}

// The shape of both lists of names.
template <typename NamesOf>
static REALarray HostArrayOfNames(REALobject self, NamesOf namesOf)
{
    return FilledArray(kHostStringElements, [=](REALarray array, HeldHandles &held) {
        FillStringArray(array, namesOf(defaultsOf(self)), held);
    });
}

REALarray persistentDomainNames(REALobject self)
{
    return HostArrayOfNames(self, [](NSUserDefaults *defaults) { return [defaults persistentDomainNames]; });
}

REALdictionary persistentDomainForName(REALobject self, REALstring domainName)
{
    return guardedWith(domainName, [=](NSString *name, HeldHandles &held) {
        return NSDictionaryRB([defaultsOf(self) persistentDomainForName:name], held);
    });
}

REALarray volatileDomainNames(REALobject self)
{
    return HostArrayOfNames(self, [](NSUserDefaults *defaults) { return [defaults volatileDomainNames]; });
}

REALdictionary volatileDomainForName(REALobject self, REALstring domainName)
{
    return guardedWith(domainName, [=](NSString *name, HeldHandles &held) {
        return NSDictionaryRB([defaultsOf(self) volatileDomainForName:name], held);
    });
}
