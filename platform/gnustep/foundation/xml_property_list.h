#pragma once

#import <Foundation/Foundation.h>

namespace platform {

// The XML form as macOS writes it; autoreleased. Nil for what is no property list.
NSData *xmlPropertyList(id root);

// The property list in such data, immutable and autoreleased; nil for anything that macOS refuses, and with it the
// whole of the data.
id propertyListFromXML(NSData *data);

} // namespace platform
