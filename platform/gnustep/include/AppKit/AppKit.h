// AppKit as macOS has it: GNUstep's, Foundation with its additions, and the start-up call that GNUstep lacks.
#pragma once
#pragma GCC system_header

#include <Foundation/Foundation.h>

#include_next <AppKit/AppKit.h>

#include <CoreServices/CoreServices.h>
#include <CoreText/CoreText.h>

#ifdef __cplusplus
extern "C"
#endif
    BOOL
    NSApplicationLoad(void); // makes AppKit usable in a process that is no application; YES when it is
