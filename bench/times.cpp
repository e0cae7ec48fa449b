// bench_times CONFIGURATION check|full [GOOGLE-BENCHMARK-OPTION...]: how long the calls take.
#include "bench/ground.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>

using namespace bench;

namespace {

// Each call is timed by itself, with a pool of its own whose end is not timed. The fastest one counts: the others are
// the same work with somebody else's on top.
void run(benchmark::State &state, Case &each, const std::function<void()> &side)
{
    using Clock = std::chrono::steady_clock;
    double fastest = 0;
    for (auto _ : state) {
        void *pool = newPool();
        each.prepare();
        const auto start = Clock::now();
        side();
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        each.settle();
        endPool(pool);
        state.SetIterationTime(seconds);
        fastest = fastest > 0 ? std::min(fastest, seconds) : seconds;
    }
    state.counters["fastest_ns"] = fastest * 1e9;
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
        each.settle();
    }
    addSteady(steady, ground, extentNamed(argv[2]));
    for (Case &each : steady.all()) {
        for (bool byHand : {true, false}) {
            const std::function<void()> &side = byHand ? each.hand : each.through;
            if (side)
                benchmark::RegisterBenchmark((each.name + " / " + (byHand ? "hand" : "through")).c_str(),
                                             [&each, &side, byHand](benchmark::State &state) {
                                                 run(state, each, side);
                                                 if (each.tidy && !byHand)
                                                     each.tidy();
                                             })
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
