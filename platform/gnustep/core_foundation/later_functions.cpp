// The functions that the oldest supported macOS lacks. The dynamic linker asks the resolver below for their addresses
// while it binds each library, so that PLATFORM_ABSENT in the environment makes the chosen ones null for all code that
// refers to them weakly.

#include "platform/gnustep/core_foundation/type_ids.h"

#include <CoreText/CoreText.h>

#include <unistd.h>

extern "C" void *__libc_stack_end; // the argument count; behind it the arguments and the environment

namespace {

using TypeIDFunction = CFTypeID();

// A resolver may run before the C library is initialised: it calls nothing, and finds the environment by itself then.
char **environmentNow()
{
    if (environ)
        return environ;
    char **word = static_cast<char **>(__libc_stack_end) + 1;
    while (*word)
        ++word;
    return word + 1;
}

bool partOfName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// The text behind prefix, or null when text does not begin with it.
const char *after(const char *text, const char *prefix)
{
    for (; *prefix; ++text, ++prefix)
        if (*text != *prefix)
            return nullptr;
    return text;
}

bool listed(const char *list, const char *name)
{
    while (*list) {
        const char *rest = after(list, name);
        if (rest && !partOfName(*rest))
            return true;
        while (partOfName(*list))
            ++list;
        while (*list && !partOfName(*list))
            ++list;
    }
    return false;
}

TypeIDFunction *present(const char *name, TypeIDFunction *function)
{
    for (char **entry = environmentNow(); *entry; ++entry)
        if (const char *list = after(*entry, "PLATFORM_ABSENT="))
            return listed(list, name) ? nullptr : function;
    return function;
}

} // namespace

#define LATER_TYPE_ID(name)                                                                                            \
    static CFTypeID name##Number()                                                                                     \
    {                                                                                                                  \
        return platform::name##Type;                                                                                   \
    }                                                                                                                  \
    extern "C" __attribute__((visibility("hidden"))) TypeIDFunction *resolve##name##GetTypeID()                        \
    {                                                                                                                  \
        return present(#name "GetTypeID", name##Number);                                                               \
    }                                                                                                                  \
    CFTypeID name##GetTypeID(void) __attribute__((ifunc("resolve" #name "GetTypeID")));

#define IN_TYPE_IDS(name)

PLATFORM_CF_TYPES(IN_TYPE_IDS, LATER_TYPE_ID)
