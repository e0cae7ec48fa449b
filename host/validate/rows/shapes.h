// The shapes of rows: what a getter, a setter and a call that names something have in common.
#pragma once

#import <Foundation/Foundation.h>

#include "host/validate/rows.h"

namespace validate {

constexpr char kKey[] = "Key";

using Text = std::function<std::string(World &)>;
using Answer = std::function<void(StandIn &)>;

std::string key(World &world);
host::Arguments keyArgument();

// What the carried object answers to a message.
template <class Number>
Answer answerNumber(const char *selector, Number number)
{
    return [=](StandIn &standIn) { standIn.answerNumber(selector, &number, sizeof number); };
}
Answer answerObject(const char *selector, id (*make)());

Text text(const std::string &exactly);

// Called with the key alone; `selector` is sent with it, as "integerForKey" and a colon. A row's name is the
// method's, and `variation` behind it where a method has several rows.
Row getter(const char *declaration, const char *selector, Answer answer, Text result,
           const std::string &variation = "");

// Stores `value` with setObject:forKey: or a message like it.
Row setter(const char *declaration, const char *selector, std::function<host::Value()> value, Text stored,
           const std::string &variation = "");

// A name in, a message of the method's own name out.
Row named(const char *declaration);

// Called without arguments; what it sends is told by the row that it becomes.
Row plain(const std::string &declaration, Text result, const std::string &variation = "");

} // namespace validate
