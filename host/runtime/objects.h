// Objects and their classes.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/classes.h"
#include "host/interface/records.h"
#include "host/runtime/handle.h"
#include "host/value.h"

namespace host::runtime {

struct ObjectHandle;

// What an object of one of the host's own classes keeps; plug-ins reach it through entry points only.
struct Payload {
    virtual ~Payload() = default;
    virtual std::string describe() const { return {}; }
};

struct Property {
    std::string name;
    Passing type;
    std::function<Value(ObjectHandle &)> get;
    std::function<void(ObjectHandle &, const Value &)> set; // none: read only
};

// A class is never freed: plug-ins may keep references to it.
struct Class : ClassDescription {
    const Class *super = nullptr;
    const void *owner = nullptr; // the plug-in that registered it
    // The record as it came: a plug-in may have made its tables for this registration alone, and they stay the host's
    // when the plug-in registers the record again with others.
    interface::ClassRecord9 asRegistered = {};
    interface::ObjectFunction initialiser = nullptr;
    interface::ObjectFunction finaliser = nullptr;
    std::function<std::unique_ptr<Payload>()> makePayload;
    std::vector<Property> properties;

    int32_t instanceSize() const { return dataOffset + dataSize; }
    bool isKindOf(const Class &other) const; // by name, so that a class that was registered again is the same
};

struct ObjectHandle : Handle {
    explicit ObjectHandle(const Class &hostClass);
    std::string what() const override;
    void finalise() override;

    const Class &hostClass;
    std::unique_ptr<Payload> payload;

private:
    void checkHeader() const;
};

ObjectHandle *expectObject(const void *record, const char *user);

// The payload of an object; null when it keeps another or none.
template <class P>
P *payloadOf(const ObjectHandle *object)
{
    return object ? dynamic_cast<P *>(object->payload.get()) : nullptr;
}

template <class P>
P *payloadOf(const Value &value)
{
    return payloadOf<P>(value.isObject() ? static_cast<ObjectHandle *>(find(value.handle())) : nullptr);
}

// A new instance with one lock for the caller, its initialisers run, superclasses first.
ObjectHandle *newInstance(const Class &hostClass);

// The registry.
const Class *findClass(const std::string &name);
const std::vector<Class *> &allClasses(); // in the order of registration
// Takes the place of a class of the same name. Its superclass is looked up by its superName.
Class &addClass(std::unique_ptr<Class> newClass);
// One of the host's own classes, with a payload per instance.
Class &addOwnClass(const std::string &name, const std::string &superName,
                   std::function<std::unique_ptr<Payload>()> makePayload);
// Reads a plug-in's record, notes a fault for what cannot be read, and writes the offset of the data into it.
void registerRecord(interface::ClassRecord9 *record);
void forgetClasses(const std::function<bool(const Class &)> &isForgotten);

// Methods of host code: `body` becomes a C function of the declared type.
void addMethod(Class &hostClass, const char *declaration, HostMethod::Body body);
void addMethod(Class &hostClass, const char *declaration, void *function);
MethodDescription describeMethod(const HostMethod &method, bool isShared);

const Property *findProperty(const ObjectHandle &object, const std::string &name);

// In the class and its superclasses, subclasses first.
std::vector<const MethodDescription *> methodsNamed(const Class &hostClass, const std::string &name, bool isShared);

// The host's own classes, one function per file of this folder.
void addVariantClass();
void addDateClass();
void addDictionaryClass();
void addMemoryBlockClass();
void addFolderItemClass();
void addExceptionClasses();

} // namespace host::runtime
