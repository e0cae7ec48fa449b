// Hosts that lack entry points. Every entry point is hidden alone on a host of every record version, with and without
// the companion library, and every member is called: the result must be the neutral one or the one that the next way
// gives, as the model derives it, every lock must be accounted for, and an entry point that the plug-in asked for in
// vain must be used once it is there. Then the same with random sets of entry points, as a host of unknown kind.
#include <algorithm>
#include <memory>
#include <random>
#include <set>

#include "host/validate/case.h"
#include "host/validate/rows.h"

namespace validate {

namespace {

// Without the first two there is no plug-in: it calls the one untested, and the class is registered with the other.
// The last one serves the companion library only.
bool canBeHidden(const std::string &name)
{
    return name != "RegisterPluginVersion" && name != "PluginRegisterClass" && name != "FamilyServices";
}

std::vector<std::string> entryPoints()
{
    std::vector<std::string> names;
    for (const host::EntryPointInfo &entry : theHost().entryPoints())
        if (canBeHidden(entry.name))
            names.push_back(entry.name);
    return names;
}

struct Hidden {
    std::string label; // of the cases
    Played played;

    std::string prefix(const char *phase) const { return "missing/" + label + played.path() + phase + "/"; }
};

// The cases as the plug-in finds the host.
void addHiddenBatch(const Hidden &hidden, Batches &batches)
{
    Batch batch;
    batch.prepare = [hidden] { startHost(hidden.played); };
    for (const Row &row : rows())
        batch.add(hidden.prefix("hidden") + row.name, [&row] { runRow(row); });
    batches.push_back(std::move(batch));
}

struct Asked {
    std::map<std::string, std::set<std::string>> inVain; // by the name of the row
    std::set<std::string> used;                          // since they are there
};

// Everything is called in vain first; what was asked for then must be called when it is there. Whether the calls are
// right is not of interest here.
void askInVain(const Hidden &hidden, Asked &asked)
{
    for (const Row &row : rows()) {
        whyItFails([&] { observe(row, World(), Throwing::Nothing, nullptr, nullptr); });
        for (const std::string &entry : hidden.played.hidden)
            if (theHost().lookups(entry) > 0)
                asked.inVain[row.name].insert(entry);
    }
    theHost().showAll();
}

// A global method is kept once it is loaded, so its loader may have been used for another row.
void expectUsed(const Row &row, Asked &asked, const std::vector<std::string> &calledNow)
{
    asked.used.insert(calledNow.begin(), calledNow.end());
    World world;
    for (const std::string &entry : asked.inVain[row.name])
        expect(!world.has(entry) || asked.used.count(entry),
               entry + " was asked for while the host lacked it, and is not used now");
}

std::vector<std::string> calledEntries()
{
    std::vector<std::string> names;
    for (const host::EntryPointInfo &entry : theHost().entryPoints())
        if (entry.calls > 0)
            names.push_back(entry.name);
    return names;
}

void addShownBatch(const Hidden &hidden, Batches &batches)
{
    auto asked = std::make_shared<Asked>();
    Batch batch;
    batch.prepare = [hidden, asked] {
        startHost(hidden.played);
        askInVain(hidden, *asked);
    };
    bool showsUse = hidden.played.hidden.size() == 1;
    for (const Row &row : rows())
        batch.add(hidden.prefix("shown") + row.name, [&row, asked, showsUse] {
            std::vector<std::string> called;
            runRow(row, {}, Throwing::Nothing, nullptr, [&] { called = calledEntries(); });
            if (showsUse)
                expectUsed(row, *asked, called);
        });
    batches.push_back(std::move(batch));
}

// A host hands out a string's bytes together with the way to give them back, and its version number goes with its
// layouts: sets that no host could have are made possible ones.
std::set<std::string> randomSet(std::mt19937 &random)
{
    std::vector<std::string> names = entryPoints();
    std::shuffle(names.begin(), names.end(), random);
    names.resize(1 + random() % (names.size() / 2));
    std::set<std::string> chosen(names.begin(), names.end());
    chosen.erase("REALGetRBVersion");
    chosen.erase("PluginDisposeStringData");
    if (chosen.count("PluginGetStringData"))
        chosen.insert("PluginDisposeStringData");
    return chosen;
}

void registerLate(const std::string &profile)
{
    host::Host &host = theHost();
    host.use(*host::Profile::named(profile));
    host.hide("PluginRegisterClass");
    host::Plugin &plugin = host.load(settings().plugin);
    expect(!host.findClass(kClass), "a class without a way to register it");
    host.show("PluginRegisterClass");
    plugin.start();
    expect(host.findClass(kClass), "not registered when there is a way again");
    expectBalance();
}

} // namespace

void addMissingEntryPoints(const Settings &settings, Batches &batches)
{
    // One host for each record version; from level 7 on, one on each side of every threshold.
    Profiles profiles = profilesAt(settings.level, {"2011.4", "2012.2", "2013.0", "2014.1"});
    for (const std::string &profile : profiles) {
        Batch &registration = batches.emplace_back();
        // The tables of record version 9 are made once more for a host that never took the first ones.
        registration.losesMemory = true;
        registration.add("missing/PluginRegisterClass/" + profile, [profile] { registerLate(profile); });
        for (bool family : {true, false}) {
            addHiddenBatch({"nothing", {profile, family}}, batches);
            for (const std::string &entry : entryPoints()) {
                addHiddenBatch({entry, {profile, family, {entry}}}, batches);
                if (settings.level >= 7 || family)
                    addShownBatch({entry, {profile, family, {entry}}}, batches);
            }
        }
    }
    std::mt19937 random(settings.seed);
    int sets = settings.level * settings.level * 4;
    for (int i = 0; i < sets; i++) {
        const std::string &profile = profiles[random() % profiles.size()];
        bool family = random() % 2;
        Hidden hidden = {"random-" + std::to_string(i), {profile, family, randomSet(random)}};
        addHiddenBatch(hidden, batches);
        if (i % 4 == 0)
            addShownBatch(hidden, batches);
    }
}

} // namespace validate
