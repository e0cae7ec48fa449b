#include "host/runtime/entries/entries.h"

#include <algorithm>
#include <functional>

#include "host/runtime/calls.h"
#include "host/runtime/entry_points.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/ledger.h"
#include "host/runtime/objects.h"
#include "host/runtime/state.h"
#include "host/runtime/variants.h"

namespace host::runtime::entries {

namespace {

Creation creationOf(const Class &hostClass)
{
    if (hostClass.name == "Dictionary")
        return Creation::Dictionary;
    return hostClass.name == "MemoryBlock" ? Creation::MemoryBlock : Creation::Instance;
}

// An object, or an array in its place.
Handle *expectObjectOrArray(void *record, const char *user)
{
    Handle *handle = find(record);
    if (handle && handle->kind == HandleKind::Array)
        return handle;
    return expectObject(record, user);
}

bool isHidden(const Class &hostClass, const Declaration &method)
{
    const auto &hidden = state().hiddenMethods;
    return std::any_of(hidden.begin(), hidden.end(), [&](const auto &each) {
        return equalIgnoringCase(each.first, hostClass.name) && each.second.matches(method);
    });
}

bool isHidden(const std::string &className, const std::string &property)
{
    const auto &hidden = state().hiddenProperties;
    return std::any_of(hidden.begin(), hidden.end(), [&](const auto &each) {
        return equalIgnoringCase(each.first, className) && equalIgnoringCase(each.second, property);
    });
}

struct FoundProperty {
    const Property *own = nullptr;
    const VariantProperty *ofVariants = nullptr;
};

// A property of an object or an array by its name and type. Those of Variants serve every object.
FoundProperty findTyped(const Value &object, const char *name, Passing type)
{
    FoundProperty found;
    if (object.isNil() || !name)
        return found;
    if (object.isObject()) {
        found.own = findProperty(*static_cast<ObjectHandle *>(find(object.handle())), name);
        if (found.own && (found.own->type != type || isHidden(object.className(), name)))
            return {};
    }
    if (!found.own && !isHidden("Variant", name))
        found.ofVariants = findVariantProperty(name);
    if (found.ofVariants && found.ofVariants->type != type)
        found.ofVariants = nullptr;
    return found;
}

// 1 when there is a property of that name and type; `take` takes what goes to `result` out of its value.
template <class Result, class Take>
Byte readTyped(void *record, const char *name, Passing type, const char *user, Result *result, Take take)
{
    if (!expectObjectOrArray(record, user))
        return 0;
    FoundProperty found = findTyped(Value::borrowHandle(record), name, type);
    if (found.own)
        *result = std::invoke(take, found.own->get(*static_cast<ObjectHandle *>(find(record))));
    else if (found.ofVariants)
        *result = std::invoke(take, found.ofVariants->get(valueOfVariant(record)));
    return found.own || found.ofVariants;
}

Byte writeTyped(void *record, const char *name, Passing type, const Value &value, const char *user)
{
    ObjectHandle *object = expectObject(record, user);
    if (!object)
        return 0;
    FoundProperty found = findTyped(Value::borrowHandle(record), name, type);
    if (!found.own || !found.own->set)
        return 0;
    found.own->set(*object, value);
    return 1;
}

void registerPluginVersion(int32_t recordVersion)
{
    state().reportedRecordVersion = recordVersion;
}

double getRBVersion()
{
    return state().profile.versionNumber();
}

void raiseException(void *exception)
{
    if (ObjectHandle *object = expectObject(exception, "RuntimeRaiseException"))
        raiseObject(*object);
}

const Class *classReference(const char *className)
{
    return className ? findClass(className) : nullptr;
}

Byte objectIsA(void *object, const Class *hostClass)
{
    Handle *handle = expectObjectOrArray(object, "RuntimeObjectIsa");
    if (!handle || handle->kind != HandleKind::Object || !hostClass)
        return 0;
    return static_cast<ObjectHandle *>(handle)->hostClass.isKindOf(*hostClass);
}

void *loadObjectMethod(void *record, const char *declaration)
{
    Handle *handle = expectObjectOrArray(record, "REALLoadObjectMethod");
    if (!handle || handle->kind != HandleKind::Object || !declaration)
        return nullptr;
    std::optional<Declaration> wanted = wantedDeclaration(declaration, "REALLoadObjectMethod");
    const Class &hostClass = static_cast<ObjectHandle *>(handle)->hostClass;
    if (!wanted || isHidden(hostClass, *wanted))
        return nullptr;
    for (const MethodDescription *method : methodsNamed(hostClass, wanted->name, false)) {
        if (method->declaration.matches(*wanted))
            return method->function;
        if (method->setter && setterDeclaration(method->declaration).matches(*wanted))
            return method->setter;
    }
    return nullptr;
}

void *loadGlobalMethod(void *module, const char *declaration)
{
    // Methods of modules are looked up by another name; this host has none.
    return module || !declaration ? nullptr : lookUpGlobalMethod(declaration);
}

Byte getInt32Property(void *object, const char *name, int32_t *value)
{
    return readTyped(object, name, Passing::Int32, "REALGetPropValueInt", value, &Value::int32);
}

Byte getInt64Property(void *object, const char *name, int64_t *value)
{
    return readTyped(object, name, Passing::Int64, "REALGetPropValueInt64", value, &Value::int64);
}

Byte getSingleProperty(void *object, const char *name, float *value)
{
    return readTyped(object, name, Passing::Single, "REALGetPropValueSingle", value, &Value::single);
}

Byte getDoubleProperty(void *object, const char *name, double *value)
{
    return readTyped(object, name, Passing::Double, "REALGetPropValueDouble", value, &Value::number);
}

Byte getStringProperty(void *object, const char *name, void **value)
{
    return readTyped(object, name, Passing::String, "REALGetPropValueString", value, handOut);
}

Byte getObjectProperty(void *object, const char *name, void **value)
{
    return readTyped(object, name, Passing::Object, "REALGetPropValueObject", value, handOutVariant);
}

Byte setInt32Property(void *object, const char *name, int32_t value)
{
    return writeTyped(object, name, Passing::Int32, value, "REALSetPropValueInt");
}

} // namespace

void registerClass(interface::ClassRecord9 *record)
{
    registerRecord(record);
}

void *newInstance(const char *className)
{
    const Class *hostClass = className ? findClass(className) : nullptr;
    if (!hostClass || creationFails(creationOf(*hostClass)))
        return nullptr;
    return runtime::newInstance(*hostClass)->record;
}

void lockObject(void *object)
{
    if (Handle *handle = expectObjectOrArray(object, "REALLockObject"))
        lock(*handle);
}

void unlockObject(void *object)
{
    if (Handle *handle = expectObjectOrArray(object, "REALUnlockObject"))
        unlock(*handle);
}

Byte setStringProperty(void *object, const char *name, void *value)
{
    Value string =
        expect(value, HandleKind::String, "REALSetPropValueString") ? Value::borrowHandle(value) : Value::nullString();
    return writeTyped(object, name, Passing::String, string, "REALSetPropValueString");
}

EntryPoints objectEntryPoints()
{
    constexpr double kAnyNumber = 0.001; // offered by every host that has a version number at all
    return {
        entry<registerPluginVersion>("RegisterPluginVersion"),
        entry<getRBVersion>("REALGetRBVersion", kAnyNumber),
        entry<registerClass>("PluginRegisterClass"),

        entry<newInstance>("PluginNewInstance"),
        entry<lockObject>("REALLockObject"),
        entry<unlockObject>("REALUnlockObject"),
        entry<raiseException>("RuntimeRaiseException"),
        entry<classReference>("pluginObjectType"),
        entry<objectIsA>("RuntimeObjectIsa"),
        entry<loadObjectMethod>("REALLoadObjectMethod"),
        entry<loadGlobalMethod>("REALLoadGlobalMethod"),

        entry<getInt32Property>("REALGetPropValueInt"),
        entry<getInt64Property>("REALGetPropValueInt64"),
        entry<getSingleProperty>("REALGetPropValueSingle"),
        entry<getDoubleProperty>("REALGetPropValueDouble"),
        entry<getStringProperty>("REALGetPropValueString"),
        entry<getObjectProperty>("REALGetPropValueObject"),
        entry<setInt32Property>("REALSetPropValueInt"),
        entry<setStringProperty>("REALSetPropValueString"),
    };
}

} // namespace host::runtime::entries
