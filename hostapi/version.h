// What the host said of itself at start-up, and the questions that depend on it.
#pragma once

#include <cstdint>

// The host's lookup call-back: an entry point's name in, the entry point or null out.
typedef void *(*HostResolver)(const char *name);

extern HostResolver gResolver;

// The host's version as a year with decimals, such as 2013.03; 0.0 when the host reports none.
extern double rbversion_rbversion;

// The record layout handed to the host: 9, 10, 11 or 12.
extern int32_t CurrentREALControlVersion;

// From 2012.0 on the host hands out a string's bytes itself; before, its string record is read.
inline bool HostHandsOutStringBytes()
{
    return rbversion_rbversion >= 2012.0;
}

// Up to 2013.9 the elements of a host array lie in one block that may be read directly.
inline bool HostArraysHaveStorage()
{
    return rbversion_rbversion <= 2013.9;
}
