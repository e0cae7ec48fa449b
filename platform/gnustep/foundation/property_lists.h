#pragma once

#import <Foundation/Foundation.h>

namespace platform {

// Strings, data, dates, numbers, arrays of these, and dictionaries of these with strings as keys.
bool isPropertyList(id value);

// Whether two property lists are one value on disk: as isEqual: says, but a boolean, a whole number and a real number
// are never the same, and a real number is the same as itself even when it is no number.
bool isSameValue(id a, id b);

// Whether Core Foundation calls two property lists equal: of numbers the value counts and not the kind, but a boolean
// is equal to booleans only; what is no number is equal to itself.
bool areEqual(id a, id b);

bool isBoolean(NSNumber *number);
bool isReal(NSNumber *number);

// The binary form that macOS writes, format "bplist00"; autoreleased. Nil for what is no property list.
NSData *binaryPropertyList(id root);

// The property list in such data, immutable and autoreleased; nil when the data is of another form or damaged.
id propertyListFromBinary(NSData *data);

} // namespace platform
