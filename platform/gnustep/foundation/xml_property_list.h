#pragma once

#import <Foundation/Foundation.h>

namespace platform {

// The XML form of a property list as macOS writes it; autoreleased.
NSData *xmlPropertyList(id root);

// The property list in such data, immutable and autoreleased; nil for anything that macOS refuses, and with it the
// whole of the data.
id propertyListFromXML(NSData *data);

} // namespace platform
