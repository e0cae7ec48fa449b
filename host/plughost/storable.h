// What the class takes without a word and does not store: the commands refuse it, so that nothing is lost silently.
#pragma once

#include <string>

#include "host/plughost/text_value.h"

namespace plughost {

// Throws InputError for a value under which the class would remove the key's value, or store less than was given: null,
// data of no bytes, text that goes on behind a null character, also inside of arrays and Dictionaries. `what` names
// the value in the message.
void requireStorable(const host::Value &value, const std::string &what);

// The same for an argument of a command, where a text can be meant as a URL.
void requireStorable(const ValueType &type, const host::Value &value, const std::string &what);

} // namespace plughost
