// Of the runtime's functions, those that 10.4 has. What came with 10.5 (object_getClass, class_getName,
// class_getSuperclass and most others) must not be called: a strong import that a system lacks keeps the whole plug-in
// from loading there.
#pragma once

#include <objc/objc.h>

OBJC_EXPORT id objc_getClass(const char *name); // nil for a class that does not exist
OBJC_EXPORT id objc_lookUpClass(const char *name);
