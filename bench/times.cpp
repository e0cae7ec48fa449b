// bench_times CONFIGURATION check|full [GOOGLE-BENCHMARK-OPTION...]: how long the calls take. The time of what comes
// around a call is taken out by measuring each call by itself.
#include "bench/ground.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstring>

using namespace bench;

namespace {

void settle(Case &each)
{
    if (each.result)
        giveBack(std::exchange(each.result, nullptr));
    if (each.after)
        each.after();
}

// Calls are timed in rounds, each with a pool of its own, so that what they autorelease neither piles up nor is left
// out. A case with something to do before each call has rounds of one.
void run(benchmark::State &state, Case &each, const std::function<void()> &side)
{
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        void *pool = newPool();
        if (each.before)
            each.before();
        const auto start = Clock::now();
        side();
        const auto end = Clock::now();
        settle(each);
        endPool(pool);
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
}

} // namespace

int main(int argc, char **argv)
{
    const Configuration *configuration = argc >= 3 ? configurationNamed(argv[1]) : nullptr;
    if (!configuration) {
        fprintf(stderr, "usage: bench_times CONFIGURATION check|full [OPTION...]\n");
        return 2;
    }
    void *pool = newPool();
    static Ground ground(*configuration);
    static Cases start, steady;
    addStart(start, ground);
    for (Case &each : start.all()) {
        each.through();
        settle(each);
    }
    addSteady(steady, ground, strcmp(argv[2], "full") == 0 ? Extent::Full : Extent::Check);
    for (Case &each : steady.all()) {
        for (bool byHand : {true, false}) {
            const std::function<void()> &side = byHand ? each.hand : each.through;
            if (side)
                benchmark::RegisterBenchmark((each.name + " / " + (byHand ? "hand" : "through")).c_str(),
                                             [&each, &side](benchmark::State &state) { run(state, each, side); })
                    ->UseManualTime();
        }
    }
    argv[2] = argv[0];
    argc -= 2;
    argv += 2;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    endPool(pool);
    return 0;
}
