#include "host/runtime/objects.h"

#include <algorithm>

#include "host/runtime/calls.h"
#include "host/runtime/ledger.h"
#include "host/runtime/state.h"

namespace host::runtime {

namespace {

using interface::ClassRecord9;
using interface::MethodRecord;
using interface::MethodRecord9;

struct Registry {
    std::vector<Class *> classes; // those that can be found by name
    std::vector<std::unique_ptr<Class>> ever;
};

Registry &registry()
{
    static Registry *registry = new Registry;
    return *registry;
}

// The rows of a method table: 4 words each in record version 9, 6 words later.
std::vector<MethodDescription> readMethods(const Class &owner, const void *table, int32_t count)
{
    std::vector<MethodDescription> methods;
    if (!table)
        return methods;
    size_t rowSize =
        owner.recordVersion <= interface::kOldestRecordVersion ? sizeof(MethodRecord9) : sizeof(MethodRecord);
    for (int32_t i = 0; i < count; ++i) {
        auto *row = reinterpret_cast<const MethodRecord9 *>(static_cast<const char *>(table) + i * rowSize);
        if (!row->declaration) {
            noteFault(owner.name + ": method " + std::to_string(i) + " has no declaration");
            continue;
        }
        try {
            methods.push_back({row->declaration, parseDeclaration(row->declaration), row->function, row->setterFunction,
                               row->mFlags});
        } catch (const DeclarationError &error) {
            noteFault(owner.name + ": method " + std::to_string(i) + ": " + error.what());
        }
    }
    return methods;
}

} // namespace

bool Class::isKindOf(const Class &other) const
{
    for (const Class *each = this; each; each = each->super)
        if (each == &other || equalIgnoringCase(each->name, other.name))
            return true;
    return false;
}

ObjectHandle::ObjectHandle(const Class &hostClass)
    : Handle(HandleKind::Object, hostClass.instanceSize()), hostClass(hostClass)
{
    auto *header = static_cast<interface::ObjectHeader *>(record);
    header->mark = interface::kObjectMark;
    header->hostClass = const_cast<Class *>(&hostClass);
    for (const Class *each = &hostClass; each && !payload; each = each->super)
        if (each->makePayload)
            payload = each->makePayload();
}

std::string ObjectHandle::what() const
{
    std::string details = payload ? payload->describe() : "";
    return details.empty() ? hostClass.name : hostClass.name + " " + details;
}

void ObjectHandle::finalise()
{
    for (const Class *each = &hostClass; each; each = each->super)
        if (each->finaliser)
            each->finaliser(record);
    checkHeader();
}

void ObjectHandle::checkHeader() const
{
    auto *header = static_cast<const interface::ObjectHeader *>(record);
    bool untouched =
        header->mark == interface::kObjectMark && header->hostClass == &hostClass &&
        std::all_of(std::begin(header->reserved), std::end(header->reserved), [](uint32_t word) { return word == 0; });
    if (!untouched)
        noteFault("the header was written over: " + hostClass.name);
}

ObjectHandle *expectObject(const void *record, const char *user)
{
    return static_cast<ObjectHandle *>(expect(record, HandleKind::Object, user));
}

ObjectHandle *newInstance(const Class &hostClass)
{
    auto *object = new ObjectHandle(hostClass);
    std::vector<const Class *> chain;
    for (const Class *each = &hostClass; each; each = each->super)
        chain.push_back(each);
    for (auto each = chain.rbegin(); each != chain.rend(); ++each)
        if ((*each)->initialiser)
            (*each)->initialiser(object->record);
    return object;
}

const Class *findClass(const std::string &name)
{
    for (const Class *each : registry().classes)
        if (equalIgnoringCase(each->name, name))
            return each;
    return nullptr;
}

const std::vector<Class *> &allClasses()
{
    return registry().classes;
}

Class &addClass(std::unique_ptr<Class> newClass)
{
    Class &added = *newClass;
    if (!added.superName.empty()) {
        added.super = findClass(added.superName);
        if (!added.super)
            noteFault(added.name + ": there is no superclass " + added.superName);
    }
    added.dataOffset = added.super ? added.super->instanceSize() : interface::kInstanceDataOffset;
    auto &classes = registry().classes;
    auto same = std::find_if(classes.begin(), classes.end(),
                             [&](const Class *each) { return equalIgnoringCase(each->name, added.name); });
    if (same == classes.end())
        classes.push_back(&added);
    else
        *same = &added;
    registry().ever.push_back(std::move(newClass));
    return added;
}

Class &addOwnClass(const std::string &name, const std::string &superName,
                   std::function<std::unique_ptr<Payload>()> makePayload)
{
    auto own = std::make_unique<Class>();
    own->name = name;
    own->superName = superName;
    own->makePayload = std::move(makePayload);
    return addClass(std::move(own));
}

void registerRecord(ClassRecord9 *record)
{
    if (!record || !record->name) {
        noteFault("PluginRegisterClass: no class record, or one without a name");
        return;
    }
    if (record->version < interface::kOldestRecordVersion || record->version > interface::kNewestRecordVersion) {
        noteFault("PluginRegisterClass: " + std::string(record->name) + " has record version " +
                  std::to_string(record->version) + ", which this host cannot read");
        return;
    }
    auto registered = std::make_unique<Class>();
    registered->name = record->name;
    registered->superName = record->superName ? record->superName : "";
    registered->fromPlugin = true;
    registered->owner = state().startingPlugin;
    registered->recordVersion = record->version;
    registered->dataSize = record->dataSize;
    registered->flags = record->mFlags;
    registered->record = record;
    registered->asRegistered = *record;
    registered->initialiser = record->constructor;
    registered->finaliser = record->destructor;
    registered->methods = readMethods(*registered, record->methods, record->methodCount);
    registered->sharedMethods = readMethods(*registered, record->sharedMethods, record->sharedMethodCount);
    record->forSystemUse = addClass(std::move(registered)).dataOffset;
}

void forgetClasses(const std::function<bool(const Class &)> &isForgotten)
{
    auto &classes = registry().classes;
    classes.erase(std::remove_if(classes.begin(), classes.end(), [&](const Class *each) { return isForgotten(*each); }),
                  classes.end());
}

void addMethod(Class &hostClass, const char *declaration, HostMethod::Body body)
{
    hostClass.methods.push_back(describeMethod({declaration, std::move(body), nullptr}, false));
}

void addMethod(Class &hostClass, const char *declaration, void *function)
{
    hostClass.methods.push_back(describeMethod({declaration, nullptr, function}, false));
}

MethodDescription describeMethod(const HostMethod &method, bool isShared)
{
    MethodDescription description;
    description.text = method.declaration;
    description.declaration = parseDeclaration(method.declaration);
    description.function =
        method.function ? method.function : functionFor(description.declaration, isShared, method.body);
    return description;
}

const Property *findProperty(const ObjectHandle &object, const std::string &name)
{
    for (const Class *each = &object.hostClass; each; each = each->super)
        for (const Property &property : each->properties)
            if (equalIgnoringCase(property.name, name))
                return &property;
    return nullptr;
}

std::vector<const MethodDescription *> methodsNamed(const Class &hostClass, const std::string &name, bool isShared)
{
    std::vector<const MethodDescription *> found;
    for (const Class *each = &hostClass; each; each = each->super)
        for (const MethodDescription &method : isShared ? each->sharedMethods : each->methods)
            if (equalIgnoringCase(method.declaration.name, name))
                found.push_back(&method);
    return found;
}

} // namespace host::runtime
