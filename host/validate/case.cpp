#include "host/validate/case.h"

#include "host/host.h"

namespace validate {

void expectEqual(const std::string &actual, const std::string &expected, const std::string &what)
{
    if (actual != expected)
        throw Failure(what + ": is " + actual + ", and should be " + expected);
}

std::string whyBodyFails(const std::function<void()> &body)
{
    try {
        body();
        return "";
    } catch (const Failure &failure) {
        return failure.what();
    } catch (const host::Exception &exception) {
        return std::string("a host exception that is not expected: ") + exception.what();
    } catch (const std::exception &exception) {
        return std::string("cannot go on: ") + exception.what();
    }
}

void addAlone(Batches &batches, std::string name, int seconds, std::function<void()> body)
{
    Batch &batch = batches.emplace_back();
    batch.secondsPerCase = seconds;
    batch.add(std::move(name), std::move(body));
}

const Profiles &everyProfile()
{
    static const Profiles names = [] {
        Profiles all;
        for (const host::Profile &profile : host::Profile::predefined())
            all.push_back(profile.name);
        return all;
    }();
    return names;
}

Profiles profilesAt(int level, const Profiles &some, const Profiles &all)
{
    return level >= 7 ? all : level >= 3 ? some : Profiles{"2013.03"};
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
