// The `NSUserDefaults` object that an instance of the class carries, and what every member needs to ask it: the guard,
// and its keys as texts of Cocoa. Null and empty keys are not refused: Cocoa answers to them.
#pragma once

#include "bridge/exceptions/method_guard.h"
#include "bridge/strings/ns_string.h"
#include "hostapi/records.h"
#include "userdefaults/class_members.h"
#include "userdefaults/class_tables.h"

#include <Foundation/Foundation.h>

// The word of an instance that holds its NSUserDefaults object, retained once; nil while the instance is
// empty. The host says where it lies; standardUserDefaults, the finaliser and synchronize take the family's
// fixed place, which is the same.
inline NSUserDefaults **DefaultsWord(REALobject self, int32_t offset = userDefaultsClass.forSystemUse)
{
    return reinterpret_cast<NSUserDefaults **>(InstanceData(self, offset));
}

// Borrowed; may be nil, and a message to nil gives the neutral result. To be asked for when the arguments are
// converted: host code that a conversion calls may make the instance carry another object.
inline NSUserDefaults *defaultsOf(REALobject self)
{
    return *DefaultsWord(self);
}

// A guarded body with a key, or another name, as a text of Cocoa. It is converted inside the guard, and before the body
// asks for the carried object.
template <typename Body>
auto guardedWith(REALstring name, Body body)
{
    if constexpr (std::is_invocable_v<Body, NSString *, HeldHandles &>)
        return guarded([=](HeldHandles &held) { return body(TextOf(name), held); });
    else
        return guarded([=] { return body(TextOf(name)); });
}
