// roundtrip_process write|read SEED COUNT
//
// One host program of the two between which values travel. The writer stores COUNT random trees under keys of their
// numbers; the reader makes the same trees from the same seed and compares them with what it finds. Each prints how
// many it stored or found; the status is 1 when anything is not as the tables of docs/reference/conversions.md say.
#include "host/host.h"
#include "tests/roundtrip/tree.h"
#include "tests/support/plugin_under_test.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

using host::Value;
using roundtrip::Tree;

namespace {

int failures = 0;

void fail(int number, const std::string &what)
{
    failures++;
    printf("tree %d: %s\n", number, what.c_str());
}

std::string keyOf(int number)
{
    return "tree " + std::to_string(number);
}

// True when it was stored. What cannot be stored raises and leaves no value behind; nil and empty data store nothing.
bool store(const Value &defaults, int number, const Tree &tree)
{
    host::Host &host = host::Host::shared();
    const bool raises = tree.hasForm() && !tree.isStorable();
    host::Outcome outcome = host.tryCall(defaults, "setVariantValue", {keyOf(number), tree.value()});
    if (outcome.raised.size() != (raises ? 1 : 0))
        fail(number, std::to_string(outcome.raised.size()) + " exceptions raised");
    const bool isThere = !host.call(defaults, "variantForKey", {keyOf(number)}).isNil();
    if (isThere != tree.isStorable())
        fail(number, isThere ? "stored" : "not stored");
    return isThere;
}

bool find(const Value &defaults, int number, const Tree &tree)
{
    Value readBack = host::Host::shared().call(defaults, "variantForKey", {keyOf(number)});
    const std::string difference = tree.isStorable()  ? tree.difference(readBack, keyOf(number))
                                   : readBack.isNil() ? ""
                                                      : "something was stored";
    if (!difference.empty())
        fail(number, difference);
    return !readBack.isNil();
}

void checkLedger()
{
    host::Host &host = host::Host::shared();
    for (const host::HandleInfo &info : host.imbalances())
        fail(-1, "not balanced: " + info.text());
    for (const std::string &fault : host.takeFaults())
        fail(-1, "fault: " + fault);
}

void run(bool isWriter, uint64_t seed, int count)
{
    host::Host &host = host::Host::shared();
    host.use(*host::Profile::named(isWriter ? "2013.03" : "2014.1"));
    support::addPluginLoaders();
    host::CocoaPool pool;
    host.load(support::familyLibrary());
    host.load(support::pluginUnderTest());
    {
        Value defaults = host.callShared(support::kClass, "standardUserDefaults");
        roundtrip::Generator generator(seed);
        int done = 0;
        for (int number = 0; number < count; number++) {
            const Tree tree = generator.tree();
            done += isWriter ? store(defaults, number, tree) : find(defaults, number, tree);
            pool.drain();
        }
        if (isWriter && !host.call(defaults, "synchronize").boolean())
            fail(-1, "the database was not written");
        printf("%d\n", done);
    }
    pool.drain();
    checkLedger();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4 || (strcmp(argv[1], "write") != 0 && strcmp(argv[1], "read") != 0)) {
        fprintf(stderr, "usage: roundtrip_process write|read SEED COUNT\n");
        return 2;
    }
    run(strcmp(argv[1], "write") == 0, strtoull(argv[2], nullptr, 10), atoi(argv[3]));
    return failures ? 1 : 0;
}
