#include "bench/report/table.h"

#include <cmath>
#include <cstdio>
#include <iomanip>

namespace bench {

using nlohmann::json;

namespace {

std::string whole(std::optional<double> value)
{
    if (!value)
        return "-";
    std::string digits = std::to_string(std::llround(std::abs(*value)));
    for (int place = int(digits.size()) - 3; place > 0; place -= 3)
        digits.insert(size_t(place), " ");
    return *value < -0.5 ? "-" + digits : digits;
}

std::optional<double> of(const std::optional<Count> &count, double Count::*member)
{
    return count ? std::optional((*count).*member) : std::nullopt;
}

std::optional<double> totalOf(const std::optional<Count> &count)
{
    return count ? std::optional(count->total()) : std::nullopt;
}

// Cocoa's part beyond what the call by hand needs anyway.
std::optional<double> moreCocoa(const Result &result)
{
    if (!result.through)
        return std::nullopt;
    return result.through->cocoa - (result.hand ? result.hand->cocoa : 0);
}

void cell(std::ostream &out, const std::string &text, int width)
{
    out << std::right << std::setw(width) << text << " ";
}

std::string number(double value)
{
    char text[40];
    snprintf(text, sizeof text, std::abs(value) < 100 && value != std::floor(value) ? "%.2f" : "%.0f", value);
    return text;
}

std::string shown(const Decision &file)
{
    return file.measured ? number(*file.measured) : "nothing measured";
}

const char kHostOfAllCases[] = "2013.03";

// The instructions of the other file's own code for the same call.
std::optional<double> ownOnMacOS(const Measurements &measurements, const Result &result)
{
    const Result *same = measurements.macosFile.find(result.configuration, result.name);
    return same ? of(same->through, &Count::own) : std::nullopt;
}

} // namespace

void printResults(std::ostream &out, const Measurements &measurements)
{
    std::string configuration;
    for (const Result &result : measurements.linuxFile.all()) {
        if (result.configuration != configuration) {
            configuration = result.configuration;
            out << "\nHost " << configuration
                << ": instructions per call; times in ns; bytes and blocks of the plug-in itself\n";
            out << std::left << std::setw(64) << "case";
            for (const char *title : {"by hand", "through", "own", "own, macOS", "own libc", "host", "Cocoa+"})
                cell(out, title, 11);
            cell(out, "blocks", 6), cell(out, "bytes", 9), cell(out, "ns by hand", 11), cell(out, "ns through", 11);
            out << "\n";
        }
        out << std::left << std::setw(64) << result.name.substr(0, 63);
        cell(out, whole(totalOf(result.hand)), 11);
        cell(out, whole(totalOf(result.through)), 11);
        cell(out, whole(of(result.through, &Count::own)), 11);
        cell(out, whole(ownOnMacOS(measurements, result)), 11);
        cell(out, whole(of(result.through, &Count::ownLibrary)), 11);
        cell(out, whole(of(result.through, &Count::host)), 11);
        cell(out, whole(moreCocoa(result)), 11);
        cell(out, whole(of(result.through, &Count::allocations)), 6);
        cell(out, result.memory ? whole(double(result.memory->ownPeak)) : "-", 9);
        cell(out, whole(result.handNanoseconds), 11);
        cell(out, whole(result.throughNanoseconds), 11);
        out << "\n";
    }
}

void printBudgets(std::ostream &out, const std::vector<Judged> &judged)
{
    out << "\nBudgets: measured in the Linux file, in the macOS file\n";
    for (const Judged &each : judged) {
        out << (each.isKept() ? "  kept   " : "  MISSED ") << each.what << ": " << shown(each.linuxFile) << ", "
            << shown(each.macosFile) << " of " << number(each.atMost) << " " << each.unit;
        for (const Decision *file : {&each.linuxFile, &each.macosFile})
            if (!each.isKeptBy(*file) && !file->where.empty())
                out << "; missed by " << file->where << (file == &each.macosFile ? " in the macOS file" : "");
        out << "\n";
        if (each.atMost != each.asked)
            out << "           wished for " << number(each.asked) << "; " << each.because << "\n";
    }
}

void printComparison(std::ostream &out, const json &others, const Results &results)
{
    out << "\nOther ways, ns per operation (in the same run)\n";
    for (const json &each : others.at("ways")) {
        const double nanoseconds = each.at("nanoseconds");
        out << "  " << std::left << std::setw(58) << each.at("what").get<std::string>() << std::right << std::setw(12)
            << whole(nanoseconds);
        const Result *ours = results.find(kHostOfAllCases, each.at("beside"));
        if (ours && ours->throughNanoseconds)
            out << "   " << number(nanoseconds / *ours->throughNanoseconds) << " times the plug-in's "
                << whole(ours->throughNanoseconds);
        out << "\n";
    }
}

void printMarkdown(std::ostream &out, const Measurements &measurements, const std::vector<Judged> &judged,
                   const json &others)
{
    const Results &results = measurements.linuxFile;
    out << "### Budgets\n\n| what | measure | wished for | held to | Linux file | macOS file | |\n"
           "|---|---|---:|---:|---:|---:|---|\n";
    for (const Judged &each : judged)
        out << "| " << each.what << " | " << each.unit << " | " << number(each.asked) << " | " << number(each.atMost)
            << " | " << shown(each.linuxFile) << " | " << shown(each.macosFile) << " | "
            << (each.isKept() ? "kept" : "**missed**") << " |\n";

    out << "\nWhere more is held to than was wished for:\n\n";
    for (const Judged &each : judged) {
        if (each.atMost == each.asked)
            continue;
        out << "- **" << each.what << "**: " << each.because << ".";
        for (const std::string &way : each.tried)
            out << (&way == &each.tried.front() ? " Tried: " : "; ") << way;
        out << (each.tried.empty() ? "\n" : ".\n");
    }

    out << "\n### Cases on the host 2013.03\n\nInstructions of one call; then the heap blocks that the plug-in asks "
           "for, "
           "and its bytes at their highest.\n\n| case | by hand | through | plug-in itself | the same in the macOS "
           "file | its C library | host | "
           "Cocoa beyond by hand | blocks | bytes |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n";
    for (const Result &result : results.all()) {
        if (result.configuration != kHostOfAllCases || !result.through)
            continue;
        out << "| " << result.name << " | " << whole(totalOf(result.hand)) << " | " << whole(totalOf(result.through))
            << " | " << whole(of(result.through, &Count::own)) << " | " << whole(ownOnMacOS(measurements, result))
            << " | " << whole(of(result.through, &Count::ownLibrary)) << " | "
            << whole(of(result.through, &Count::host)) << " | " << whole(moreCocoa(result)) << " | "
            << whole(of(result.through, &Count::allocations)) << " | "
            << (result.memory ? whole(double(result.memory->ownPeak)) : "-") << " |\n";
    }

    if (others.is_null())
        return;
    out << "\n### Other ways\n\n| what | ns | beside the plug-in | beside the call by hand |\n|---|---:|---:|---:|\n";
    for (const json &each : others.at("ways")) {
        const double nanoseconds = each.at("nanoseconds");
        const Result *ours = results.find(kHostOfAllCases, each.at("beside"));
        auto ratio = [&](std::optional<double> beside) {
            return beside ? number(nanoseconds / *beside) + " times its " + whole(beside) + " ns" : "-";
        };
        out << "| " << each.at("what").get<std::string>() << " | " << whole(nanoseconds) << " | "
            << ratio(ours ? ours->throughNanoseconds : std::nullopt) << " | "
            << ratio(ours ? ours->handNanoseconds : std::nullopt) << " |\n";
    }
}

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
