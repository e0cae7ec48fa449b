// Which overload a call means, and whether its arguments fit.
#pragma once

#include <string>
#include <vector>

#include "host/classes.h"
#include "host/declaration.h"
#include "host/value.h"

namespace host::runtime {

// How well a value fits a declared type: 2 exactly, 1 converted, 0 not at all (`why` then says "must be ..., not ...").
int rankOf(const DeclaredType &type, const Value &value, std::string *why = nullptr);

// The overload that fits the arguments best. Throws CallError or TypeError when there is none; `what` names the callee
// in the message.
const MethodDescription &chooseOverload(const std::vector<const MethodDescription *> &candidates,
                                        const Arguments &arguments, const std::string &what);

// Throws CallError or TypeError when the arguments do not fit.
void checkArguments(const Declaration &declaration, const Arguments &arguments);

} // namespace host::runtime
