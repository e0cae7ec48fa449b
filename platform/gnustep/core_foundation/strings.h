#pragma once

#include "platform/gnustep/core_foundation/text_encoding.h"

#import <Foundation/Foundation.h>

namespace platform {

// A string, owned by the caller, of exactly these units: NSString by itself drops a leading byte order mark, swaps the
// units behind U+FFFE and refuses half a surrogate pair.
NSString *newString(const UniChar *units, size_t length);

Units unitsOf(NSString *string);

Units normalized(const Units &text, CFStringNormalizationForm form);

} // namespace platform
