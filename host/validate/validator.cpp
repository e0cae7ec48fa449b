#include "host/validate/validator.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <random>

#include "host/validate/case.h"
#include "host/validate/ground.h"
#include "host/validate/report.h"
#include "host/validate/runner.h"

namespace validate {

static Batches allBatches(const Settings &settings)
{
    Batches batches;
    for (const Group &group : groups()) {
        // A group that cannot hold a case of that name need not be made.
        std::string beginning = std::string(group.name) + "/";
        size_t common = std::min(beginning.size(), settings.only.size());
        if (beginning.compare(0, common, settings.only, 0, common) == 0)
            group.add(settings, batches);
    }
    return selected(std::move(batches), settings.only);
}

static size_t countOf(const Batches &batches)
{
    size_t count = 0;
    for (const Batch &batch : batches)
        count += batch.cases.size();
    return count;
}

static void printNames(const Batches &batches)
{
    for (const Batch &batch : batches)
        for (const Case &each : batch.cases)
            printf("%s\n", each.name.c_str());
}

bool run(const Settings &settings)
{
    if (!std::filesystem::exists(settings.plugin))
        throw std::runtime_error(settings.plugin + ": there is no such file");
    prepareGround(settings);
    Batches batches = allBatches(settings);
    if (batches.empty())
        throw std::runtime_error("there is no case whose name begins with \"" + settings.only + "\" at level " +
                                 std::to_string(settings.level));
    if (settings.list) {
        printNames(batches);
        return true;
    }
    std::string why = whyItDoesNotLoad(settings); // every case would fail for the same reason
    if (!why.empty())
        throw std::runtime_error(settings.plugin + " cannot be validated: " + why);
    Report report(settings, countOf(batches) * size_t(settings.repeat));
    std::mt19937 random(settings.seed);
    for (int round = 0; round < settings.repeat; round++) {
        if (settings.shuffle) {
            std::shuffle(batches.begin(), batches.end(), random);
            for (Batch &batch : batches)
                std::shuffle(batch.cases.begin(), batch.cases.end(), random);
        }
        runBatches(batches, settings, report);
    }
    return report.finish();
}

} // namespace validate
