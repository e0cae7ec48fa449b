// Dictionaries between the host and Cocoa. Keys and values go through the general converters of
// bridge/variant/, which come back here for dictionaries inside; there is no limit to the depth, and a
// dictionary that contains itself is converted without end. What Cocoa raises passes through to the caller's
// guard.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// A new host Dictionary, held. Null for nil and when the host cannot make one; an empty
// dictionary gives an empty one.
REALdictionary NSDictionaryRB(NSDictionary *dictionary, HeldHandles &held);

// Autoreleased. Nil for null; an empty Dictionary, or one whose entries cannot be counted, gives an empty
// immutable dictionary. A key or value without a Cocoa form becomes NSNull.
NSDictionary *NewNSDictionary(REALdictionary dictionary, HeldHandles &held);
