#include "host/script/interruption.h"

namespace script {

static volatile sig_atomic_t hasCome = 0;

// No call of the system goes on behind it, so that a wait for keys ends, too.
Interruption::Interruption()
{
    hasCome = 0;
    struct sigaction action = {};
    action.sa_handler = [](int) { hasCome = 1; };
    sigaction(SIGINT, &action, &_before);
}

Interruption::~Interruption()
{
    sigaction(SIGINT, &_before, nullptr);
}

bool Interruption::take()
{
    bool came = hasCome;
    hasCome = 0;
    return came;
}

} // namespace script
