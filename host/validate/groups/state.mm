// The life of many objects: created, used and destroyed in random order, with standardUserDefaults and
// resetStandardUserDefaults in between. The registry holds exactly the objects that carry something, and at the end
// no handle, no Cocoa object and no memory is left.
#include "host/validate/case.h"
#include "host/validate/ground.h"

#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>
#include <malloc.h>
#include <map>
#include <random>

@interface NSException (ValidatedFamily)
+ (CFMutableDictionaryRef)GetInstancesDictionaryKTZ;
@end

namespace validate {

using host::Value;

namespace {

constexpr int kMostAtATime = 40;
constexpr int kCyclesToWarmUp = 5000;
constexpr long kAllowedGrowth = 64 * 1024; // of the heap, in bytes: tables that have not grown to their size yet

long heapBytes()
{
    return long(mallinfo2().uordblks);
}

const void *carriedBy(const Value &object)
{
    return *static_cast<void **>(object.instanceData());
}

// Objects and what they must be.
class Population {
public:
    Population(uint32_t seed, bool family) : _random(seed), _family(family) {}

    void cycle()
    {
        host::CocoaPool pool;
        switch (_objects.size() >= kMostAtATime ? 6 : _random() % 9) {
        case 0:
        case 1:
            add(theHost().newObject(kClass));
            break;
        case 2:
            add(theHost().newObject(kClass, {Value::nullString()}));
            break;
        case 3: // carries nothing
            _objects.push_back(theHost().newInstance(kClass));
            break;
        case 4:
            addStandard();
            break;
        case 5:
            theHost().callShared(kClass, "resetStandardUserDefaults");
            break;
        case 6:
        case 7:
            removeOne();
            break;
        case 8:
            useOne();
            break;
        }
    }

    void clear()
    {
        host::CocoaPool pool;
        _objects.clear();
    }

    // One entry for each object that carries something, and each leads back to it.
    void expectRegistryExact() const
    {
        if (!_family)
            return;
        std::map<const void *, const void *> carriers;
        for (const Value &object : _objects)
            if (const void *carried = carriedBy(object))
                carriers[carried] = object.handle();
        CFDictionaryRef registry = [NSException GetInstancesDictionaryKTZ];
        expect(size_t(CFDictionaryGetCount(registry)) == carriers.size(),
               "the registry has " + std::to_string(CFDictionaryGetCount(registry)) + " entries for " +
                   std::to_string(carriers.size()) + " objects");
        for (const auto &[carried, carrier] : carriers)
            expect(CFDictionaryGetValue(registry, carried) == carrier, "an entry leads to another object");
    }

private:
    void add(Value object)
    {
        expect(carriedBy(object), "a constructed object carries nothing");
        _objects.push_back(std::move(object));
    }

    void addStandard()
    {
        Value first = standardUserDefaults();
        Value second = standardUserDefaults();
        expect(carriedBy(first) == carriedBy(second), "two standard objects carry different objects of Cocoa");
        expect(first.sameHandle(second) == _family,
               _family ? "two objects for the standard defaults" : "one object without a registry");
        _objects.push_back(first);
        _objects.push_back(second);
    }

    void removeOne()
    {
        if (!_objects.empty())
            _objects.erase(_objects.begin() + ptrdiff_t(_random() % _objects.size()));
    }

    void useOne()
    {
        if (_objects.empty())
            return;
        const Value &object = _objects[_random() % _objects.size()];
        int number = int(_random() % 1000);
        call(object, "setIntegerValue", {"Number", number});
        int read = call(object, "integerForKey", {"Number"}).int32();
        expect(read == (carriedBy(object) ? number : 0), "read " + std::to_string(read));
    }

    std::mt19937 _random;
    bool _family;
    std::vector<Value> _objects;
};

int defaultsObjectsAlive()
{
    return GSDebugAllocationCount([NSUserDefaults class]);
}

void liveAndLetDie(const Played &played, uint32_t seed, int cycles)
{
    GSDebugAllocationActive(YES);
    startHost(played);
    Population population(seed, played.family);
    for (int i = 0; i < kCyclesToWarmUp; i++) // caches and tables have their size then
        population.cycle();
    population.clear();
    theHost().resetCounts();
    const long before = heapBytes();
    for (int i = 0; i < cycles; i++) {
        population.cycle();
        population.expectRegistryExact();
    }
    population.clear();
    theHost().resetCounts(); // the host's list of look-ups is no memory of the plug-in's
    population.expectRegistryExact();
    for (const host::HandleInfo &handle : theHost().liveHandles())
        throw Failure("a handle is left: " + handle.text());
    expectBalance();
    // The standard one is Cocoa's own; those before the resets are gone.
    int alive = defaultsObjectsAlive();
    expect(alive <= 1, std::to_string(alive) + " defaults objects are left");
    const long growth = heapBytes() - before;
    expect(growth <= kAllowedGrowth, "the heap has grown by " + std::to_string(growth) + " bytes");
}

} // namespace

void addState(const Settings &settings, Batches &batches)
{
    int runs = settings.level >= 7 ? 10 : 1;
    int cycles = settings.level >= 3 ? 10000 : 1000;
    for (const char *profile : {"2011.4", "2013.03"})
        for (bool family : {true, false})
            for (int run = 0; run < runs; run++) {
                Played played = {profile, family};
                uint32_t seed = settings.seed * 1000 + uint32_t(run);
                addAlone(batches, "state" + played.path() + std::to_string(run), 300,
                         [=] { liveAndLetDie(played, seed, cycles); });
            }
}

} // namespace validate
