// Values of Cocoa's small structures between NSValue and the host objects that stand for them. A host
// object of the geometric classes keeps the structure in its instance data, fields in Cocoa's order.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// A host object for a rectangle, size, range, point or time value, owned by the caller. Null for a value
// of any other type, and when the host or the family lacks the class.
REALobject NewVariantFromValue(NSValue *value);

// The value in a host object's instance data, autoreleased. Nothing is held for it.
id RectValueOf(REALobject object, HeldHandles &held);
id SizeValueOf(REALobject object, HeldHandles &held);
id RangeValueOf(REALobject object, HeldHandles &held);
id PointValueOf(REALobject object, HeldHandles &held);
