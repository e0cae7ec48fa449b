#pragma once

#include <objc/objc.h>
#include <objc/runtime.h>

#define FOUNDATION_EXPORT OBJC_EXPORT

typedef int NSInteger;
typedef unsigned int NSUInteger;
typedef double NSTimeInterval;
typedef unsigned short unichar;
typedef float CGFloat;

@class NSString;

FOUNDATION_EXPORT void NSLog(NSString *format, ...);
