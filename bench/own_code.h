// Where the plug-in's own code lies in this process, whichever loader brought it there.
#pragma once

#include <cstdint>

namespace bench {

struct CodeRange {
    uintptr_t start = 0, end = 0;

    bool contains(uintptr_t address) const { return address >= start && address < end; }
};

// The executable mapping that holds this function. Throws std::runtime_error when there is none.
CodeRange codeAround(const void *function);

} // namespace bench
