#pragma once

#include "platform/gnustep/core_foundation/url_text.h"

#import <Foundation/Foundation.h>

namespace platform {

// A URL object, owned by the caller; nil for no text. base may be nil.
NSURL *newURL(const std::optional<URLText> &text, NSURL *base);

// What such an object holds, without its base; of other subclasses of NSURL what their text says.
URLText textOfURL(NSURL *url);

} // namespace platform
