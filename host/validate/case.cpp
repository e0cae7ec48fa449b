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
        {"missing", addMissingEntryPoints},
        {"raises", addCocoaRaises},
        {"failures", addHostFailures},
        {"arguments", addArguments},
        {"state", addState},
        {"reentry", addReentry},
        {"load", addLoading},
        {"persistence", addPersistence},
    };
    return all;
}

} // namespace validate
