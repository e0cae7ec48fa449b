#include "hostapi/held_handles.h"

#include "hostapi/dictionary_methods.h"
#include "hostapi/holding.h"

#include <cstdlib>
#include <cstring>

const id kNoMemoryForHandles = @"There is no memory to write down the handles of a call.";

void HeldHandles::growFor(void *handle, bool isString)
{
    const size_t used = m_limit - m_begin;
    const bool isFirst = m_begin == m_first;
    auto *larger = static_cast<Entry *>(realloc(isFirst ? nullptr : m_begin, 2 * used * sizeof(Entry)));
    if (!larger) {
        unlock({handle, isString});
        @throw kNoMemoryForHandles;
    }
    if (isFirst)
        memcpy(larger, m_first, sizeof m_first);
    m_begin = larger;
    m_end = larger + used;
    m_limit = larger + 2 * used;
}

void HeldHandles::keepOlder(void *handle)
{
    strikeOut(handle);
}

void HeldHandles::releaseTo(int32_t count)
{
    while (m_end - m_begin > count) {
        const Entry held = *--m_end;
        if (!held.isString)
            ForgetMethodsOf(static_cast<REALobject>(held.handle));
        unlock(held);
    }
}

void HeldHandles::releaseAll()
{
    releaseTo(0);
    if (m_begin == m_first)
        return;
    free(m_begin);
    m_begin = m_end = m_first;
    m_limit = m_first + kFirstCapacity;
}
