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
        NSString *name = textOf(defaultName);
        [defaultsOf(self) removeObjectForKey:name];
    });
}

void removeVolatileDomainForName(REALobject self, REALstring domainName)
{
    guarded([=] {
        NSString *name = textOf(domainName);
        [defaultsOf(self) removeVolatileDomainForName:name];
    });
}

void removePersistentDomainForName(REALobject self, REALstring domainName)
{
    guarded([=] {
        NSString *name = textOf(domainName);
        [defaultsOf(self) removePersistentDomainForName:name];
    });
}

void addSuiteNamed(REALobject self, REALstring suiteName)
{
    guarded([=] {
        NSString *name = textOf(suiteName);
        [defaultsOf(self) addSuiteNamed:name];
    });
}

void removeSuiteNamed(REALobject self, REALstring suiteName)
{
    guarded([=] {
        NSString *name = textOf(suiteName);
        [defaultsOf(self) removeSuiteNamed:name];
    });
}

void registerDefaults(REALobject self, REALdictionary dictionary)
{
    guarded([=] {
        NSDictionary *values = NewNSDictionary(dictionary);
        [defaultsOf(self) registerDefaults:values];
    });
}

REALdictionary dictionaryRepresentation(REALobject self)
{
    return guarded([=] { return NSDictionaryRB([defaultsOf(self) dictionaryRepresentation]); });
}

RBBoolean objectIsForcedForKey(REALobject self, REALstring key)
{
    return guarded([=] {
        NSString *name = textOf(key);
        return RBBoolean([defaultsOf(self) objectIsForcedForKey:name]);
    });
}

RBBoolean objectIsForcedForKey2(REALobject self, REALstring key, REALstring domain)
{
    return guarded([=] {
        NSString *name = textOf(key);
        NSString *domainName = textOf(domain);
        return RBBoolean([defaultsOf(self) objectIsForcedForKey:name inDomain:domainName]);
    });
}

void setPersistentDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guarded([=] {
        NSString *name = textOf(domainName);
        NSDictionary *values = NewNSDictionary(domain);
        [defaultsOf(self) setPersistentDomain:values forName:name];
    });
}

void setVolatileDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guarded([=] {
        NSString *name = textOf(domainName);
        NSDictionary *values = NewNSDictionary(domain);
        [defaultsOf(self) setVolatileDomain:values forName:name];
    });
}

// The shape of both lists of names.
template <typename NamesOf>
static REALarrayString HostArrayOfNames(REALobject self, NamesOf namesOf)
{
    return reinterpret_cast<REALarrayString>(
        FilledArray(REALCreateArray(kHostStringElements, kEmptyArrayBound), [=](REALarray array) {
            FillStringArray(reinterpret_cast<REALarrayString>(array), namesOf(defaultsOf(self)));
        }));
}

REALarrayString persistentDomainNames(REALobject self)
{
    return HostArrayOfNames(self, [](NSUserDefaults *defaults) { return [defaults persistentDomainNames]; });
}

REALdictionary persistentDomainForName(REALobject self, REALstring domainName)
{
    return guarded([=] {
        NSString *name = textOf(domainName);
        return NSDictionaryRB([defaultsOf(self) persistentDomainForName:name]);
    });
}

REALarrayString volatileDomainNames(REALobject self)
{
    return HostArrayOfNames(self, [](NSUserDefaults *defaults) { return [defaults volatileDomainNames]; });
}

REALdictionary volatileDomainForName(REALobject self, REALstring domainName)
{
    return guarded([=] {
        NSString *name = textOf(domainName);
        return NSDictionaryRB([defaultsOf(self) volatileDomainForName:name]);
    });
}
