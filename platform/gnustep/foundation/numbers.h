#pragma once

#import <Foundation/Foundation.h>

namespace platform {

// The kind of whole number that a binary property list has for 16 bytes, objCType "Q"; autoreleased.
NSNumber *numberOf16Bytes(UInt64 value);

} // namespace platform
