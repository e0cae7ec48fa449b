// Numbers between the host and Cocoa: here from Cocoa.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// A new Variant of the host type that fits the number's own type, held; null when the host cannot make one.
REALobject NewVariantFromNumber(NSNumber *number, HeldHandles &held);
