// bench_memory CONFIGURATION check|full: what the calls through the plug-in need of the heap, as JSON on stdout.
#include "bench/ground.h"
#include "bench/heap_account.h"

#include <cstdio>
#include <cstring>
#include <iostream>
#include <link.h>
#include <nlohmann/json.hpp>

using namespace bench;

namespace {

int findPlugIn(dl_phdr_info *info, size_t, void *)
{
    if (!strstr(info->dlpi_name, "NSUserDefaults.so"))
        return 0;
    for (int i = 0; i < info->dlpi_phnum; i++) {
        const auto &segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || !(segment.p_flags & PF_X))
            continue;
        auto *start = reinterpret_cast<const char *>(info->dlpi_addr + segment.p_vaddr);
        setOwnCode(start, start + segment.p_memsz);
    }
    return 1;
}

nlohmann::json weigh(Case &each)
{
    void *pool = newPool();
    if (each.before)
        each.before();
    resetHeapPeaks();
    const HeapAccount start = heapAccount();
    each.through();
    const HeapAccount end = heapAccount();
    if (each.result)
        giveBack(std::exchange(each.result, nullptr));
    if (each.after)
        each.after();
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
    dl_iterate_phdr(findPlugIn, nullptr);
    static Cases start, steady;
    addStart(start, ground);
    auto weights = nlohmann::json::array();
    for (Case &each : start.all())
        weights.push_back(weigh(each));
    addSteady(steady, ground, extentNamed(argv[2], Extent::Everything));
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
