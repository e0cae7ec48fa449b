// The statement that runs, for those who end the process while it does.
#pragma once

#include "host/script/source.h"

namespace script {

// A program runs as long as it lives.
class Running {
public:
    Running();
    ~Running();
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;
};

void setRunningPlace(const Place &place);

// "NAME:LINE: "; false, and nothing is written, when no program runs. A signal handler may call it.
bool writeRunningPlace(int file);

} // namespace script
