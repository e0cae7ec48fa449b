#include "bench/report/results.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <regex>
#include <stdexcept>

namespace bench {

using nlohmann::json;

Result &Results::result(const std::string &configuration, const std::string &name)
{
    if (const Result *known = find(configuration, name))
        return const_cast<Result &>(*known);
    Result &added = _results.emplace_back();
    added.configuration = configuration;
    added.name = name;
    return added;
}

const Result *Results::find(const std::string &configuration, const std::string &name) const
{
    for (const Result &each : _results)
        if (each.configuration == configuration && each.name == name)
            return &each;
    return nullptr;
}

void Results::addCounts(const std::vector<Count> &counts)
{
    for (const Count &count : counts) {
        Result &place = result(count.configuration, count.name);
        place.size = count.size;
        (count.side == "hand" ? place.hand : place.through) = count;
    }
}

void Results::addMemory(const json &memory, const std::string &configuration)
{
    for (const json &each : memory) {
        Result &place = result(configuration, each.at("case"));
        place.size = each.at("size");
        place.memory = Memory{each.at("ownPeak"), each.at("peak"), each.at("left"), each.at("allocations")};
    }
}

// Google Benchmark's own form; a name is the case, a slash, the side and how it was timed.
void Results::addTimes(const json &times, const std::string &configuration)
{
    for (const json &each : times.at("benchmarks")) {
        const std::string name = each.at("run_name");
        const size_t slash = name.rfind(" / ");
        Result &place = result(configuration, name.substr(0, slash));
        (name.compare(slash + 3, 4, "hand") == 0 ? place.handNanoseconds : place.throughNanoseconds) =
            each.at("fastest_ns");
    }
}

namespace {

using Value = std::function<std::optional<double>(const Result &)>;

void raise(Decision &decision, double value, const std::string &where)
{
    if (!decision.measured || value > *decision.measured)
        decision = {value, where};
}

// The largest value among the cases that fit, and the case that has it.
void largest(Decision &decision, const std::vector<Result> &results, const std::regex &cases, const Value &value)
{
    for (const Result &result : results) {
        if (!std::regex_search(result.name, cases))
            continue;
        const std::optional<double> found = value(result);
        if (found)
            raise(decision, *found, result.name + " (" + result.configuration + ")");
    }
}

std::optional<double> own(const Result &result)
{
    return result.through ? std::optional(result.through->own) : std::nullopt;
}

// Of a series of sizes, the cost of one element more.
struct Point {
    long size;
    double value;
};
double slope(const Point &from, const Point &to)
{
    return (to.value - from.value) / double(to.size - from.size);
}

using Series = std::map<std::string, std::vector<Point>>; // by case without its number, sorted by size

Series seriesOf(const std::vector<Result> &results, const std::regex &cases, const Value &value)
{
    Series all;
    for (const Result &result : results) {
        const std::optional<double> found = value(result);
        if (!found || !std::regex_search(result.name, cases))
            continue;
        const std::string name = std::regex_replace(result.name, std::regex(" of \\d+( bytes)?"), "");
        all[name + " (" + result.configuration + ")"].push_back({result.size, *found});
    }
    for (auto &[name, points] : all)
        std::sort(points.begin(), points.end(), [](const Point &a, const Point &b) { return a.size < b.size; });
    return all;
}

// What the plug-in adds to the call by hand, without the host's part.
std::optional<double> added(const Result &result)
{
    if (!result.hand || !result.through)
        return std::nullopt;
    return result.through->total() - result.through->host - result.hand->total();
}

const Result *find(const std::vector<Result> &results, const std::string &name)
{
    for (const Result &result : results)
        if (result.name == name)
            return &result;
    return nullptr;
}

// A budget can be for some hosts only.
std::vector<Result> onHosts(const std::vector<Result> &results, const std::string &hosts)
{
    const std::regex pattern(hosts);
    std::vector<Result> kept;
    for (const Result &result : results)
        if (std::regex_search(result.configuration, pattern))
            kept.push_back(result);
    return kept;
}

// The measures that a budget can name.
Decision measured(const std::string &how, const json &budget, const std::vector<Result> &all)
{
    Decision decision;
    const std::vector<Result> results = onHosts(all, budget.value("hosts", ""));
    const std::regex cases(budget.at("cases").get<std::string>());
    if (how == "own instructions") {
        largest(decision, results, cases, own);
    } else if (how == "own allocations") {
        largest(decision, results, cases,
                [](const Result &r) { return r.through ? std::optional(r.through->allocations) : std::nullopt; });
    } else if (how == "names asked of the host") {
        largest(decision, results, cases, [](const Result &r) {
            return r.through ? std::optional(double(r.through->namesAsked)) : std::nullopt;
        });
    } else if (how == "own bytes") {
        largest(decision, results, cases,
                [](const Result &r) { return r.memory ? std::optional(double(r.memory->ownPeak)) : std::nullopt; });
    } else if (how == "own instructions per element") {
        for (const auto &[name, points] : seriesOf(results, cases, own))
            if (points.size() > 1)
                raise(decision, slope(points.front(), points.back()), name);
    } else if (how == "growth in percent") {
        for (const auto &[name, points] : seriesOf(results, cases, own))
            if (points.size() > 2) {
                const double small = slope(points[0], points[1]),
                             large = slope(points[points.size() - 2], points.back());
                raise(decision, 100 * std::abs(large / small - 1), name);
            }
    } else if (how == "copies of the data") {
        const Series copies = seriesOf(results, std::regex("^memcpy of"), [](const Result &r) {
            return r.hand ? std::optional(r.hand->total()) : std::nullopt;
        });
        for (const auto &[name, points] : seriesOf(results, cases, added))
            for (const auto &[copyName, copyPoints] : copies)
                if (points.size() > 1 && copyPoints.size() > 1)
                    raise(decision, slope(points[1], points.back()) / slope(copyPoints[1], copyPoints.back()), name);
    } else if (how == "own instructions beside another case" || how == "host calls beside another case") {
        const Result *with = find(results, budget.at("case")), *without = find(results, budget.at("beside"));
        if (with && without && with->through && without->through)
            raise(decision,
                  how[0] == 'o' ? with->through->own - without->through->own
                                : double(with->through->hostCalls - without->through->hostCalls),
                  with->name);
    } else {
        throw std::runtime_error("a budget names a measure that there is not: " + how);
    }
    return decision;
}

} // namespace

std::vector<Judged> judge(const json &budgets, const Measurements &measurements)
{
    std::vector<Judged> all;
    for (const json &budget : budgets) {
        Judged &judged = all.emplace_back();
        judged.what = budget.at("what");
        judged.unit = budget.at("measure");
        judged.asked = budget.at("asked");
        judged.atMost = budget.value("atMost", judged.asked);
        judged.because = budget.value("because", "");
        judged.tried = budget.value("tried", std::vector<std::string>());
        judged.linuxFile = measured(judged.unit, budget, measurements.linuxFile.all());
        judged.macosFile = measured(judged.unit, budget, measurements.macosFile.all());
    }
    return all;
}

std::string judgedCases(const json &budgets)
{
    std::string cases = "^memcpy of"; // what copies of data are measured by
    for (const json &budget : budgets)
        cases += "|" + budget.at("cases").get<std::string>();
    return cases;
}

} // namespace bench
