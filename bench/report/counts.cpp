#include "bench/report/counts.h"
#include "bench/own_code.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr size_t kParts = 5; // whom a library's work can be attributed to
using Shares = std::array<double, kParts>;

// Callgrind knows ELF files by name. What our own loader has mapped is in no file to it, and its functions are called
// by their addresses.
Part partOf(const std::string &object, const std::string &function, const CodeRange &plugIn)
{
    if (object == "???")
        return plugIn.contains(strtoul(function.c_str(), nullptr, 16)) ? Part::PlugIn : Part::Library;
    const std::string file = object.substr(object.rfind('/') + 1);
    auto startsWith = [&](const char *start) { return file.rfind(start, 0) == 0; };
    if (file == "NSUserDefaults.so")
        return Part::PlugIn;
    if (startsWith("libbench_loader"))
        return Part::Loader;
    if (startsWith("libbench_host") || file == "Family.so")
        return Part::Host;
    if (startsWith("libgnustep-") || startsWith("libobjc") || startsWith("libplatform-gnustep"))
        return Part::Cocoa;
    return startsWith("bench_counts") ? Part::Driver : Part::Library;
}

// A function as callgrind names it: the file that holds it and its name.
struct Function {
    Part part = Part::Library;
    std::string name;
    double own = 0;
    std::map<int, double> callers; // the instructions spent inside for each
    Shares shares{};
};

// One stretch between two dumps.
class Stretch {
public:
    void clear()
    {
        _functions.clear();
        _numbers.clear();
        label.clear();
        allocations = 0;
    }

    int number(const std::string &object, const std::string &name)
    {
        auto [place, isNew] = _numbers.try_emplace({object, name}, int(_functions.size()));
        if (isNew)
            _functions.push_back({partOf(object, name, plugIn), name, 0, {}, {}});
        return place->second;
    }

    void spend(int function, double instructions) { _functions[size_t(function)].own += instructions; }

    void call(int caller, int callee, long times, double inclusive)
    {
        const std::string &name = _functions[size_t(callee)].name;
        if (_functions[size_t(caller)].part == Part::PlugIn &&
            (name == "malloc" || name == "calloc" || name == "realloc"))
            allocations += double(times);
        _functions[size_t(callee)].callers[caller] += inclusive;
    }

    // What libraries did is charged to those who asked for it, in proportion to what was spent for each. A library
    // may ask another, so this is repeated until it has passed through the longest chain there is.
    Count charged()
    {
        for (Function &function : _functions)
            function.shares = known(function.part);
        for (int round = 0; round < 30; round++)
            for (Function &function : _functions)
                if (function.part == Part::Library)
                    function.shares = sharesOfCallers(function);

        Count count;
        Shares libraries{};
        for (const Function &function : _functions) {
            if (function.part == Part::PlugIn)
                count.own += function.own;
            else if (function.part != Part::Driver && function.part != Part::Loader)
                for (size_t part = 0; part < kParts; part++)
                    libraries[part] += function.own * function.shares[part];
        }
        count.ownLibrary = libraries[size_t(Part::PlugIn)];
        count.host = libraries[size_t(Part::Host)];
        count.cocoa = libraries[size_t(Part::Cocoa)];
        count.caller = libraries[size_t(Part::Driver)];
        count.allocations = allocations;
        return count;
    }

    std::string label;
    CodeRange plugIn;
    double allocations = 0;

private:
    static Shares known(Part part)
    {
        Shares shares{};
        if (part != Part::Library)
            shares[size_t(part)] = 1;
        return shares;
    }

    Shares sharesOfCallers(const Function &function) const
    {
        Shares shares{};
        double all = 0;
        for (const auto &[caller, inclusive] : function.callers)
            all += inclusive;
        for (const auto &[caller, inclusive] : function.callers)
            for (size_t part = 0; part < kParts; part++)
                shares[part] += all > 0 ? inclusive / all * _functions[size_t(caller)].shares[part] : 0;
        return shares;
    }

    std::vector<Function> _functions;
    std::map<std::pair<std::string, std::string>, int> _numbers;
};

