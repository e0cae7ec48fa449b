// Texts of any units as answers of a stand-in, lone surrogates among them.
#pragma once

#include <string>

#include "host/validate/stand_in.h"

namespace validate {

enum class AnswerShape { Text, InArray, AsValue, AsKey };

void answerText(StandIn &standIn, const char *selector, AnswerShape shape, const std::u16string &units);

} // namespace validate
