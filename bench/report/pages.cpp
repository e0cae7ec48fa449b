#include "bench/report/numbers.h"
#include "bench/report/outputs.h"

#include <regex>

namespace bench {

using nlohmann::json;

const std::vector<std::string> kChosenCases = {
    "integerForKey(key as string) as integer, key of 8",
    "integerForKey(key as string) as integer, key of 64",
    "setIntegerValue(key as string, value as integer), key of 8",
    "doubleForKey(key as string) as double, key of 8",
    "boolForKey(key as string) as boolean, key of 8",
    "stringForKey(key as string) as string",
    "setStringValue(key as string, value as string)",
    "dataForKey(key as string) as memoryblock",
    "setDataValue(key as string, value as memoryblock)",
    "variantForKey(key as string) as variant",
    "setVariantValue(key as string, value as variant)",
    "stringArrayForKey(key as string) as string()",
    "setStringArrayValue(key as string, values() as string)",
    "arrayForKey(key as string) as variant()",
    "setArrayValue(key as string, values() as variant)",
    "standardUserDefaults as NSUserDefaultsKTZ",
};

namespace {

// "integerForKey, key of 64", without the declaration's arguments.
std::string shortName(const std::string &name)
{
    return std::regex_replace(name, std::regex("\\(.*\\)| as [A-Za-z]+(\\(\\))?"), "");
}

std::string ratio(std::optional<double> value, std::optional<double> beside)
{
    return value && beside ? number(*value / *beside) : "-";
}

void printCalls(std::ostream &out, const Measurements &measurements)
{
    out << "\n## One call\n\n| call | ns by Cocoa alone | ns through the class | times as long | instructions of all | "
           "the plug-in's "
           "own, "
           "Linux file | macOS file |\n|---|---:|---:|---:|---:|---:|---:|\n";
    for (const std::string &name : kChosenCases) {
        const Result *result = measurements.linuxFile.find(kHostOfAllCases, name);
        if (!result)
            continue;
        out << "| " << shortName(name) << " | " << whole(result->handNanoseconds) << " | "
            << whole(result->throughNanoseconds) << " | " << ratio(result->throughNanoseconds, result->handNanoseconds)
            << " | " << whole(totalOf(result->through)) << " | " << whole(of(result->through, &Count::own)) << " | "
            << whole(ownOnMacOS(measurements, *result)) << " |\n";
    }
}

std::optional<double> each(std::optional<double> whole, long count)
{
    return whole ? std::optional(*whole / double(count)) : std::nullopt;
}

// Nanoseconds for each element, at sizes that are a hundred times apart.
void printGrowth(std::ostream &out, const Results &results)
{
    const long sizes[] = {10, 1000, 100000, 1000000};
    out << "\n## How it grows\n\n| ns for each element |";
    for (long size : sizes)
        out << " of " << whole(double(size)) << " |";
    out << "\n|---|---:|---:|---:|---:|\n";
    auto row = [&](const std::string &title, const std::string &series, std::optional<double> Result::*side) {
        out << "| " << title << " |";
        for (long size : sizes) {
            const Result *result = results.find(kHostOfAllCases, series + std::to_string(size));
            out << " " << whole(result ? each((*result).*side, size) : std::nullopt) << " |";
        }
        out << "\n";
    };
    for (const std::string sort : {"string array", "Variant array", "Dictionary"}) {
        row("get " + sort, "get " + sort + " of ", &Result::throughNanoseconds);
        row("set " + sort, "set " + sort + " of ", &Result::throughNanoseconds);
        row("the same by Cocoa alone", "set " + sort + " of ", &Result::handNanoseconds);
    }
}

void printOtherWays(std::ostream &out, const Results &results, const json &others)
{
    out << "\n## Other ways\n\n| another way | ns | through the class, ns | by Cocoa alone, ns "
           "|\n|---|---:|---:|---:|\n";
    for (const json &way : others.at("ways")) {
        const Result *ours = results.find(kHostOfAllCases, way.at("beside"));
        out << "| " << way.at("what").get<std::string>() << " | " << whole(way.at("nanoseconds").get<double>()) << " | "
            << whole(ours ? ours->throughNanoseconds : std::nullopt) << " | "
            << whole(ours ? ours->handNanoseconds : std::nullopt) << " |\n";
    }
}

void printBudgetTable(std::ostream &out, const std::vector<Judged> &judged)
{
    out << "## Budgets\n\n| what | measure | wished for | held to | Linux file | macOS file | |\n"
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
}

void printCases(std::ostream &out, const Measurements &measurements)
{
    out << "\n## Cases on the host " << kHostOfAllCases
        << "\n\nInstructions of one call; then the heap blocks that the plug-in asks for, and its bytes at their "
           "highest.\n\n| case | by hand | through | plug-in itself | the same in the macOS file | its C library | "
           "host | Cocoa beyond by hand | blocks | bytes |\n|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n";
    for (const Result &result : measurements.linuxFile.all()) {
        if (result.configuration != kHostOfAllCases || !result.through)
            continue;
        out << "| " << result.name << " | " << whole(totalOf(result.hand)) << " | " << whole(totalOf(result.through))
            << " | " << whole(of(result.through, &Count::own)) << " | " << whole(ownOnMacOS(measurements, result))
            << " | " << whole(of(result.through, &Count::ownLibrary)) << " | "
            << whole(of(result.through, &Count::host)) << " | " << whole(moreCocoa(result)) << " | "
            << whole(of(result.through, &Count::allocations)) << " | "
            << (result.memory ? whole(double(result.memory->ownPeak)) : "-") << " |\n";
    }
}

} // namespace

void printSummary(std::ostream &out, const Measurements &measurements, const json &others)
{
    printCalls(out, measurements);
    printGrowth(out, measurements.linuxFile);
    if (!others.is_null())
        printOtherWays(out, measurements.linuxFile, others);
    out << "\n";
}

void printTables(std::ostream &out, const Measurements &measurements, const std::vector<Judged> &judged)
{
    out << "# The tables behind the page on performance\n\nWritten by `make bench`. What the columns mean, and how "
           "they "
           "were measured, is told in [performance.md](performance.md).\n\n";
    printBudgetTable(out, judged);
    printCases(out, measurements);
}

} // namespace bench
