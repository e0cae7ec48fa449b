// A block from malloc or calloc that goes with its scope. For .cpp files only, where no exception of Cocoa passes: the
// runtime of 32-bit macOS would skip the destructor.
#pragma once

#include <cstdlib>

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
