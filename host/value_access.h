// What stands behind the handle of a Value, for the sources of Value alone.
#pragma once

#include "host/runtime/arrays.h"
#include "host/runtime/objects.h"
#include "host/runtime/strings.h"
#include "host/value.h"

namespace host {

// Throws TypeError: what was wanted, and what the value is.
[[noreturn]] void wrongKind(const Value &value, const char *wanted);

template <class P>
P &need(const Value &value, const char *wanted)
{
    P *payload = runtime::payloadOf<P>(value);
    if (!payload)
        wrongKind(value, wanted);
    return *payload;
}

runtime::ArrayHandle &needArray(const Value &value);

// Null for nil and for the null string.
runtime::StringHandle *stringOf(const Value &value);

} // namespace host
