// Calls of methods by name, as host code makes them.
#include "host/host.h"

#include <algorithm>
#include <utility>

#include "host/runtime/calls.h"
#include "host/runtime/entry_points.h"
#include "host/runtime/exceptions.h"
#include "host/runtime/objects.h"
#include "host/runtime/overloads.h"
#include "host/runtime/state.h"

namespace host {

using namespace runtime;

namespace {

// A call may run in the middle of another, from a method of host code that a plug-in called: each delivers what was
// raised while it ran.
template <class Body>
Outcome collecting(Body body)
{
    PendingScope pending;
    Outcome outcome;
    outcome.result = body();
    outcome.raised = pending.take();
    return outcome;
}

Value delivered(Outcome outcome)
{
    if (!outcome.raised.empty())
        throw Exception(std::move(outcome.raised));
    return outcome.result;
}

const Class &needClass(const std::string &name)
{
    const Class *found = runtime::findClass(name);
    if (!found)
        throw CallError("there is no class " + name);
    return *found;
}

const Class &classOf(const Value &object)
{
    if (!object.isObject())
        throw CallError("only objects have methods; this is " + object.typeName());
    return static_cast<ObjectHandle *>(find(object.handle()))->hostClass;
}

// Without those that are declared for assignments.
std::vector<const MethodDescription *> callable(std::vector<const MethodDescription *> methods)
{
    methods.erase(std::remove_if(methods.begin(), methods.end(),
                                 [](const MethodDescription *method) { return method->declaration.assigns; }),
                  methods.end());
    return methods;
}

// The two ways in which a method takes an assignment, as methods of their own: a method declared with Assigns, and a
// getter with a setter.
std::vector<MethodDescription> assignable(const std::vector<const MethodDescription *> &methods)
{
    std::vector<MethodDescription> forms;
    for (const MethodDescription *method : methods) {
        if (method->declaration.assigns)
            forms.push_back(*method);
        else if (method->setter)
            forms.push_back(
                {method->text, setterDeclaration(method->declaration), method->setter, nullptr, method->flags});
    }
    return forms;
}

Outcome invokeChecked(void *function, const Declaration &declaration, const Value &self, const Arguments &arguments)
{
    checkArguments(declaration, arguments);
    return collecting([&] { return callFunction(function, declaration, self, arguments); });
}

} // namespace

Outcome Host::tryNewObject(const std::string &className, const Arguments &arguments)
{
    const Class &hostClass = needClass(className);
    auto constructors = methodsNamed(hostClass, "Constructor", false);
    bool takesNone = std::any_of(constructors.begin(), constructors.end(), [](const MethodDescription *constructor) {
        return constructor->declaration.parameters.empty();
    });
    const MethodDescription *constructor = nullptr;
    if (!arguments.empty() || takesNone)
        constructor = &chooseOverload(constructors, arguments, "constructor of " + className + " with these arguments");
    return collecting([&] {
        Value object = Value::adoptHandle(runtime::newInstance(hostClass)->record);
        if (constructor)
            callFunction(constructor->function, constructor->declaration, object, arguments);
        return object;
    });
}

Value Host::newObject(const std::string &className, const Arguments &arguments)
{
    return delivered(tryNewObject(className, arguments));
}

Value Host::newInstance(const std::string &className)
{
    const Class &hostClass = needClass(className);
    return delivered(collecting([&] { return Value::adoptHandle(runtime::newInstance(hostClass)->record); }));
}

Outcome Host::invoke(const MethodDescription &method, const Value &self, const Arguments &arguments)
{
    return invokeChecked(method.function, method.declaration, self, arguments);
}

Outcome Host::invokeSetter(const MethodDescription &method, const Value &self, const Arguments &arguments)
{
    if (!method.setter)
        throw CallError(method.declaration.text() + ": cannot be assigned to");
    return invokeChecked(method.setter, setterDeclaration(method.declaration), self, arguments);
}

Outcome Host::tryCall(const Value &object, const std::string &method, const Arguments &arguments)
{
    const Class &hostClass = classOf(object);
    return invoke(chooseOverload(callable(methodsNamed(hostClass, method, false)), arguments,
                                 "method " + method + " in the class " + hostClass.name),
                  object, arguments);
}

Outcome Host::tryCallShared(const std::string &className, const std::string &method, const Arguments &arguments)
{
    const Class &hostClass = needClass(className);
    return invoke(chooseOverload(callable(methodsNamed(hostClass, method, true)), arguments,
                                 "shared method " + method + " in the class " + hostClass.name),
                  Value(), arguments);
}

Outcome Host::tryAssign(const Value &object, const std::string &method, const Arguments &arguments, const Value &value)
{
    const Class &hostClass = classOf(object);
    auto methods = methodsNamed(hostClass, method, false);
    std::vector<MethodDescription> forms = assignable(methods);
    if (!methods.empty() && forms.empty())
        throw CallError(methods.front()->declaration.text() + ": cannot be assigned to");
    std::vector<const MethodDescription *> candidates;
    for (const MethodDescription &form : forms)
        candidates.push_back(&form);
    Arguments all = arguments;
    all.push_back(value);
    return invoke(chooseOverload(candidates, all, "method " + method + " in the class " + hostClass.name), object, all);
}

Value Host::call(const Value &object, const std::string &method, const Arguments &arguments)
{
    return delivered(tryCall(object, method, arguments));
}

Value Host::callShared(const std::string &className, const std::string &method, const Arguments &arguments)
{
    return delivered(tryCallShared(className, method, arguments));
}

void Host::assign(const Value &object, const std::string &method, const Arguments &arguments, const Value &value)
{
    delivered(tryAssign(object, method, arguments, value));
}

Value Host::callGlobal(const std::string &method, const Arguments &arguments)
{
    std::string name = parseDeclaration(method).name;
    std::vector<MethodDescription> methods;
    for (const EntryPoint *point : runtime::entryPoints())
        if (point->declaration && equalIgnoringCase(point->name, name))
            methods.push_back(describeMethod({point->declaration, nullptr, point->entry}, true));
    std::vector<const MethodDescription *> candidates;
    for (const MethodDescription &each : methods)
        candidates.push_back(&each);
    return delivered(invoke(chooseOverload(candidates, arguments, "method " + name), Value(), arguments));
}

std::vector<RaisedException> Host::takePendingExceptions()
{
    return std::exchange(state().pending, {});
}

void Host::raise(const std::string &className, const std::string &message, int32_t errorNumber)
{
    runtime::raiseException(className, message, errorNumber);
}

} // namespace host
