#include "bench/report/numbers.h"
#include "bench/report/outputs.h"

#include <iomanip>

namespace bench {

using nlohmann::json;

static void cell(std::ostream &out, const std::string &text, int width)
{
    out << std::right << std::setw(width) << text << " ";
}

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

} // namespace bench