// "(12) name" gives number 12 a name, "(12)" uses it.
class Names {
public:
    const std::string &read(const std::string &text)
    {
        const size_t end = text.find(')');
        if (text.empty() || text[0] != '(' || end == std::string::npos)
            throw std::runtime_error("not a name in callgrind's form: " + text);
        std::string &name = _names[text.substr(1, end - 1)];
        if (end + 2 < text.size())
            name = text.substr(end + 2);
        return name;
    }

private:
    std::map<std::string, std::string> _names;
};

Count described(Count count, const std::string &label)
{
    std::istringstream fields(label);
    std::string repeats, size, hostCalls, namesAsked, plugIn;
    std::getline(fields, count.side, '|');
    std::getline(fields, repeats, '|');
    std::getline(fields, size, '|');
    std::getline(fields, hostCalls, '|');
    std::getline(fields, namesAsked, '|');
    std::getline(fields, plugIn, '|');
    std::getline(fields, count.name);
    const double times = atof(repeats.c_str());
    if (count.name.empty() || times < 1)
        throw std::runtime_error("not a label of a case: " + label);
    for (double *value : {&count.own, &count.ownLibrary, &count.host, &count.cocoa, &count.caller, &count.allocations})
        *value /= times;
    count.size = atol(size.c_str());
    count.hostCalls = atol(hostCalls.c_str());
    count.namesAsked = atol(namesAsked.c_str());
    return count;
}

// Where a label says that the plug-in's code lies: two addresses with a hyphen between them, in the field before the
// last.
CodeRange codeRangeIn(const std::string &label)
{
    const size_t end = label.rfind('|'), start = end == std::string::npos ? end : label.rfind('|', end - 1);
    unsigned long from = 0, to = 0;
    if (start == std::string::npos || sscanf(label.c_str() + start, "|%lx-%lx|", &from, &to) != 2)
        throw std::runtime_error("not a label of a case: " + label);
    return {from, to};
}

// What stands after `start` at the beginning of the line, if it is there.
bool after(const std::string &line, const char *start, std::string *rest)
{
    const std::string text = start;
    if (line.compare(0, text.size(), text) != 0)
        return false;
    *rest = line.substr(text.size());
    return true;
}

// A cost line begins with a place in the source: a number, or how far it is from the one before, or "the same".
bool isPosition(char first)
{
    return isdigit(static_cast<unsigned char>(first)) || strchr("+-*", first);
}

} // namespace

std::vector<Count> readCounts(const std::string &path, const std::string &configuration)
{
    std::ifstream file(path);
    if (!file)
        throw std::runtime_error("cannot read " + path);

    std::vector<Count> counts;
    Names objects, functions;
    Stretch stretch;
    std::string line, rest, object, calledObject;
    int function = -1, called = -1;
    long times = 0;
    auto finish = [&] {
        if (stretch.label.empty())
            return;
        counts.push_back(described(stretch.charged(), stretch.label));
        counts.back().configuration = configuration;
    };
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (after(line, "part: ", &rest)) {
            finish();
            stretch.clear();
            function = called = -1;
        } else if (after(line, "desc: Trigger: Client Request: ", &rest)) {
            stretch.label = rest;
            stretch.plugIn = codeRangeIn(rest);
        } else if (after(line, "ob=", &rest)) {
            object = objects.read(rest);
        } else if (after(line, "fn=", &rest)) {
            function = stretch.number(object, functions.read(rest));
            calledObject = object;
        } else if (after(line, "cob=", &rest)) {
            calledObject = objects.read(rest);
        } else if (after(line, "cfn=", &rest)) {
            called = stretch.number(calledObject, functions.read(rest));
        } else if (after(line, "calls=", &rest)) {
            times = atol(rest.c_str());
        } else if (isPosition(line[0]) && function >= 0) {
            const double instructions = atof(line.c_str() + line.find(' '));
            if (called >= 0) {
                stretch.call(function, called, times, instructions);
                called = -1;
                calledObject = object; // a callee without a file of its own is in its caller's
            } else {
                stretch.spend(function, instructions);
            }
        }
    }
    finish();
    if (std::none_of(counts.begin(), counts.end(), [](const Count &count) { return count.own > 0; }))
        throw std::runtime_error("there are no counts of the plug-in in " + path);
    return counts;
}

} // namespace bench
