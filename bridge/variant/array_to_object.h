// Host arrays, in a Variant's place or as an argument, as Cocoa arrays.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// A host array in a Variant's place as a new array, autoreleased, its elements in their order. Where the
// host cannot tell the upper bound one element is read. A null string, date or object among the elements
// goes to Cocoa as nil, which raises.
id ArrayOfInt32s(REALobject array, HeldHandles &held);
id ArrayOfInt64s(REALobject array, HeldHandles &held);
id ArrayOfSingles(REALobject array, HeldHandles &held);
id ArrayOfDoubles(REALobject array, HeldHandles &held);
id ArrayOfDates(REALobject array, HeldHandles &held);
id ArrayOfStrings(REALobject array, HeldHandles &held);
id ArrayOfObjects(REALobject array, HeldHandles &held);
id ArrayOfBooleans(REALobject array, HeldHandles &held);

// A host array that is an argument of a method, autoreleased; nil for null. Null entries, and entries
// without a Cocoa form, are left out.
NSArray *ArrayOfStringArgument(REALarray array, HeldHandles &held);
NSArray *ArrayOfVariantArgument(REALarray array, HeldHandles &held);
