// What the cases hand over, on both sides of the border.
#pragma once

#include "bench/ground.h"

#include <Foundation/Foundation.h>

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

    void *handle() const { return hostString.handle(); }
};

inline NSUserDefaults *standard()
{
    return [NSUserDefaults standardUserDefaults];
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
