// Bytes between the host's MemoryBlock and NSData. Both ways copy: no memory is shared.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// The block's bytes, autoreleased. Nil for a null block, an empty one, and one whose bytes or size the
// host does not tell. The block is locked while it is read.
NSData *NewNSData(REALmemoryBlock block, HeldHandles &held);

// A new MemoryBlock, held. Null for nil and for empty data. Raises "OutOfMemoryException"
// in host code, and gives null, when the host cannot make a block of that size.
REALmemoryBlock NSDataRB(NSData *data, HeldHandles &held);
