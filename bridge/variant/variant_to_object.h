// Any host value as a Cocoa object.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// The Cocoa object that stands for a Variant, or for a host array in a Variant's place. Autoreleased,
// except that the object that a wrapper object carries is borrowed from it. Nil for null, for a Variant of
// nothing, and for a type that has no Cocoa form. An empty string gives an empty NSString. What Cocoa
// raises passes through to the caller's guard: an array with a null string, date or object raises, since
// Cocoa's arrays take no nil.
id GetVariantAsNSObject(REALobject variant, HeldHandles &held);
