// Lines that a person types: with editing, a history, completion, and Ctrl-C.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace plughost {

// One at a time; SIGINT must be noted by a script::Interruption as long as it lives.
class Terminal {
public:
    using Completions = std::function<std::vector<std::string>(const std::string &line)>;
    explicit Terminal(Completions completions);

    enum class Input { Line, Cancelled, End };
    // `begun` stands in the line already and can be changed.
    Input read(const std::string &prompt, std::string &line, const std::string &begun = "");

private:
    void remember(const std::string &line);

    std::string _history; // the file's path; empty when there is none
};

} // namespace plughost
