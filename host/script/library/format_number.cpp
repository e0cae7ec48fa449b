#include "host/script/library/format_number.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace script {

namespace {

struct Pattern {
    std::string before, after; // the text around the digits
    int wholeZeros = 0, fractionZeros = 0, fractionDigits = 0;
    bool groups = false, isPercent = false, hasDigits = false;
    char exponent = 0; // 'e' or 'E'
};

std::vector<std::string> sectionsOf(const std::string &patterns)
{
    std::vector<std::string> sections(1);
    for (size_t i = 0; i < patterns.size(); i++) {
        if (patterns[i] == ';') {
            sections.emplace_back();
            continue;
        }
        sections.back() += patterns[i];
        if (patterns[i] == '\\' && i + 1 < patterns.size())
            sections.back() += patterns[++i];
    }
    return sections;
}

Pattern patternOf(const std::string &text, bool isNegative)
{
    Pattern pattern;
    bool inFraction = false;
    for (size_t i = 0; i < text.size(); i++) {
        std::string &around = pattern.hasDigits || inFraction ? pattern.after : pattern.before;
        char c = text[i];
        switch (c) {
        case '\\':
            if (i + 1 < text.size())
                around += text[++i];
            break;
        case '0':
        case '#':
            pattern.hasDigits = true;
            pattern.wholeZeros += !inFraction && c == '0';
            pattern.fractionZeros += inFraction && c == '0';
            pattern.fractionDigits += inFraction;
            break;
        case '.':
            inFraction = true;
            break;
        case ',':
            pattern.groups = true;
            break;
        case '%':
            pattern.isPercent = true;
            around += c;
            break;
        case 'e':
        case 'E':
            pattern.exponent = c;
            if (i + 1 < text.size() && (text[i + 1] == '+' || text[i + 1] == '-'))
                i++;
            break;
        case '+':
            around += isNegative ? '-' : '+';
            break;
        case '-':
            around += isNegative ? "-" : "";
            break;
        default:
            around += c;
        }
    }
    return pattern;
}

std::string digitsOf(double number, const Pattern &pattern)
{
    char text[400];
    const char *conversion = pattern.exponent == 'e' ? "%.*e" : pattern.exponent ? "%.*E" : "%.*f";
    snprintf(text, sizeof text, conversion, pattern.fractionDigits, number);
    std::string digits = text, exponent;
    size_t mark = pattern.exponent ? digits.find(pattern.exponent) : std::string::npos;
    if (mark != std::string::npos) {
        exponent = digits.substr(mark);
        digits.resize(mark);
    }
    size_t point = std::min(digits.find('.'), digits.size());
    std::string whole = digits.substr(0, point), fraction = digits.substr(std::min(point + 1, digits.size()));
    while (int(fraction.size()) > pattern.fractionZeros && !fraction.empty() && fraction.back() == '0')
        fraction.pop_back();
    if (whole == "0" && pattern.wholeZeros == 0 && !fraction.empty())
        whole.clear();
    whole.insert(0, size_t(std::max(pattern.wholeZeros - int(whole.size()), 0)), '0');
    for (int at = int(whole.size()) - 3; pattern.groups && at > 0; at -= 3)
        whole.insert(size_t(at), ",");
    return whole + (fraction.empty() ? "" : ".") + fraction + exponent;
}

} // namespace

std::string formattedNumber(double number, const std::string &patterns)
{
    std::vector<std::string> sections = sectionsOf(patterns);
    size_t section = number < 0 && sections.size() > 1 ? 1 : number == 0 && sections.size() > 2 ? 2 : 0;
    Pattern pattern = patternOf(sections[section], number < 0);
    double shown = std::fabs(number) * (pattern.isPercent ? 100 : 1);
    return pattern.before + (pattern.hasDigits ? digitsOf(shown, pattern) : "") + pattern.after;
}

} // namespace script
