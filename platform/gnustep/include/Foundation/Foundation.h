// Foundation as macOS has it: GNUstep's, Core Foundation, and the methods of NSUserDefaults that GNUstep lacks.
#pragma once
#pragma GCC system_header

#include_next <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>
#include <Foundation/NSUserDefaultsMacOS.h>
