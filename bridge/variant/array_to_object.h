// Host arrays, in a Variant's place or as an argument, as Cocoa arrays.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

// A host array in a Variant's place as a new array, autoreleased, its elements in their order. Where the
// host cannot tell the upper bound one element is read. A null string, date or object among the elements
// goes to Cocoa as nil, which raises.
id ArrayOfInt32s(REALobject array);
id ArrayOfInt64s(REALobject array);
id ArrayOfSingles(REALobject array);
id ArrayOfDoubles(REALobject array);
id ArrayOfDates(REALobject array);
id ArrayOfStrings(REALobject array);
id ArrayOfObjects(REALobject array);
id ArrayOfBooleans(REALobject array);

// A host array that is an argument of a method, autoreleased; nil for null. Null entries, and entries
// without a Cocoa form, are left out.
NSArray *ArrayOfStringArgument(REALarrayString array);
NSArray *ArrayOfVariantArgument(REALarray array);
