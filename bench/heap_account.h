// An account of the heap: every block of the process, and those that the plug-in itself asked for.
#pragma once

#include "bench/own_code.h"

namespace bench {

struct HeapAccount {
    long live = 0, peak = 0; // bytes of all blocks
    long ownLive = 0, ownPeak = 0;
    long ownAllocations = 0;
};

// From now on blocks asked for from this code count as the plug-in's own.
void setOwnCode(const CodeRange &code);

// The highest levels start anew from here.
void resetHeapPeaks();
const HeapAccount &heapAccount();

} // namespace bench
