#include "bench/report/numbers.h"
#include "bench/report/outputs.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace bench {

namespace {

struct Band {
    const char *title, *colour;
    double (*of)(const Result &);
};

double cocoaByHand(const Result &result)
{
    return result.hand ? std::min(result.hand->total(), result.through->cocoa) : 0;
}

const Band kBands[] = {
    {"the call by hand", "#b8c4d0", cocoaByHand},
    {"Cocoa beyond it", "#7d93ab", [](const Result &r) { return std::max(0.0, r.through->cocoa - cocoaByHand(r)); }},
    {"host", "#e3b36b", [](const Result &r) { return r.through->host; }},
    {"C library for the plug-in", "#d98880", [](const Result &r) { return r.through->ownLibrary; }},
    {"plug-in itself", "#b03a2e", [](const Result &r) { return r.through->own; }},
};

constexpr int kLeft = 400, kWidth = 560, kRow = 24, kTop = 60;

std::string text(double x, double y, const std::string &content, const char *more = "")
{
    char place[80];
    snprintf(place, sizeof place, "<text x=\"%.0f\" y=\"%.0f\" %s>", x, y, more);
    return place + content + "</text>\n";
}

std::string bar(double x, double y, double width, const char *colour)
{
    char line[120];
    snprintf(line, sizeof line, "<rect x=\"%.1f\" y=\"%.0f\" width=\"%.1f\" height=\"16\" fill=\"%s\"/>\n", x, y, width,
             colour);
    return line;
}

} // namespace

std::string plot(const Results &results)
{
    std::vector<const Result *> shown;
    for (const std::string &name : kChosenCases) {
        const Result *result = results.find(kHostOfAllCases, name);
        if (result && result->through)
            shown.push_back(result);
    }
    double most = 1;
    for (const Result *result : shown)
        most = std::max(most, result->through->total());

    const int height = kTop + kRow * int(shown.size()) + 20;
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " +
                      std::to_string(kLeft + kWidth + 100) + " " + std::to_string(height) +
                      "\" font-family=\"sans-serif\" font-size=\"12\">\n<rect width=\"100%\" height=\"100%\" "
                      "fill=\"white\"/>\n" +
                      text(10, 20, "Instructions of one call through the plug-in, by who spends them");
    double x = 10;
    for (const Band &band : kBands) {
        svg += bar(x, 30, 16, band.colour) + text(x + 22, 43, band.title);
        x += 50 + 7 * double(std::string(band.title).size());
    }
    double y = kTop;
    for (const Result *result : shown) {
        svg += text(kLeft - 8, y + 13, result->name, "text-anchor=\"end\"");
        double start = kLeft;
        for (const Band &band : kBands) {
            const double width = kWidth * band.of(*result) / most;
            svg += bar(start, y, width, band.colour);
            start += width;
        }
        svg += text(start + 6, y + 13, std::to_string(std::llround(result->through->total())));
        y += kRow;
    }
    return svg + "</svg>\n";
}

} // namespace bench
