#include "host/runtime/entries/entries.h"

#include <algorithm>

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

bool readTyped(void *record, const char *name, Passing type, Value &value, const char *user)
{
    if (!expectObjectOrArray(record, user))
        return false;
    Value object = Value::borrowHandle(record);
    FoundProperty found = findTyped(object, name, type);
    if (found.own)
        value = found.own->get(*static_cast<ObjectHandle *>(find(record)));
    else if (found.ofVariants)
        value = found.ofVariants->get(valueOfVariant(record));
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

} // namespace

void registerPluginVersion(int32_t recordVersion)
{
    state().reportedRecordVersion = recordVersion;
}

double getRBVersion()
{
    return state().profile.versionNumber();
}

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
    Declaration wanted;
    try {
        wanted = parseDeclaration(declaration);
    } catch (const DeclarationError &error) {
        noteFault(std::string("REALLoadObjectMethod: ") + error.what());
        return nullptr;
    }
    const Class &hostClass = static_cast<ObjectHandle *>(handle)->hostClass;
    if (isHidden(hostClass, wanted))
        return nullptr;
    for (const MethodDescription *method : methodsNamed(hostClass, wanted.name, false)) {
        if (method->declaration.matches(wanted))
            return method->function;
        if (method->setter && setterDeclaration(method->declaration).matches(wanted))
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
    Value read;
    if (!readTyped(object, name, Passing::Int32, read, "REALGetPropValueInt"))
        return 0;
    *value = read.int32();
    return 1;
}

Byte getInt64Property(void *object, const char *name, int64_t *value)
{
    Value read;
    if (!readTyped(object, name, Passing::Int64, read, "REALGetPropValueInt64"))
        return 0;
    *value = read.int64();
    return 1;
}

Byte getSingleProperty(void *object, const char *name, float *value)
{
    Value read;
    if (!readTyped(object, name, Passing::Single, read, "REALGetPropValueSingle"))
        return 0;
    *value = read.single();
    return 1;
}

Byte getDoubleProperty(void *object, const char *name, double *value)
{
    Value read;
    if (!readTyped(object, name, Passing::Double, read, "REALGetPropValueDouble"))
        return 0;
    *value = read.number();
    return 1;
}

Byte getStringProperty(void *object, const char *name, void **value)
{
    Value read;
    if (!readTyped(object, name, Passing::String, read, "REALGetPropValueString"))
        return 0;
    *value = read.handle();
    if (*value)
        lock(*find(*value));
    return 1;
}

Byte getObjectProperty(void *object, const char *name, void **value)
{
    Value read;
    if (!readTyped(object, name, Passing::Object, read, "REALGetPropValueObject"))
        return 0;
    *value = handOut(read);
    return 1;
}

Byte setInt32Property(void *object, const char *name, int32_t value)
{
    return writeTyped(object, name, Passing::Int32, value, "REALSetPropValueInt");
}

Byte setStringProperty(void *object, const char *name, void *value)
{
    Value string =
        expect(value, HandleKind::String, "REALSetPropValueString") ? Value::borrowHandle(value) : Value::nullString();
    return writeTyped(object, name, Passing::String, string, "REALSetPropValueString");
}

} // namespace host::runtime::entries
