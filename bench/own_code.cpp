#include "bench/own_code.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {

// A line of the system's list is "from-to rights offset device inode path"; a Mach-O image has no path there.
CodeRange codeAround(const void *function)
{
    std::ifstream mappings("/proc/self/maps");
    for (std::string line; std::getline(mappings, line);) {
        unsigned long start = 0, end = 0;
        char rights[5] = "";
        if (sscanf(line.c_str(), "%lx-%lx %4s", &start, &end, rights) != 3 || rights[2] != 'x')
            continue;
        const CodeRange range{start, end};
        if (range.contains(reinterpret_cast<uintptr_t>(function)))
            return range;
    }
    throw std::runtime_error("the plug-in's code is in no executable mapping");
}

} // namespace bench
