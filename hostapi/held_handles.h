// The host handles whose locks one call of the host owns.
//
// Whatever the host or Cocoa is asked to do on the way of a call may end it in the middle: an exception of Cocoa leaves
// by longjmp in the 32-bit runtime of macOS, where no destructor runs on the way, and host code that a conversion calls
// may throw, or yield to another call that ends later or earlier. So the method guard makes one of these in its own
// frame and hands it down to the conversions. A lock that the call comes to own is held here, by the handle's name,
// from then on: a function that gets these as an argument and gives a new host handle leaves it held, and whoever gets
// it releases it when he is done, or keeps it for somebody outside the call. What is left when the call ends the guard
// gives back, however it ends. Nothing is shared between calls, so no order of them can mix up what they hold.
#pragma once

#include "hostapi/services.h"

class HeldHandles {
public:
    HeldHandles() = default;
    ~HeldHandles() // on the way out of the frame, also of an exception of C++
    {
        if (m_end != m_first)
            releaseAll();
    }
    HeldHandles(const HeldHandles &) = delete;
    HeldHandles &operator=(const HeldHandles &) = delete;

    // Takes over a lock, once, and gives the handle back; null is nothing to hold. Without memory to write it down the
    // lock is given back and the call ends (hostapi/holding.h).
    template <typename Handle>
    Handle hold(Handle handle)
    {
        if (handle) {
            if (m_end == m_limit)
                growFor(handle, isString(handle));
            *m_end++ = {handle, isString(handle)};
        }
        return handle;
    }

    // The lock goes on with the handle, to somebody outside the call.
    template <typename Handle>
    Handle keep(Handle handle)
    {
        if (isNewest(handle)) // as the result of a call is
            m_end--;
        else if (handle)
            keepOlder(handle);
        return handle;
    }

    // Gives the lock back; a handle that is not held is left as it is. It is struck out first: unlocking may run host
    // code, which may throw.
    template <typename Handle>
    void release(Handle handle)
    {
        if (!handle)
            return;
        if (strikeOut(handle))
            unlock({handle, isString(handle)});
    }

    // Gives back what is left, newest first. The methods of an object among them are not used for another one.
    void releaseAll();
    // The same as long as more than `count` are held.
    void releaseTo(int32_t count);
    int32_t count() const { return static_cast<int32_t>(m_end - m_begin); }

private:
    struct Entry {
        void *handle;
        bool isString;
    };

    static constexpr bool isString(REALstring) { return true; }
    static constexpr bool isString(const void *) { return false; }

    static void unlock(Entry held)
    {
        if (held.isString)
            REALUnlockString(static_cast<REALstring>(held.handle));
        else
            REALUnlockObject(reinterpret_cast<REALobject>(held.handle));
    }

    bool isNewest(void *handle) const { return m_end != m_begin && m_end[-1].handle == handle; }

    // Whether it was held. Almost always it is the newest, else the newest takes its place.
    bool strikeOut(void *handle)
    {
        if (m_end == m_begin)
            return false;
        Entry *const newest = m_end - 1;
        Entry *entry = newest;
        if (entry->handle != handle) {
            do {
                if (entry == m_begin)
                    return false;
            } while ((--entry)->handle != handle);
            *entry = *newest;
        }
        m_end = newest;
        return true;
    }

    void keepOlder(void *handle);
    void growFor(void *handle, bool isString);

    static constexpr int32_t kFirstCapacity = 16; // some six levels of arrays and dictionaries
    Entry *m_end = m_first;
    Entry *m_limit = m_first + kFirstCapacity;
    Entry *m_begin = m_first;
    Entry m_first[kFirstCapacity];
};
