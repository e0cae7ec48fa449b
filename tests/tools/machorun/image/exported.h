// A small library for the loader's tests: compiled and linked as the plug-in is, one exported function per behaviour.
#pragma once

#define EXPORTED extern "C" __attribute__((visibility("default")))

// A function of the test program that the library calls back.
typedef void (*Callback)();

// Counts how often it is destroyed.
class Guard {
public:
    explicit Guard(int *count) : count_(count) {}
    ~Guard() { ++*count_; }

private:
    int *count_;
};
