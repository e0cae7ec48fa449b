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
    guarded([=] {
        NSString *name = TextOf(defaultName);
        [defaultsOf(self) removeObjectForKey:name];
    });
}

void removeVolatileDomainForName(REALobject self, REALstring domainName)
{
    guarded([=] {
        NSString *name = TextOf(domainName);
        [defaultsOf(self) removeVolatileDomainForName:name];
    });
}

void removePersistentDomainForName(REALobject self, REALstring domainName)
{
    guarded([=] {
        NSString *name = TextOf(domainName);
        [defaultsOf(self) removePersistentDomainForName:name];
    });
}

void addSuiteNamed(REALobject self, REALstring suiteName)
{
    guarded([=] {
        NSString *name = TextOf(suiteName);
        [defaultsOf(self) addSuiteNamed:name];
    });
}

void removeSuiteNamed(REALobject self, REALstring suiteName)
{
    guarded([=] {
        NSString *name = TextOf(suiteName);
        [defaultsOf(self) removeSuiteNamed:name];
    });
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
    return guarded([=] {
        NSString *name = TextOf(key);
        return RBBoolean([defaultsOf(self) objectIsForcedForKey:name]);
    });
}

RBBoolean objectIsForcedForKey2(REALobject self, REALstring key, REALstring domain)
{
    return guarded([=] {
        NSString *name = TextOf(key);
        NSString *domainName = TextOf(domain);
        return RBBoolean([defaultsOf(self) objectIsForcedForKey:name inDomain:domainName]);
    });
}

void setPersistentDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guarded([=](HeldHandles &held) {
        NSString *name = TextOf(domainName);
        NSDictionary *values = NewNSDictionary(domain, held);
        [defaultsOf(self) setPersistentDomain:values forName:name];
    });
}

void setVolatileDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guarded([=](HeldHandles &held) {
        NSString *name = TextOf(domainName);
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
    return guarded([=](HeldHandles &held) {
        NSString *name = TextOf(domainName);
        return NSDictionaryRB([defaultsOf(self) persistentDomainForName:name], held);
    });
}

REALarray volatileDomainNames(REALobject self)
{
    return HostArrayOfNames(self, [](NSUserDefaults *defaults) { return [defaults volatileDomainNames]; });
}

REALdictionary volatileDomainForName(REALobject self, REALstring domainName)
{
    return guarded([=](HeldHandles &held) {
        NSString *name = TextOf(domainName);
        return NSDictionaryRB([defaultsOf(self) volatileDomainForName:name], held);
    });
}
