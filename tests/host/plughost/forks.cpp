// plughost for test scripts, which would start a program for each command: in forks of one process that has started
// Foundation. A line of standard input is a request, {"folder": a path, "words": [...], "input": a text}; a line of
// standard output tells what came of it, {"status": 0, "output": a text, "errors": a text}. The folder is the command's
// current one and has its defaults, in "defaults".
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>

#include "host/isolation/configuration.h"
#include "tests/host/plughost/program.h"

using nlohmann::json;

int main()
{
    isolation::keepDefaultsInCurrentFolder();
    plughost_test::startApplication();
    for (std::string line; std::getline(std::cin, line);) {
        const json request = json::parse(line);
        std::filesystem::current_path(request["folder"].get<std::string>());
        isolation::configurePrograms();
        plughost_test::Result ended = plughost_test::plughost(request["words"], request["input"]);
        const json answer = {{"status", ended.status}, {"output", ended.output}, {"errors", ended.errors}};
        std::cout << answer.dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
    }
}
