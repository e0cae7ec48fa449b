#include "host/validate/rows/expected.h"
#include "host/validate/rows/samples.h"
#include "host/validate/rows/tables.h"

namespace validate {

using host::Arguments;

namespace {

// Sends the method's own name, without arguments.
Row sendsItsName(const char *declaration, Answer answer, Text result)
{
    Row row = plain(declaration, std::move(result));
    row.answer = std::move(answer);
    row.message = text(row.name);
    return row;
}

Row registers()
{
    Row row = plain("registerDefaults(dic as dictionary)", nullptr);
    row.arguments = [] { return Arguments{dictionary()}; };
    row.message = [](World &world) { return "registerDefaults:" + readDictionary(world); };
    return row;
}

Row asksInDomain()
{
    Row row = getter("objectIsForcedForKey(key as string, domain as string) as boolean", "",
                     answerNumber("objectIsForcedForKey:inDomain:", char(1)), text("true"), "domain");
    row.arguments = [] { return Arguments{kKey, "Domain"}; };
    row.message = [](World &world) {
        std::string name = key(world);
        return "objectIsForcedForKey:" + name + " inDomain:" + world.text("Domain");
    };
    return row;
}

Row setsDomain(const std::string &name)
{
    Row row = plain(name + "(domain as dictionary, domainName as string)", nullptr);
    row.arguments = [] { return Arguments{dictionary(), kKey}; };
    row.message = [=](World &world) {
        std::string domain = key(world); // the name is converted first
        return name + ":" + readDictionary(world) + " forName:" + domain;
    };
    return row;
}

std::string listOfTwo(World &world)
{
    return newList(world, {newString("first"), newString("second")});
}

} // namespace

// clang-format off

Rows domainRows()
{
    return {
        sendsItsName("synchronize as boolean", answerNumber("synchronize", char(1)), text("true")),
        named("removeObjectForKey(defaultName as string)"),
        named("removeVolatileDomainForName(domainName as string)"),
        named("removePersistentDomainForName(domainName as string)"),
        named("addSuiteNamed(suiteName as string)"),
        named("removeSuiteNamed(suiteName as string)"),
        registers(),
        sendsItsName("dictionaryRepresentation as dictionary", answerObject("dictionaryRepresentation", nestedDictionary), newNestedDictionary),
        getter("objectIsForcedForKey(key as string) as boolean", "objectIsForcedForKey", answerNumber("objectIsForcedForKey:", char(1)), text("true")),
        asksInDomain(),
        setsDomain("setPersistentDomain"),
        setsDomain("setVolatileDomain"),
        sendsItsName("persistentDomainNames as string()", answerObject("persistentDomainNames", twoStrings), listOfTwo),
        sendsItsName("volatileDomainNames as string()", answerObject("volatileDomainNames", twoStrings), listOfTwo),
        getter("persistentDomainForName(domainName as string) as dictionary", "persistentDomainForName",
               answerObject("persistentDomainForName:", nestedDictionary), newNestedDictionary),
        getter("volatileDomainForName(domainName as string) as dictionary", "volatileDomainForName",
               answerObject("volatileDomainForName:", nestedDictionary), newNestedDictionary),
    };
}

// clang-format on

} // namespace validate
