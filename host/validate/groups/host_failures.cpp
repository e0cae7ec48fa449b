// A host that cannot make something. For every member and every sort of thing that its call makes, each creation fails
// in its turn, alone and with all that follow; and the host runs out of memory while any of the call's strings is
// built, also while the message about that is built. The model makes the same things in the same order.
#include "host/validate/case.h"
#include "host/validate/rows.h"

namespace validate {

using host::Creation;

namespace {

struct Sort {
    const char *name;
    Creation creation;
};

const Sort kSorts[] = {
    {"string", Creation::String},         {"memoryblock", Creation::MemoryBlock}, {"array", Creation::Array},
    {"dictionary", Creation::Dictionary}, {"instance", Creation::Instance},       {"folderitem", Creation::FolderItem},
    {"variant", Creation::Variant},
};

constexpr int kAllThatFollow = 1000;

// How often the undisturbed call does something.
template <class Count>
long undisturbed(const Row &row, Count count)
{
    long times = 0;
    runRow(row, {}, Throwing::Nothing, nullptr, [&] { times = count(); });
    return times;
}

void withFault(const Row &row, const World &world, const std::string &what, const std::function<void()> &plan,
               const std::function<void()> &cancel)
{
    try {
        runRow(row, world, Throwing::Nothing, plan, cancel);
    } catch (const Failure &failure) {
        throw Failure(what + ": " + failure.what());
    }
}

void failEachCreation(const Row &row, Creation creation)
{
    host::Host &host = theHost();
    long made = undisturbed(row, [&] { return host.creations(creation); });
    for (int k = 1; k <= made; k++) {
        for (int times : {1, kAllThatFollow}) {
            World world;
            world.failCreation(creation, k, times);
            withFault(
                row, world, "creation " + std::to_string(k) + (times == 1 ? " failed" : " and all later ones failed"),
                [&] { host.failCreation(creation, k, times); }, [&] { host.failCreation(creation, 0); });
        }
    }
    runRow(row); // and then as ever
}

void runOutOfMemory(const Row &row, int times)
{
    host::Host &host = theHost();
    long built = undisturbed(row, [&] { return host.calls("REALBuildString"); });
    for (int k = 1; k <= built; k++) {
        World world;
        world.throwWhileBuilding(k, times);
        withFault(
            row, world, "no memory for string " + std::to_string(k), [&] { host.throwWhileBuildingString(k, times); },
            [&] { host.throwWhileBuildingString(0); });
    }
    runRow(row);
}

} // namespace

void addHostFailures(const Settings &settings, Batches &batches)
{
    const Profiles all = {"2009", "2011.4", "2012.2", "2013.0", "2013.03", "2014.1"};
    for (const std::string &profile : profilesAt(settings.level, {"2011.4", "2013.03"}, all)) {
        for (bool family : {true, false}) {
            Played played = {profile, family};
            Batch batch;
            batch.prepare = [=] { startHost(played); };
            for (const Row &row : rows()) {
                std::string prefix = "failures" + played.path();
                for (const Sort &sort : kSorts)
                    batch.add(prefix + sort.name + "/" + row.name,
                              [&row, &sort] { failEachCreation(row, sort.creation); });
                batch.add(prefix + "no-memory/" + row.name, [&row] { runOutOfMemory(row, 1); });
                batch.add(prefix + "no-memory-twice/" + row.name, [&row] { runOutOfMemory(row, 2); });
            }
            batches.push_back(std::move(batch));
        }
    }
}

} // namespace validate
