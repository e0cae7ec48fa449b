// What the cases hand over, on both sides of the border.
#pragma once

#include "bench/ground.h"

#include <Foundation/Foundation.h>

#include <memory>

namespace bench {

using host::Value;

// A key of that many ASCII units that nobody else uses, and the same as a host string.
struct Key {
    explicit Key(const std::string &start, size_t length = 8)
        : bytes((start + std::string(length, 'k')).substr(0, length)), hostString(bytes),
          cocoa([[NSString alloc] initWithUTF8String:bytes.c_str()])
    {
    }

    std::string bytes;
    Value hostString;
    NSString *cocoa; // kept for the life of the process
};

inline NSUserDefaults *standard()
{
    return [NSUserDefaults standardUserDefaults];
}

// A value that is made when its case comes.
using LateValue = std::shared_ptr<Value>;

// How each kind of argument is passed.
inline void *passed(const Key &key)
{
    return key.hostString.handle();
}
inline void *passed(const Value &value)
{
    return value.handle();
}
inline void *passed(const LateValue &value)
{
    return value->handle();
}
template <class Number>
std::enable_if_t<std::is_arithmetic_v<Number>, Number> passed(Number number)
{
    return number;
}

// A case: the member of that declaration, called on the standard defaults.
template <class Result = void, class... Arguments>
Case &addCall(Cases &cases, Ground &ground, const std::string &declaration, const Arguments &...arguments)
{
    auto *function = ground.member<Result(void *, decltype(passed(arguments))...)>(declaration);
    return cases.add(declaration).throughPlugin([=, self = ground.self()] {
        return function(self, passed(arguments)...);
    });
}

// An object that is equal to the stored one, as a program's own would be, and not the very same: for the same one
// Cocoa's comparison with what is stored would be over at once.
inline id equalTo(id object)
{
    return [object respondsToSelector:@selector(mutableCopyWithZone:)] ? [object mutableCopy] : [object retain];
}

inline void forget(NSString *key)
{
    [standard() removeObjectForKey:key];
}

} // namespace bench
