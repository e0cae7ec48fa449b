// How values of the declared types are passed to C functions.
#pragma once

#include "host/declaration.h"
#include "host/value.h"

#include <cstdint>
#include <deque>
#include <ffi.h>

namespace host::runtime {

// One argument or result as it is passed.
union Slot {
    int32_t int32;
    uint32_t uint32;
    int64_t int64;
    uint64_t uint64;
    float single;
    double real;
    void *pointer;
    ffi_arg word; // small results come back in a whole word
};

struct PassingFacts {
    Passing passing;
    ffi_type *type;
    Value::Kind kind; // that fits exactly
    // Of integers: the range. Other types have no smallest number.
    int64_t smallest;
    uint64_t largest;
    // For values that stand for themselves: into a slot, and out of one.
    void (*put)(const Value &value, Slot &slot);
    Value (*take)(const Slot &slot);

    bool isInteger() const { return smallest <= 0; }
};

const PassingFacts &factsOf(Passing passing);
ffi_type *ffiTypeOf(const DeclaredType &type);

// A value of a Variant as what it stands for.
Value unboxed(const Value &value);

// Puts a checked value into a slot. What was made for the call goes to `kept`.
void pass(const DeclaredType &type, const Value &given, Slot &slot, std::deque<Value> &kept);

// `owned`: the slot's handle carries a lock for the host.
Value receive(const DeclaredType &type, const Slot &slot, bool owned);

} // namespace host::runtime
