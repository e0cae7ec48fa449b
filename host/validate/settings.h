// What a run of the validator is asked for.
#pragma once

#include <cstdint>
#include <string>

namespace validate {

struct Settings {
    std::string plugin; // absolute
    std::string family; // the companion library, absolute
    int level = 5;      // 1 to 10: how many of the cases are run
    std::string only;   // the cases whose names begin so
    uint32_t seed = 1;  // decides every random choice
    int repeat = 1;
    bool shuffle = false;
    int jobs = 0;      // child processes at a time; 0: one for each processor
    int timeLimit = 0; // seconds for a case; 0: as long as its group allows
    std::string jsonFile;
    bool list = false;
    std::string program = "plughost"; // as the lines that reproduce a failure name it
};

} // namespace validate
