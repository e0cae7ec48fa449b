// Arrays of strings between the host and Cocoa.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// Appends the strings to a host string array, from index 0 on, in their order; an empty string becomes a
// null entry. Nothing happens when either is null. The elements are taken to be strings without a test:
// what Cocoa raises about one that is none passes through, and leaves the array filled up to there.
void FillStringArray(REALarray array, NSArray *strings, HeldHandles &held);
