// bench_memory CONFIGURATION check|full: what the calls through the plug-in need of the heap, as JSON on stdout.
#include "bench/ground.h"
#include "bench/heap_account.h"

#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

using namespace bench;

namespace {

nlohmann::json weigh(Case &each)
{
    void *pool = newPool();
    each.prepare();
    resetHeapPeaks();
    const HeapAccount start = heapAccount();
    each.through();
    const HeapAccount end = heapAccount();
    each.settle();
    endPool(pool);
    return {{"case", each.name},
            {"size", each.size},
            {"ownPeak", end.ownPeak},
            {"peak", end.peak - start.live},
            {"left", end.live - start.live},
            {"allocations", end.ownAllocations}};
}

} // namespace

int main(int argc, char **argv)
{
    const Configuration *configuration = argc == 3 ? configurationNamed(argv[1]) : nullptr;
    if (!configuration) {
        fprintf(stderr, "usage: bench_memory CONFIGURATION check|full\n");
        return 2;
    }
    void *pool = newPool();
    static Ground ground(*configuration);
    setOwnCode(ground.code);
    static Cases start, steady;
    addStart(start, ground);
    auto weights = nlohmann::json::array();
    for (Case &each : start.all())
        weights.push_back(weigh(each));
    addSteady(steady, ground, extentNamed(argv[2]));
    for (Case &each : steady.all()) {
        if (each.through) {
            if (each.size < 100000)
                weigh(each); // the first time also fills what is kept for the life of the process
            weights.push_back(weigh(each));
        }
        if (each.tidy)
            each.tidy();
    }
    std::cout << weights.dump(1) << "\n";
    endPool(pool);
    return 0;
}
