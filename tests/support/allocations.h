// Every malloc and calloc of this program goes through here (the linker's --wrap), so that a test can see the sizes
// that the plug-in's conversions ask for and can let them fail.
#pragma once

#include <cstddef>
#include <vector>

// Notes allocations from C code while it lives. One at a time.
class Allocations {
public:
    Allocations();
    ~Allocations();
    Allocations(const Allocations &) = delete;
    Allocations &operator=(const Allocations &) = delete;

    void failCallocs(); // they give null until the end

    std::vector<size_t> mallocs; // sizes, in order
    std::vector<size_t> callocs;
};
