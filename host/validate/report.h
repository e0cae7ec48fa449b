// What people see of a run: progress on a terminal, each failure with the line that reproduces it, the counts; and the
// same as JSON for programs.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "host/validate/settings.h"

namespace validate {

class Report {
public:
    Report(const Settings &settings, size_t total);

    void passed(const std::string &name);
    void failed(const std::string &name, const std::string &why);
    // The last line, and the JSON file. Answers whether every case passed. Throws std::runtime_error for a file that
    // cannot be written.
    bool finish();

private:
    struct Counts {
        long passed = 0;
        long failed = 0;
    };
    struct FailedCase {
        std::string name, why, reproduce;
    };

    void showProgress();
    void clearProgress();
    std::string reproducingLine(const std::string &name) const;
    void writeJson(double seconds) const;

    const Settings &_settings;
    size_t _total;
    long _passed = 0;
    bool _onTerminal;
    std::map<std::string, Counts> _groups;
    std::vector<FailedCase> _failures;
    std::chrono::steady_clock::time_point _start, _shown;
};

} // namespace validate
