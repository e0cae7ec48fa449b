#include "host/runtime/state.h"

namespace host::runtime {

bool PlannedFault::strikes()
{
    if (countdown == 0 || --countdown > 0)
        return false;
    if (--times > 0)
        countdown = 1;
    return true;
}

State &state()
{
    static State *state = [] {
        auto *initial = new State;
        initial->profile = *Profile::named("2013.03");
        return initial;
    }();
    return *state;
}

bool creationFails(Creation sort)
{
    ++state().creations[sort];
    return state().plannedFaults[sort].strikes();
}

} // namespace host::runtime
