// Dates between the host's Date and Cocoa: wall-clock time in the process's local time zone. The host
// Date's own time zone is not read, and fractions of a second are lost.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// Autoreleased. Nil for null and when a part of the date cannot be read.
NSCalendarDate *NewNSDate(REALdate date);

// A new host Date, held; null when the host cannot make one. `date` is not nil.
REALobject NewHostDate(NSDate *date, HeldHandles &held);
