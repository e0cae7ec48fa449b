#include "tests/interchange/tools.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace interchange {

std::string quoted(const std::string &text)
{
    std::string result = "'";
    for (char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string outputOf(const std::string &command)
{
    std::string output;
    FILE *pipe = popen(command.c_str(), "r");
    char part[4096];
    while (size_t size = fread(part, 1, sizeof part, pipe))
        output.append(part, size);
    EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output;
    return output;
}

int statusOf(const std::string &command)
{
    return WEXITSTATUS(system(command.c_str()));
}

std::string onOneLine(const std::string &text)
{
    std::string line;
    for (char c : text) {
        if (!isspace(static_cast<unsigned char>(c)))
            line += c;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    while (!line.empty() && line.back() == ' ')
        line.pop_back();
    return line;
}

} // namespace interchange
