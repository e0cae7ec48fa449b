#include "host/validate/case.h"

namespace validate {

void expectEqual(const std::string &actual, const std::string &expected, const std::string &what)
{
    if (actual != expected)
        throw Failure(what + ": is " + actual + ", and should be " + expected);
}

const std::vector<Group> &groups()
{
    static const std::vector<Group> all = {
        {"missing", "hosts that lack entry points get the result that is left, and use an entry once it is there",
         addMissingEntryPoints},
        {"raises", "an exception of Cocoa becomes one host exception and one line of the log; others pass",
         addCocoaRaises},
        {"failures", "a host that cannot make something, or runs out of memory, at any moment", addHostFailures},
        {"arguments", "texts of every length and encoding, and the ends of every number type", addArguments},
        {"state", "objects created and destroyed in any order leave nothing behind", addState},
        {"reentry", "host code and observers that call back in while the plug-in works", addReentry},
        {"load", "started twice, unloaded and loaded again, two copies at once", addLoading},
        {"persistence", "what a completed synchronize covered outlives a killed process", addPersistence},
    };
    return all;
}

} // namespace validate
