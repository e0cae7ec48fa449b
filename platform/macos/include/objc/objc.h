// The types of the Objective-C runtime, as 32-bit macOS has them.
#pragma once

#include <stddef.h>
#include <stdint.h>

typedef signed char BOOL;
#define YES ((BOOL)1)
#define NO ((BOOL)0)

typedef struct objc_class *Class;
typedef struct objc_object {
    Class isa;
} * id;
typedef struct objc_selector *SEL;
typedef id (*IMP)(id, SEL, ...);

#define nil __null
#define Nil __null

#ifdef __cplusplus
#define OBJC_EXPORT extern "C"
#else
#define OBJC_EXPORT extern
#endif

OBJC_EXPORT const char *object_getClassName(id object);
OBJC_EXPORT SEL sel_registerName(const char *name);
