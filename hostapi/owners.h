// Owners for the conversions of text. They are for .cpp files only, where no exception of Cocoa passes:
// the runtime of 32-bit macOS would skip their destructors.
#pragma once

#include "hostapi/services.h"

#include <cstdlib>

// A block from malloc or calloc.
class HeapBlock {
public:
    explicit HeapBlock(void *block) : m_block(block) {}
    ~HeapBlock() { free(m_block); }
    HeapBlock(const HeapBlock &) = delete;
    HeapBlock &operator=(const HeapBlock &) = delete;

    template <typename Element>
    Element *get() const
    {
        return static_cast<Element *>(m_block);
    }

private:
    void *m_block;
};

// One lock on a host string.
class OwnedHostString {
public:
    explicit OwnedHostString(REALstring string) : m_string(string) {}
    ~OwnedHostString()
    {
        if (m_string)
            REALUnlockString(m_string);
    }
    OwnedHostString(const OwnedHostString &) = delete;
    OwnedHostString &operator=(const OwnedHostString &) = delete;

    REALstring get() const { return m_string; }

    REALstring release()
    {
        REALstring string = m_string;
        m_string = nullptr;
        return string;
    }

private:
    REALstring m_string;
};
