// One host service that is looked up by name on its first use.
#pragma once

#include "hostapi/version.h"

// A global method of the host language by its declaration, or null.
void *REALLoadFrameworkMethod(const char *declaration);

// A service with a cache of its own. Called like a function: the first call asks the host for the entry
// point, later calls go straight to it. While the host has none, a call does nothing and gives the
// neutral result (null, 0 or false), and the next call asks again: a failed look-up is never remembered.
template <typename Signature, void *(*Find)(const char *)>
class HostService;

template <typename Result, typename... Arguments, void *(*Find)(const char *)>
class HostService<Result(Arguments...), Find> {
public:
    using Function = Result (*)(Arguments...);

    constexpr explicit HostService(const char *name) : m_name(name) {}
    HostService(const HostService &) = delete;
    HostService &operator=(const HostService &) = delete;

    // The entry point, or null while the host has none.
    Function get()
    {
        if (!m_function)
            m_function = reinterpret_cast<Function>(Find(m_name));
        return m_function;
    }

    Result operator()(Arguments... arguments)
    {
        Function function = get();
        return function ? function(arguments...) : Result();
    }

private:
    const char *m_name;
    Function m_function = nullptr;
};

inline void *FindHostEntry(const char *name)
{
    return gResolver(name);
}

// An entry point, asked for by its name.
template <typename Signature>
using HostEntry = HostService<Signature, FindHostEntry>;

// A global method of the host language, asked for by its declaration.
template <typename Signature>
using HostMethod = HostService<Signature, REALLoadFrameworkMethod>;
