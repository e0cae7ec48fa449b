// Runs every case of one configuration under callgrind. Only the calls themselves are collected; after each side of a
// case the counts are written out under a label that says what was counted:
//
//     side | repeats | size | calls of host entries | names asked of the host | where the plug-in's code lies | case
#include "bench/ground.h"

#include <callgrind.h>
#include <cstdio>
#include <regex>

using namespace bench;

namespace {

// The calls and look-ups of a stretch, added up.
struct HostTraffic {
    long calls = 0;
    size_t lookups = 0;
};

HostTraffic hostTraffic(host::Host &host)
{
    HostTraffic traffic;
    for (const host::EntryPointInfo &entry : host.entryPoints())
        traffic.calls += entry.calls;
    traffic.lookups = host.lookupLog().size();
    return traffic;
}

void count(Ground &ground, Case &each, const std::function<void()> &side, const char *sideName)
{
    if (!side)
        return;
    const int warmUp = each.once ? 0 : each.repeats > 1 ? 2 : 1;
    for (int i = 0; i < warmUp; i++) {
        void *pool = newPool();
        each.prepare();
        side();
        each.settle();
        endPool(pool);
    }
    void *pool = newPool();
    HostTraffic traffic;
    for (int i = 0; i < each.repeats; i++) {
        each.prepare();
        ground.host.resetCounts();
        CALLGRIND_TOGGLE_COLLECT;
        side();
        CALLGRIND_TOGGLE_COLLECT;
        const HostTraffic seen = hostTraffic(ground.host);
        traffic.calls += seen.calls;
        traffic.lookups += seen.lookups;
        each.settle();
    }
    // What was autoreleased is part of the price.
    CALLGRIND_TOGGLE_COLLECT;
    endPool(pool);
    CALLGRIND_TOGGLE_COLLECT;

    char label[400];
    snprintf(label, sizeof label, "%s|%d|%ld|%ld|%zu|%zx-%zx|%s", sideName, each.repeats, each.size,
             traffic.calls / each.repeats, traffic.lookups / each.repeats, size_t(ground.code.start),
             size_t(ground.code.end), each.name.c_str());
    CALLGRIND_DUMP_STATS_AT(label);
}

void countAll(Ground &ground, Cases &cases, const std::regex &only)
{
    for (Case &each : cases.all()) {
        if (!std::regex_search(each.name, only))
            continue;
        count(ground, each, each.hand, "hand");
        count(ground, each, each.through, "through");
        if (each.tidy)
            each.tidy();
    }
}

} // namespace

int main(int argc, char **argv)
{
    const Configuration *configuration = argc == 2 || argc == 3 ? configurationNamed(argv[1]) : nullptr;
    if (!configuration) {
        fprintf(stderr, "usage: bench_counts CONFIGURATION [EXPRESSION-FOR-NAMES]\n");
        return 2;
    }
    const std::regex only(argc == 3 ? argv[2] : "");
    void *pool = newPool();
    static Ground ground(*configuration);
    CALLGRIND_START_INSTRUMENTATION; // the start of Foundation and AppKit goes without
    static Cases start, steady;
    addStart(start, ground);
    countAll(ground, start, std::regex("")); // the others need what these begin
    addSteady(steady, ground, Extent::Counted);
    countAll(ground, steady, only);
    endPool(pool);
    return 0;
}
