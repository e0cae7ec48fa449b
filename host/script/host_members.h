// Members of the host's and the plug-ins' classes, and names that are close to a mistyped one.
#pragma once

#include <optional>

#include "host/script/types.h"

namespace script {

struct PropertyFacts {
    std::string name;
    Type type;
    bool canBeSet = false;
};

// Of the class, its superclasses, or "Variant".
std::optional<PropertyFacts> findProperty(const std::string &className, const std::string &name);
std::vector<const host::MethodDescription *> methodsNamed(const std::string &className, const std::string &name,
                                                          bool isShared);

// All of them by name, in alphabetical order; of a Variant those that people use.
std::vector<std::string> memberNames(const std::string &className, bool isShared);
std::vector<std::string> classNames();

// "; did you mean "x"?", or nothing when no known name is close.
std::string suggestion(const std::string &name, const std::vector<std::string> &known);

// The same for the name of a class or type; of one that is named as the plug-in's family names its own, where it
// belongs.
std::string suggestedClass(const std::string &name, const std::vector<std::string> &known = classNames());

} // namespace script
