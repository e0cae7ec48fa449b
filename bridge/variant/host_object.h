// Host objects as Cocoa objects.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// The Cocoa object that stands for a host object: data, a file URL or a dictionary for the host's own
// classes, the carried object (borrowed) for a wrapper, an NSValue for the family's values, and for every
// other object one that wraps it, so that it comes back unchanged. Nil when the family cannot wrap it.
id ObjectOfHostObject(REALobject object, HeldHandles &held);
