// The instruction counts of one side of one case, attributed to whoever spent them.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace bench {

enum class Part { Driver, PlugIn, Host, Cocoa, Loader, Library };

struct Count {
    std::string configuration, side, name;
    long size = 0;
    long hostCalls = 0;     // per call
    long namesAsked = 0;    // of the host, per call
    double own = 0;         // instructions of the plug-in's own code, per call
    double ownLibrary = 0;  // and of the C library on its behalf
    double host = 0;        // the embedded host and the companion library, with the C library on their behalf
    double cocoa = 0;       // GNUstep, its Objective-C runtime, the platform layer, with the libraries they use
    double caller = 0;      // libraries on behalf of the program that measures: a memcpy by hand, say
    double allocations = 0; // calls of malloc, calloc and realloc by the plug-in itself, per call

    double total() const { return own + ownLibrary + host + cocoa + caller; }
};

// Reads what callgrind wrote for one run of bench_counts. Throws std::runtime_error when that cannot be read.
std::vector<Count> readCounts(const std::string &path, const std::string &configuration);

} // namespace bench
