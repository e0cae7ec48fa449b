#include "plugin/held_handles.h"

#include "plugin/host_functions.h"

#include <cstdlib>

namespace {

struct Held {
    void *handle;
    bool isString;
};

} // namespace

// The list grows with the depth of a conversion and stays for the life of the process.
static Held *list = nullptr;
static int32_t count = 0;
static int32_t capacity = 0;

static void WriteDown(void *handle, bool isString)
{
    if (count == capacity) {
        const int32_t larger = capacity ? 2 * capacity : 64;
        void *moved = realloc(list, larger * sizeof(Held));
        if (!moved)
            abort(); // a handle that is not written down would leave the list out of step
        list = static_cast<Held *>(moved);
        capacity = larger;
    }
    list[count++] = {handle, isString};
}

HeldMark NewestHeld()
{
    return count;
}

REALobject Hold(REALobject object)
{
    WriteDown(object, false);
    return object;
}

REALstring Hold(REALstring string)
{
    WriteDown(string, true);
    return string;
}

// A handle is struck out before it is unlocked: unlocking may run host code that comes back in here.
static Held StrikeOutNewest()
{
    return list[--count];
}

static void Unlock(Held held)
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
    const Held second = StrikeOutNewest();
    const Held first = StrikeOutNewest();
    Unlock(first);
    Unlock(second);
}

void KeepNewestHeld()
{
    StrikeOutNewest();
}

void ReleaseHeldSince(HeldMark mark)
{
    while (count > mark)
        ReleaseNewestHeld();
}
