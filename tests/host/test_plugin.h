// What the tests and their plug-in agree on.
#pragma once

#include <cstdint>

namespace test_plugin {

// Filled by the plug-in's functions with what they were given.
struct Seen {
    void *self;
    int32_t integer;
    int64_t wide;
    float single;
    double real;
    uint8_t boolean;
    void *handle;
    int32_t initialised;
    int32_t finalised;
};

} // namespace test_plugin
