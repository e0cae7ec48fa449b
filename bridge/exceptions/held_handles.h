// Host handles that are held while Cocoa runs.
//
// An exception of Cocoa leaves a conversion in the middle, and the 32-bit Objective-C runtime of macOS
// leaves by longjmp: no destructor runs on the way. So a conversion that holds a lock across a message
// writes the handle down here, last in, first out, and the method guard unlocks what an exception left
// behind. On every way without an exception a conversion releases or keeps its own handles itself, which
// leaves nothing for the guard to do.
#pragma once

#include "hostapi/types.h"

// A place in the list; what is held after it is newer.
typedef int32_t HeldMark;
HeldMark NewestHeld();

// The list. It grows with the depth of a conversion and stays for the life of the process. It stands here so that
// writing a handle down is a few instructions inside a conversion, which does so for every element.
struct HeldList {
    struct Entry {
        void *handle;
        bool isString;
    };
    Entry *entries;
    int32_t count;
    int32_t capacity;
};
extern HeldList heldList;
void GrowHeldList();

inline void WriteDown(void *handle, bool isString)
{
    if (heldList.count == heldList.capacity)
        GrowHeldList();
    heldList.entries[heldList.count++] = {handle, isString};
}

// Write down a handle (null too) whose lock this library owns, and give it back.
inline REALobject Hold(REALobject object)
{
    WriteDown(object, false);
    return object;
}

inline REALstring Hold(REALstring string)
{
    WriteDown(string, true);
    return string;
}

// Strike out the newest handles: unlocking them in the order in which they were held, or keeping the lock
// of the newest for whoever gets the handle next.
void ReleaseNewestHeld();
void ReleaseTwoNewestHeld();
void KeepNewestHeld();

// Unlock everything held after `mark`, newest first.
void ReleaseHeldSince(HeldMark mark);
