#include "bridge/exceptions/held_handles.h"

#include "hostapi/services.h"

#include <cstdlib>

HeldList heldList = {nullptr, 0, 0};

void GrowHeldList()
{
    const int32_t larger = heldList.capacity ? 2 * heldList.capacity : 64;
    void *moved = realloc(heldList.entries, larger * sizeof(HeldList::Entry));
    if (!moved)
        abort(); // a handle that is not written down would leave the list out of step
    heldList.entries = static_cast<HeldList::Entry *>(moved);
    heldList.capacity = larger;
}

HeldMark NewestHeld()
{
    return heldList.count;
}

// A handle is struck out before it is unlocked: unlocking may run host code that comes back in here.
static HeldList::Entry StrikeOutNewest()
{
    return heldList.entries[--heldList.count];
}

static void Unlock(HeldList::Entry held)
{
    if (!held.handle)
        return;
    if (held.isString)
        REALUnlockString(static_cast<REALstring>(held.handle));
    else
        REALUnlockObject(static_cast<REALobject>(held.handle));
}

void ReleaseNewestHeld()
{
    Unlock(StrikeOutNewest());
}

void ReleaseTwoNewestHeld()
{
    const HeldList::Entry second = StrikeOutNewest();
    const HeldList::Entry first = StrikeOutNewest();
    Unlock(first);
    Unlock(second);
}

void KeepNewestHeld()
{
    StrikeOutNewest();
}

void ReleaseHeldSince(HeldMark mark)
{
    while (heldList.count > mark)
        ReleaseNewestHeld();
}
