// What the tests of the class need of Objective-C.
#pragma once

#include "host/value.h"

#include <functional>
#include <string>

namespace cocoa {

// The defaults object that an instance carries; null for an empty one.
void *carriedBy(const host::Value &instance);

// The host object that the plug-in family's registry has for a Cocoa object; null when there is none.
const void *registeredCarrier(void *object);
int registeredCarriers();

// The name of the user of this process.
std::string currentUser();

void *standardUserDefaults();
int retainCount(void *object);
void release(void *object);

// An object, owned by the caller, that raises an NSException named "NSTestException" for "not released" when released;
// and how to release it.
void *newUnreleasableObject();
void releaseAllTheSame(void *unreleasable);

// An object, autoreleased, that calls `first` and raises an NSException named "NSTestException" for "not retained" when
// retained.
void *unretainableObject(std::function<void()> first);

// An object, owned by the caller, that calls `look` whenever it is released, before anything comes of it.
void *newObjectWithReleaseWatched(std::function<void()> look);

// A URL, autoreleased, that has no text.
void *textlessURL();

// Runs the body and gives the text that it threw as an Objective-C object, "" when it returned.
std::string objectThrownBy(const std::function<void()> &body);

// Makes a constant of Foundation nil, as on a system that lacks it, while it lives.
class AbsentConstant {
public:
    explicit AbsentConstant(const char *name);
    ~AbsentConstant();
    AbsentConstant(const AbsentConstant &) = delete;
    AbsentConstant &operator=(const AbsentConstant &) = delete;

private:
    void **_constant;
    void *_value;
};

} // namespace cocoa
