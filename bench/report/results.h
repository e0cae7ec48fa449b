// Everything that was measured, and the judging of the budgets.
#pragma once

#include "bench/report/counts.h"

#include <nlohmann/json.hpp>
#include <optional>

namespace bench {

// What bench_memory says of a case: bytes.
struct Memory {
    long ownPeak = 0;     // blocks of the plug-in itself, at their highest
    long peak = 0;        // of the whole process above the start of the call
    long left = 0;        // what remains when the call is over, its result among it
    long allocations = 0; // by the plug-in itself
};

struct Result {
    std::string configuration, name;
    long size = 0;
    std::optional<Count> hand, through;
    std::optional<Memory> memory;
    std::optional<double> handNanoseconds, throughNanoseconds;
};

class Results {
public:
    void addCounts(const std::vector<Count> &counts);
    void addMemory(const nlohmann::json &json, const std::string &configuration);
    void addTimes(const nlohmann::json &json, const std::string &configuration);

    const std::vector<Result> &all() const { return _results; }
    // Null when there is none.
    const Result *find(const std::string &configuration, const std::string &name) const;

private:
    Result &result(const std::string &configuration, const std::string &name);
    std::vector<Result> _results;
};

// The two files of the plug-in: the one that is loaded here, and the one that users load.
struct Measurements {
    Results linuxFile, macosFile;
};

// What the cases show of one file.
struct Decision {
    std::optional<double> measured; // nothing when no case was run that shows it
    std::string where;              // the case that decides
};

// One line of bench/budgets.json, judged for both.
struct Judged {
    std::string what, unit, because;
    double asked = 0;  // what was wished for
    double atMost = 0; // what is held: the same, unless the behaviour fixes more
    Decision linuxFile, macosFile;
    std::vector<std::string> tried; // other ways that were looked at

    bool isKept() const { return isKeptBy(linuxFile) && isKeptBy(macosFile); }
    bool isKeptBy(const Decision &file) const { return file.measured && *file.measured <= atMost; }
};
std::vector<Judged> judge(const nlohmann::json &budgets, const Measurements &measurements);

// An expression for the names of all cases that a budget looks at.
std::string judgedCases(const nlohmann::json &budgets);

} // namespace bench
