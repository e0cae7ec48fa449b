// Everything that a plug-in can ask for by name.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/declaration.h"

namespace host::runtime {

// One entry point. Its calls go through a function that counts them and looks here first.
struct EntryPoint {
    const char *name = nullptr;
    const char *declaration = nullptr; // of a global method
    double since = 0;                  // the first host version that offers it
    void *entry = nullptr;             // what a look-up answers

    bool hidden = false;
    void *replacement = nullptr;
    std::function<void()> observer;
    long lookups = 0;
    long calls = 0;

    bool isOffered() const; // by the profile, and not hidden
    void *lookUp();         // the entry, if it is offered; counted
};

const std::vector<EntryPoint *> &entryPoints();
EntryPoint &entryPointNamed(const std::string &name); // CallError for an unknown name

// What plug-ins are handed: entry points only.
void *lookUp(const char *name);
void *lookUpGlobalMethod(const char *declaration);

// What a plug-in asks `user` for; a fault is noted for a text that is no declaration.
std::optional<Declaration> wantedDeclaration(const char *text, const char *user);

} // namespace host::runtime
