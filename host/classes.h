// Classes of the running application: what plug-ins registered, what host code defined, what the host brings along.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/declaration.h"
#include "host/value.h"

namespace host {

// A method as registered.
struct MethodDescription {
    std::string text; // the declaration exactly as the plug-in wrote it
    Declaration declaration;
    void *function = nullptr; // C function (object, arguments...) or, when shared, (arguments...)
    void *setter = nullptr;   // C function (object, arguments..., value); null when it cannot be assigned to
    int32_t flags = 0;
};

struct ClassDescription {
    std::string name;
    std::string superName; // empty: none
    bool fromPlugin = false;
    int32_t recordVersion = 0; // as the record says; 0 for the host's own classes
    int32_t dataSize = 0;
    int32_t dataOffset = 0; // from the start of an object
    int32_t flags = 0;
    const void *record = nullptr; // the plug-in's class record, which the host goes on reading in place
    std::vector<MethodDescription> methods;
    std::vector<MethodDescription> sharedMethods;
};

// A property of one of the host's own classes.
struct PropertyDescription {
    std::string name;
    bool canBeSet = false;
};

// For classes defined by host code. A method is either a C function with the declared types or a body in C++.
struct HostMethod {
    using Body = std::function<Value(const Value &self, const Arguments &arguments)>;
    std::string declaration;
    Body body;
    void *function = nullptr;
};

struct HostClass {
    std::string name;
    std::string superName; // may be a plug-in's class; its instance data stays at its place
    int32_t dataSize = 0;
    std::vector<HostMethod> methods;
    std::vector<HostMethod> sharedMethods;
    void (*initialiser)(void *object) = nullptr; // run for every new instance, superclasses first
    void (*finaliser)(void *object) = nullptr;   // run when an instance dies, subclasses first
};

} // namespace host
