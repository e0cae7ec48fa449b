#include "host/validate/report.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <unistd.h>

namespace validate {

using Clock = std::chrono::steady_clock;

static double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

static std::string groupOf(const std::string &name)
{
    return name.substr(0, name.find('/'));
}

// As a shell takes it for one word.
static std::string quoted(const std::string &word)
{
    std::string text = "'";
    for (char c : word)
        text += c == '\'' ? "'\\''" : std::string(1, c);
    return text + "'";
}

Report::Report(const Settings &settings, size_t total)
    : _settings(settings), _total(total), _onTerminal(isatty(STDERR_FILENO)), _start(Clock::now()), _shown(_start)
{
}

std::string Report::reproducingLine(const std::string &name) const
{
    return _settings.program + " validate --plugin " + quoted(_settings.plugin) + " --level " +
           std::to_string(_settings.level) + " --seed " + std::to_string(_settings.seed) + " --only " + quoted(name);
}

void Report::showProgress()
{
    if (!_onTerminal || secondsSince(_shown) < 0.1)
        return;
    _shown = Clock::now();
    fprintf(stderr, "\r%ld of %zu, %zu failed\x1b[K", _passed + long(_failures.size()), _total, _failures.size());
    fflush(stderr);
}

void Report::clearProgress()
{
    if (_onTerminal)
        fputs("\r\x1b[K", stderr);
}

void Report::passed(const std::string &name)
{
    _passed++;
    _groups[groupOf(name)].passed++;
    showProgress();
}

void Report::failed(const std::string &name, const std::string &why)
{
    _groups[groupOf(name)].failed++;
    _failures.push_back({name, why, reproducingLine(name)});
    clearProgress();
    printf("FAILED %s\n    %s\n    %s\n", name.c_str(), why.c_str(), _failures.back().reproduce.c_str());
    fflush(stdout);
}

bool Report::finish()
{
    clearProgress();
    double seconds = secondsSince(_start);
    for (const auto &[group, counts] : _groups)
        printf("%-12s %7ld passed, %ld failed\n", group.c_str(), counts.passed, counts.failed);
    printf("in %.0f s\n%ld passed, %zu failed\n", seconds, _passed, _failures.size());
    if (!_settings.jsonFile.empty())
        writeJson(seconds);
    return _failures.empty();
}

void Report::writeJson(double seconds) const
{
    nlohmann::ordered_json root = {{"plugin", _settings.plugin}, {"level", _settings.level},
                                   {"seed", _settings.seed},     {"seconds", seconds},
                                   {"passed", _passed},          {"failed", _failures.size()}};
    root["groups"] = nlohmann::ordered_json::object();
    for (const auto &[group, counts] : _groups)
        root["groups"][group] = {{"passed", counts.passed}, {"failed", counts.failed}};
    root["failures"] = nlohmann::ordered_json::array();
    for (const FailedCase &failure : _failures)
        root["failures"].push_back({{"name", failure.name}, {"why", failure.why}, {"reproduce", failure.reproduce}});
    std::ofstream file(_settings.jsonFile);
    file << root.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    file.flush();
    if (!file)
        throw std::runtime_error("cannot write " + _settings.jsonFile);
}

} // namespace validate
