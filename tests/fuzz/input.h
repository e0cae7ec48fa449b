// The bytes of one run, taken from the front; behind their end everything is zero.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

class Input {
public:
    Input(const uint8_t *bytes, size_t size) : _bytes(bytes), _size(size) {}

    size_t left() const { return _size; }

    uint8_t byte()
    {
        if (!_size)
            return 0;
        --_size;
        return *_bytes++;
    }

    template <class Number>
    Number number()
    {
        Number number = 0;
        const size_t taken = std::min(_size, sizeof number);
        memcpy(&number, _bytes, taken);
        _bytes += taken;
        _size -= taken;
        return number;
    }

    // At most `most` bytes, borrowed.
    const char *text(size_t most, size_t *length)
    {
        const char *text = reinterpret_cast<const char *>(_bytes);
        *length = std::min(most, _size);
        _bytes += *length;
        _size -= *length;
        return text;
    }

private:
    const uint8_t *_bytes;
    size_t _size;
};

// What must hold in every run. The fuzzer keeps the input that breaks it.
#define REQUIRE(condition)                                                                                             \
    ((condition) ? void() : (fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition), abort()))
