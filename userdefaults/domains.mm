// The carried defaults object as a whole: writing to disk, removing, domains, suites, registered and
// forced values.
#include "bridge/data/dictionary.h"
#include "bridge/data/string_array.h"
#include "plugin/host_functions.h"
#include "userdefaults/carried_defaults.h"
#include "userdefaults/filled_array.h"

RBBoolean synchronize(REALobject self)
{
    return guarded([=] { return RBBoolean([*DefaultsWord(self, kInstanceDataOffset) synchronize]); });
}

void removeObjectForKey(REALobject self, REALstring defaultName)
{
    guarded([=] { [defaultsOf(self) removeObjectForKey:textOf(defaultName)]; });
}

void removeVolatileDomainForName(REALobject self, REALstring domainName)
{
    guarded([=] { [defaultsOf(self) removeVolatileDomainForName:textOf(domainName)]; });
}

void removePersistentDomainForName(REALobject self, REALstring domainName)
{
    guarded([=] { [defaultsOf(self) removePersistentDomainForName:textOf(domainName)]; });
}

void addSuiteNamed(REALobject self, REALstring suiteName)
{
    guarded([=] { [defaultsOf(self) addSuiteNamed:textOf(suiteName)]; });
}

void removeSuiteNamed(REALobject self, REALstring suiteName)
{
    guarded([=] { [defaultsOf(self) removeSuiteNamed:textOf(suiteName)]; });
}

void registerDefaults(REALobject self, REALdictionary dictionary)
{
    guarded([=] { [defaultsOf(self) registerDefaults:NewNSDictionary(dictionary)]; });
}

REALdictionary dictionaryRepresentation(REALobject self)
{
    return guarded([=] { return NSDictionaryRB([defaultsOf(self) dictionaryRepresentation]); });
}

RBBoolean objectIsForcedForKey(REALobject self, REALstring key)
{
    return guarded([=] { return RBBoolean([defaultsOf(self) objectIsForcedForKey:textOf(key)]); });
}

RBBoolean objectIsForcedForKey2(REALobject self, REALstring key, REALstring domain)
{
    return guarded([=] {
        NSString *name = textOf(key);
        return RBBoolean([defaultsOf(self) objectIsForcedForKey:name inDomain:textOf(domain)]);
    });
}

void setPersistentDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guarded([=] {
        NSString *name = textOf(domainName);
        [defaultsOf(self) setPersistentDomain:NewNSDictionary(domain) forName:name];
    });
}

void setVolatileDomain(REALobject self, REALdictionary domain, REALstring domainName)
{
    guarded([=] {
        NSString *name = textOf(domainName);
        [defaultsOf(self) setVolatileDomain:NewNSDictionary(domain) forName:name];
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
    return guarded([=] { return NSDictionaryRB([defaultsOf(self) persistentDomainForName:textOf(domainName)]); });
}

REALarrayString volatileDomainNames(REALobject self)
{
    return HostArrayOfNames(self, [](NSUserDefaults *defaults) { return [defaults volatileDomainNames]; });
}

REALdictionary volatileDomainForName(REALobject self, REALstring domainName)
{
    return guarded([=] { return NSDictionaryRB([defaultsOf(self) volatileDomainForName:textOf(domainName)]); });
}
