#include "host/plughost/member_help.h"

#include <map>
#include <regex>
#include <sstream>

#include "host/declaration.h"

extern "C" const char referenceText[], referenceTextEnd[];

namespace plughost {

namespace {

// The first words of a line that are for the pages' maker, not for people.
const std::regex kFact("- (Subject|Cocoa|Systems|Setter|Guarded): .*");
const std::regex kPhrase("\\{\\{([^|}]+)(?:\\|([^}]*))?\\}\\}");

std::string withPhrases(std::string line, const std::map<std::string, std::string> &phrases)
{
    std::smatch found;
    while (std::regex_search(line, found, kPhrase)) {
        auto phrase = phrases.find(found[1]);
        std::string text = phrase == phrases.end() ? "" : phrase->second;
        size_t argument = text.find("$1");
        if (argument != std::string::npos)
            text.replace(argument, 2, found[2]);
        line = found.prefix().str() + text + found.suffix().str();
    }
    return line;
}

std::string nameIn(const std::string &declaration)
{
    return declaration.substr(0, declaration.find_first_of("( "));
}

} // namespace

std::string memberHelp(const std::string &name)
{
    std::istringstream reference(std::string(referenceText, referenceTextEnd));
    std::map<std::string, std::string> phrases;
    std::string part, help;
    bool isShown = false, isBlank = true;
    for (std::string line; std::getline(reference, line);) {
        if (line.rfind("# ", 0) == 0) {
            part = line.substr(2);
            isShown = false;
        } else if (line.rfind("## ", 0) == 0) {
            isShown = host::equalIgnoringCase(nameIn(line.substr(3)), name);
            line = line.substr(3);
            isBlank = true;
        } else if (line == "### Example") {
            isShown = false;
        } else if (line.rfind("### ", 0) == 0) {
            line = line.substr(4) + ":";
        } else if (size_t colon = line.find(": "); part == "Phrases" && line.rfind("- ", 0) == 0) {
            phrases[line.substr(2, colon - 2)] = line.substr(colon + 2);
        }
        bool repeatsBlank = line.empty() && isBlank;
        if (!isShown || repeatsBlank || std::regex_match(line, kFact))
            continue;
        isBlank = line.empty();
        help += withPhrases(line, phrases) + "\n";
    }
    return help;
}

} // namespace plughost
