#include "bench/report/numbers.h"
#include "bench/report/outputs.h"

namespace bench {

using nlohmann::json;

static json countJson(const Count &count)
{
    return {{"total", count.total()},
            {"plugIn", count.own},
            {"plugInLibc", count.ownLibrary},
            {"host", count.host},
            {"cocoa", count.cocoa},
            {"caller", count.caller},
            {"plugInAllocations", count.allocations},
            {"hostCalls", count.hostCalls}};
}

static json asJson(const Decision &file)
{
    return {{"measured", file.measured ? json(*file.measured) : json()}, {"decidedBy", file.where}};
}

json asJson(const Measurements &measurements, const std::vector<Judged> &judged, const json &others)
{
    json cases = json::array();
    for (const Result &result : measurements.linuxFile.all()) {
        json each = {{"host", result.configuration}, {"case", result.name}, {"size", result.size}};
        if (result.hand)
            each["byHand"] = countJson(*result.hand);
        if (result.through)
            each["throughPlugIn"] = countJson(*result.through);
        if (const std::optional<double> own = ownOnMacOS(measurements, result))
            each["macosFile"]["plugIn"] = *own;
        if (result.memory)
            each["memory"] = {{"plugInPeak", result.memory->ownPeak},
                              {"processPeak", result.memory->peak},
                              {"left", result.memory->left},
                              {"plugInAllocations", result.memory->allocations}};
        if (result.handNanoseconds)
            each["byHandNanoseconds"] = *result.handNanoseconds;
        if (result.throughNanoseconds)
            each["throughPlugInNanoseconds"] = *result.throughNanoseconds;
        cases.push_back(each);
    }
    json budgets = json::array();
    for (const Judged &each : judged) {
        json line = {{"what", each.what},
                     {"measure", each.unit},
                     {"asked", each.asked},
                     {"atMost", each.atMost},
                     {"kept", each.isKept()}};
        line["linuxFile"] = asJson(each.linuxFile);
        line["macosFile"] = asJson(each.macosFile);
        if (!each.because.empty())
            line["because"] = each.because;
        if (!each.tried.empty())
            line["tried"] = each.tried;
        budgets.push_back(line);
    }
    return {{"budgets", budgets}, {"cases", cases}, {"otherWays", others}};
}

} // namespace bench
