// Any Cocoa object as a host value.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// The host value that stands for `value`: a Variant, array, Date, MemoryBlock, FolderItem, Dictionary or
// wrapper object. It carries one lock and is held. Null for nil, for NSNull, and where the host
// or the family lacks what the value's kind needs: the first kind that fits decides, even when its
// conversion fails. What Cocoa raises passes through to the caller's guard. A collection that contains
// itself is converted without end.
REALobject NewVariantFromNSObject(id value, HeldHandles &held);

// Inserts each object as a host value into a host array, from index 0 on, null values too. Nothing happens
// when either is null.
void FillObjectArray(REALarray array, NSArray *objects, HeldHandles &held);
