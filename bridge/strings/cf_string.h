// Text between the host and Cocoa. An NSString is a CFString: the same object under two names.
#pragma once

#include "hostapi/types.h"

#include <CoreFoundation/CoreFoundation.h>

class HeldHandles;

// The text of a host string as a CFString that the caller owns. Null for a null string, and when neither
// the host nor Core Foundation can make one of its bytes. The host's own conversion comes first; without
// it the bytes are read in the string's encoding (MacRoman when the host does not know it), 8-bit text up
// to its first zero byte. Raises nothing.
CFStringRef RBString2CFString(REALstring string);

// The text as a new UTF-8 host string, held (one lock), up to its first U+0000. Null for
// null and for an empty text: callers take null as no text. What REALBuildUnicodeString raises passes on.
REALstring CFString2RBString(CFStringRef text, HeldHandles &held);
