// Runs plughost, the shell, and the system's defaults tool, each in a process of its own.
#pragma once

#include <string>
#include <vector>

namespace plughost_test {

struct Result {
    int status = 0; // exit status; 128 and the signal's number for a program that was killed
    std::string output;
    std::string errors;
};

using Words = std::vector<std::string>;

// Starts the application that plughost is unless it is told otherwise, for the commands that are forks of this process.
void startApplication();

// plughost with the plug-in under test. The defaults are those of the test's own folder. The process is a fork of the
// test's, in which the application runs already; a program from its start when it is another application or has another
// folder of defaults, and when the tests are isolated.
Result plughost(const Words &arguments, const std::string &input = "");
Result plughostWith(const std::string &plugin, const Words &arguments, const std::string &input = "");
// The program from its start in any case: for what happens before its main function, or when nobody catches an
// exception.
Result startedPlughost(const Words &arguments, const std::string &input = "");
Result defaultsTool(const Words &arguments);
Result shell(const std::string &line);

// What a command prints, without the last line's end; a failure of the command fails the test.
std::string printed(const Words &arguments);

// Files in a folder of the test's own.
std::string temporaryFile(const std::string &name, const std::string &content);
std::string temporaryFolder(const std::string &name);
std::string contentOf(const std::string &path);

Words operator+(Words words, const Words &more);

} // namespace plughost_test
