#include "host/script/host_members.h"

#include <algorithm>

#include "host/host.h"
#include "host/runtime/objects.h"
#include "host/runtime/variants.h"
#include "host/script/text_functions.h"

namespace script {

using host::MethodDescription;

namespace {

// Objects that properties give, which the host's list of properties leaves open.
struct ObjectProperty {
    const char *className;
    const char *name;
    const char *type;
};

const ObjectProperty kObjectProperties[] = {
    {"FolderItem", "Parent", "FolderItem"},
    {"Variant", "DateValue", "Date"},
    {"Variant", "ObjectValue", "Object"},
};

// Those that people use; all that the host has can be called.
const char *const kVariantMembers[] = {"BooleanValue", "ColorValue",  "CurrencyValue", "DateValue",
                                       "DoubleValue",  "Int64Value",  "IntegerValue",  "ObjectValue",
                                       "SingleValue",  "StringValue", "Type"};

// A property's type as the host tells it, without the class of an object.
Type plainType(host::Passing passing)
{
    return passing == host::Passing::Object ? classType("Object") : Type{"", passing, false};
}

size_t distance(const std::string &a, const std::string &b)
{
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); j++)
        row[j] = j;
    for (size_t i = 1; i <= a.size(); i++) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); j++) {
            size_t change = diagonal + (a[i - 1] != b[j - 1]);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, change});
        }
    }
    return row[b.size()];
}

} // namespace

std::optional<PropertyFacts> findProperty(const std::string &className, const std::string &name)
{
    Type type;
    for (const ObjectProperty &each : kObjectProperties)
        if (host::equalIgnoringCase(each.className, className) && host::equalIgnoringCase(each.name, name))
            type = classType(each.type);
    if (const host::runtime::VariantProperty *property =
            host::equalIgnoringCase(className, "Variant") ? host::runtime::findVariantProperty(name) : nullptr)
        return PropertyFacts{property->name, isNothing(type) ? plainType(property->type) : type, false};
    for (const host::runtime::Class *each = host::runtime::findClass(className); each; each = each->super)
        for (const host::runtime::Property &property : each->properties)
            if (host::equalIgnoringCase(property.name, name))
                return PropertyFacts{property.name, isNothing(type) ? plainType(property.type) : type,
                                     property.set != nullptr};
    return {};
}

std::vector<const MethodDescription *> methodsNamed(const std::string &className, const std::string &name,
                                                    bool isShared)
{
    const host::runtime::Class *found = host::runtime::findClass(className);
    return found ? host::runtime::methodsNamed(*found, name, isShared) : std::vector<const MethodDescription *>();
}

std::vector<std::string> memberNames(const std::string &className, bool isShared)
{
    std::vector<std::string> names;
    if (host::equalIgnoringCase(className, "Variant"))
        names.assign(std::begin(kVariantMembers), std::end(kVariantMembers));
    for (const host::runtime::Class *each = host::runtime::findClass(className); each; each = each->super) {
        for (const MethodDescription &method : isShared ? each->sharedMethods : each->methods)
            names.push_back(method.declaration.name);
        if (!isShared)
            for (const host::runtime::Property &property : each->properties)
                names.push_back(property.name);
    }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::vector<std::string> classNames()
{
    std::vector<std::string> names;
    for (const host::ClassDescription *each : host::Host::shared().classes())
        names.push_back(each->name);
    return names;
}

std::string suggestion(const std::string &name, const std::vector<std::string> &known)
{
    std::string closest;
    size_t least = name.size() < 3 ? 1 : name.size() / 3 + 1; // of a very short one, nothing but its case
    for (const std::string &each : known) {
        size_t far = distance(lowercase(name), lowercase(each));
        if (far < least) {
            least = far;
            closest = each;
        }
    }
    return closest.empty() ? "" : "; did you mean \"" + closest + "\"?";
}

std::string suggestedClass(const std::string &name, const std::vector<std::string> &known)
{
    const std::string hint = suggestion(name, known);
    const size_t front = name.size() - std::min<size_t>(name.size(), 3);
    if (hint.empty() && lowercase(name.substr(front)) == "ktz")
        return "; it belongs to a library of the plug-in's family that is not loaded";
    return hint;
}

} // namespace script
