#include "host/validate/runner.h"

#include <algorithm>
#include <thread>

#include "host/isolation/runner.h"
#include "host/validate/ground.h"

// There in a build under LeakSanitizer only: looks for lost memory now, reports it and tells whether there was some.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace validate {

// Looked for once in a process, since the search takes longer than many cases; the report names the place.
static std::string memoryLost()
{
    return __lsan_do_recoverable_leak_check && __lsan_do_recoverable_leak_check()
               ? "memory is lost, here or by a case before in the same process"
               : "";
}

static isolation::Batch forChildren(const Batch &batch, const Settings &settings)
{
    isolation::Batch work;
    for (const Case &each : batch.cases)
        work.names.push_back(each.name);
    work.secondsPerCase = settings.timeLimit > 0 ? settings.timeLimit : batch.secondsPerCase;
    work.whyItFails = [&batch, unprepared = std::string()](size_t number, bool isFirst) mutable {
        if (isFirst && batch.prepare)
            unprepared = whyItFails(batch.prepare);
        if (!unprepared.empty())
            return "cannot be prepared: " + unprepared;
        std::string why = whyItFails(batch.cases[number].body);
        bool isLast = number + 1 == batch.cases.size();
        return why.empty() && isLast && !batch.losesMemory ? memoryLost() : why;
    };
    return work;
}

static void loadOnce()
{
    try {
        startHost({"2013.03"});
    } catch (const host::CallError &error) {
        throw Failure(error.what());
    }
    expect(theHost().findClass(kClass), std::string("it registers no class ") + kClass);
}

std::string whyItDoesNotLoad(const Settings &settings)
{
    isolation::Batch batch;
    batch.names = {"load"};
    batch.secondsPerCase = settings.timeLimit > 0 ? settings.timeLimit : 60;
    batch.whyItFails = [](size_t, bool) { return whyItFails(loadOnce); };
    std::string why;
    isolation::run({batch}, {1, false, false}, [&](const isolation::Outcome &outcome) { why = outcome.why; });
    return why;
}

Batches selected(Batches batches, const std::string &only)
{
    for (Batch &batch : batches)
        batch.cases.erase(std::remove_if(batch.cases.begin(), batch.cases.end(),
                                         [&](const Case &each) { return each.name.rfind(only, 0) != 0; }),
                          batch.cases.end());
    batches.erase(
        std::remove_if(batches.begin(), batches.end(), [](const Batch &batch) { return batch.cases.empty(); }),
        batches.end());
    return batches;
}

void runBatches(const Batches &batches, const Settings &settings, Report &report)
{
    std::vector<isolation::Batch> work;
    for (const Batch &batch : batches)
        work.push_back(forChildren(batch, settings));
    unsigned jobs = settings.jobs > 0 ? unsigned(settings.jobs) : std::max(1u, std::thread::hardware_concurrency());
    // What cases print is nobody's business; at their ends nothing is due.
    isolation::run(work, {jobs, false, false}, [&](const isolation::Outcome &outcome) {
        if (outcome.why.empty())
            report.passed(outcome.name);
        else
            report.failed(outcome.name, outcome.why);
    });
}

} // namespace validate
