// bench_report FOLDER BUDGETS [--json FILE] [--svg FILE] [--pages FOLDER] [--brief]
//
// Reads what the runs left in FOLDER/linux and FOLDER/macos, one for each file of the plug-in, prints the tables and
// judges the budgets. Status 1 when one is missed.
//
// bench_report --judged BUDGETS
//
// Prints an expression for the names of the cases that the budgets look at.
#include "bench/report/outputs.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

using namespace bench;
using nlohmann::json;

namespace {

struct Options {
    std::string folder, budgets, json, svg, pages;
    bool brief = false; // the budgets alone
};

bool parse(int argc, char **argv, Options *options)
{
    const std::map<std::string, std::string *> files = {
        {"--json", &options->json}, {"--svg", &options->svg}, {"--pages", &options->pages}};
    std::vector<std::string> plain;
    for (int i = 1; i < argc; i++) {
        const auto file = files.find(argv[i]);
        if (std::string(argv[i]) == "--brief")
            options->brief = true;
        else if (file != files.end() && i + 1 < argc)
            *file->second = argv[++i];
        else
            plain.push_back(argv[i]);
    }
    if (plain.size() != 2)
        return false;
    options->folder = plain[0];
    options->budgets = plain[1];
    return true;
}

json readJson(const std::filesystem::path &path)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    return json::parse(file, nullptr, true, true);
}

// The files of a folder are called KIND-CONFIGURATION.ENDING.
Results readFolder(const std::filesystem::path &folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());

    Results results;
    for (const std::filesystem::path &file : files) {
        const std::string name = file.filename().stem().string();
        const size_t dash = name.find('-');
        if (dash == std::string::npos)
            continue;
        const std::string kind = name.substr(0, dash), configuration = name.substr(dash + 1);
        if (kind == "counts")
            results.addCounts(readCounts(file, configuration));
        else if (kind == "memory")
            results.addMemory(readJson(file), configuration);
        else if (kind == "times")
            results.addTimes(readJson(file), configuration);
    }
    return results;
}

} // namespace

int main(int argc, char **argv)
try {
    Options options;
    if (!parse(argc, argv, &options)) {
        std::cerr << "usage: bench_report FOLDER BUDGETS [--json FILE] [--svg FILE] [--pages FOLDER] [--brief]\n"
                     "       bench_report --judged BUDGETS\n";
        return 2;
    }
    const json budgets = readJson(options.budgets).at("budgets");
    if (options.folder == "--judged") {
        std::cout << judgedCases(budgets) << "\n";
        return 0;
    }
    const std::filesystem::path folder = options.folder, comparison = folder / "comparison.json";
    const Measurements results = {readFolder(folder / "linux"), readFolder(folder / "macos")};
    const std::vector<Judged> judged = judge(budgets, results);
    const json others = std::filesystem::exists(comparison) ? readJson(comparison) : json();

    if (!options.brief)
        printResults(std::cout, results);
    printBudgets(std::cout, judged);
    if (!others.is_null())
        printComparison(std::cout, others, results.linuxFile);
    if (!options.json.empty())
        std::ofstream(options.json) << asJson(results, judged, others).dump(1) << "\n";
    if (!options.svg.empty())
        std::ofstream(options.svg) << plot(results.linuxFile);

    if (!options.pages.empty()) {
        std::ofstream summary(options.pages + "/summary.md"), tables(options.pages + "/tables.md");
        printSummary(summary, results, others);
        printTables(tables, results, judged);
    }

    for (const Judged &each : judged)
        if (!each.isKept())
            return 1;
    return 0;
} catch (const std::exception &error) {
    std::cerr << "bench_report: " << error.what() << "\n";
    return 2;
}
