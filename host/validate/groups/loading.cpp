// Loading: started twice and with another version of the host each time, unloaded and loaded again, two copies at once.
#include <filesystem>
#include <set>
#include <unistd.h>

#include "host/validate/case.h"
#include "host/validate/rows.h"

namespace validate {

using host::Value;

namespace {

struct Version {
    const char *profile;
    int record;
};

const Version kVersions[] = {
    {"2009", 9},    {"2011.4", 9},   {"2012.0", 10},  {"2012.2", 10},
    {"2013.0", 11}, {"2013.02", 11}, {"2013.03", 12}, {"2014.1", 12},
};

std::set<std::string> declarations(const std::vector<host::MethodDescription> &methods)
{
    std::set<std::string> texts;
    for (const host::MethodDescription &method : methods)
        texts.insert(method.text);
    return texts;
}

std::set<std::string> declarationsOfRows(bool areShared)
{
    std::set<std::string> texts;
    for (const Row &row : rows())
        if (row.isShared == areShared)
            texts.insert(row.declaration);
    return texts;
}

std::string onlyInFirst(const std::set<std::string> &first, const std::set<std::string> &second)
{
    std::string texts;
    for (const std::string &text : first)
        if (second.count(text) == 0)
            texts += (texts.empty() ? "" : "; ") + text;
    return texts;
}

void expectRows(const std::vector<host::MethodDescription> &methods, bool areShared)
{
    std::set<std::string> registered = declarations(methods), ofRows = declarationsOfRows(areShared);
    std::string without = onlyInFirst(registered, ofRows), unknown = onlyInFirst(ofRows, registered);
    expect(without.empty(), "add rows to host/validate/rows for " + without);
    expect(unknown.empty(), "there are rows, but no members " + unknown);
}

void expectRegistered(const host::Plugin &plugin, int record)
{
    const host::ClassDescription *registered = theHost().findClass(kClass);
    expect(registered, "the class is not registered");
    expect(plugin.recordVersion() == record, "reported record version " + std::to_string(plugin.recordVersion()));
    expect(registered->recordVersion == record, "record version " + std::to_string(registered->recordVersion));
    expectRows(registered->methods, false);
    expectRows(registered->sharedMethods, true);
    expect(registered->dataSize == 16, "instance data of " + std::to_string(registered->dataSize) + " bytes");
}

void runEveryRow()
{
    for (const Row &row : rows()) {
        try {
            runRow(row);
        } catch (const Failure &failure) {
            throw Failure(row.name + ": " + failure.what());
        }
    }
}

host::Plugin &loadOn(const std::string &profile)
{
    host::Host &host = theHost();
    host.use(*host::Profile::named(profile));
    if (!host.findClass("NSExceptionKTZ"))
        host.load(settings().family);
    return host.load(settings().plugin);
}

// A host without a version number is taken for the one that started the plug-in before.
int recordOf(const Version &first, const Version &second)
{
    return theHost().profile().version ? second.record : first.record;
}

void startTwice(const Version &first, const Version &second)
{
    host::Plugin &plugin = loadOn(first.profile);
    expectRegistered(plugin, first.record);
    runEveryRow();
    theHost().use(*host::Profile::named(second.profile));
    plugin.start();
    expectRegistered(plugin, recordOf(first, second));
    runEveryRow();
    expectBalance();
}

void loadAgain(const Version &version)
{
    for (int round = 0; round < 3; round++) {
        host::Plugin &plugin = loadOn(version.profile);
        expectRegistered(plugin, version.record);
        runEveryRow();
        theHost().unload(plugin);
        expect(!theHost().findClass(kClass), "the class outlives the plug-in");
    }
    expectBalance();
}

// A second copy takes over the class; objects of the first one live and die with the first.
void loadTwoCopies(const Version &version)
{
    namespace fs = std::filesystem;
    fs::path copy = fs::current_path() / ("copy-" + fs::path(settings().plugin).filename().string());
    fs::copy_file(settings().plugin, copy);
    loadOn(version.profile);
    Value ofFirst = theHost().newObject(kClass);
    call(ofFirst, "setIntegerValue", {"First", 1});
    host::Plugin &second = theHost().load(copy);
    expectRegistered(second, version.record);
    runEveryRow();
    Value ofSecond = theHost().newObject(kClass);
    call(ofSecond, "setIntegerValue", {"Second", 2});
    expect(call(ofFirst, "integerForKey", {"First"}).int32() == 1, "the first copy's object is disturbed");
    ofFirst.reset();
    expect(call(ofSecond, "integerForKey", {"Second"}).int32() == 2, "the second copy's object is disturbed");
    ofSecond.reset();
    expectBalance();
}

} // namespace

void addLoading(const Settings &settings, Batches &batches)
{
    constexpr int kSeconds = 60;
    for (const Version &first : kVersions) {
        for (const Version &second : kVersions)
            if (settings.level >= 3 || first.record == second.record)
                addAlone(batches, std::string("load/twice/") + first.profile + "/" + second.profile, kSeconds,
                         [&] { startTwice(first, second); });
        addAlone(batches, std::string("load/again/") + first.profile, kSeconds, [&] { loadAgain(first); });
        addAlone(batches, std::string("load/two-copies/") + first.profile, kSeconds, [&] { loadTwoCopies(first); });
    }
}

} // namespace validate
