// What a program declares: classes, methods, variables.
#include <algorithm>
#include <cctype>

#include "host/host.h"
#include "host/runtime/arrays.h"
#include "host/script/builtins.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"
#include "host/script/objects.h"

namespace script {

bool IgnoringCase::operator()(const std::string &a, const std::string &b) const
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](unsigned char x, unsigned char y) { return tolower(x) < tolower(y); });
}

std::string Function::declaration() const
{
    std::string text;
    for (const Parameter &parameter : parameters)
        text += (text.empty() ? "" : ", ") + parameter.variable.name.text + " As " + nameOf(parameter.variable.type);
    text = name.text + "(" + text + ")";
    return isNothing(result) ? text : text + " As " + nameOf(result);
}

void Checker::attempt(const std::function<void()> &body)
{
    try {
        body();
    } catch (const ProblemsFound &found) {
        _problems.insert(_problems.end(), found.problems.begin(), found.problems.end());
    }
}

void Checker::check(Program &program)
{
    Symbols before = _symbols;
    declareClasses(program);
    for (Function &function : program.functions)
        attempt([&] { declareFunction(function); });
    _function = nullptr;
    _slots = &program.slots;
    _scopes.clear();
    checkBlock(program.statements);
    for (ClassDefinition &definition : program.classes)
        for (Function &method : definition.methods)
            attempt([&] { checkFunction(method); });
    for (Function &function : program.functions)
        attempt([&] { checkFunction(function); });
    if (_problems.empty())
        return;
    for (ClassDefinition &definition : program.classes)
        if (!before.classes.count(definition.name.text))
            host::Host::shared().removeClass(definition.name.text);
    _symbols = before;
    std::stable_sort(_problems.begin(), _problems.end(),
                     [](const Problem &a, const Problem &b) { return a.place.offset < b.place.offset; });
    throw ProblemsFound(std::move(_problems));
}

// --- Declarations --------------------------------------------------------------------------------------------------

Type Checker::resolve(const WrittenType &written)
{
    Type type = typeNamed(written.name.text, written.isArray);
    if (type.passing == host::Passing::Pointer)
        fail(written.name.place, "\"" + written.name.text + "\" cannot be the type of a variable");
    bool isKnown =
        type.passing != host::Passing::Object || isClass(type.name) || host::equalIgnoringCase(type.name, "Object");
    if (!isKnown) {
        std::vector<std::string> known = classNames();
        for (const char *name :
             {"Boolean", "Color", "Currency", "Double", "Int64", "Integer", "Single", "String", "Variant"})
            known.push_back(name);
        fail(written.name.place, "there is no type \"" + type.name + "\"" + suggestedClass(type.name, known));
    }
    bool hasElements = type.passing == host::Passing::Object || type.passing == host::Passing::Variant ||
                       host::runtime::elementTypeOf(type) != host::ElementType::Object;
    if (type.isArray && !hasElements)
        fail(written.name.place, "there are no arrays of " + nameOf(elementOf(type)));
    return type;
}

// The type of one variable of a Dim with that type.
Type Checker::typeOf(const Dim::Item &item, const Dim &dim, const Type &type)
{
    if (!item.isArray)
        return type;
    if (dim.type.isArray)
        fail(item.variable.name.place, "there are no arrays of arrays");
    WrittenType array = dim.type;
    array.isArray = true;
    return resolve(array);
}

void Checker::needNewName(const Named &name)
{
    bool isBuiltin = std::any_of(builtins().begin(), builtins().end(), [&](const Builtin &builtin) {
        return host::equalIgnoringCase(builtin.declaration.name, name.text);
    });
    if (isBuiltin || _symbols.functions.count(name.text) || _symbols.classes.count(name.text))
        fail(name.place, "there is a \"" + name.text + "\" already");
}

void Checker::declareClasses(Program &program)
{
    for (ClassDefinition &definition : program.classes) {
        attempt([&] {
            needNewName(definition.name);
            if (isClass(definition.name.text))
                fail(definition.name.place, "the host has a class \"" + definition.name.text + "\" already");
            std::string super = definition.superName ? definition.superName->text : "";
            if (!super.empty() && !isClass(super))
                fail(definition.superName->place, "there is no class \"" + super + "\"" + suggestedClass(super));
            definition.super = definitionOf(super);
            _symbols.classes[definition.name.text] = &definition;
            defineScriptClass(definition);
        });
    }
    for (ClassDefinition &definition : program.classes) {
        attempt([&] { checkFields(definition); });
        for (Function &method : definition.methods)
            attempt([&] { declareFunction(method); });
    }
}

void Checker::checkFields(ClassDefinition &definition)
{
    definition.firstField = definition.super ? definition.super->fieldCount() : 0;
    for (Statement &statement : definition.fieldStatements) {
        auto &dim = std::get<Dim>(statement.node);
        Type type = resolve(dim.type);
        for (Dim::Item &item : dim.items) {
            if (findField(&definition, item.variable.name.text))
                fail(item.variable.name.place, "there is a \"" + item.variable.name.text + "\" already");
            item.variable.type = typeOf(item, dim, type);
            item.variable.storage = Storage::Field;
            item.variable.slot = definition.fieldCount();
            definition.fields.push_back(&item);
            if (item.upperBound)
                need(*item.upperBound, typeNamed("Integer"), "the upper bound");
            if (dim.initial)
                need(*dim.initial, item.variable.type, "\"" + item.variable.name.text + "\"");
        }
    }
}

void Checker::declareFunction(Function &function)
{
    if (!function.owner)
        needNewName(function.name);
    for (Function::Parameter &parameter : function.parameters)
        parameter.variable.type = resolve(parameter.type);
    function.result = function.writtenResult ? resolve(*function.writtenResult) : nothing();
    if (!function.owner)
        _symbols.functions[function.name.text] = &function;
    else if (findMethod(function.owner, function.name.text) != &function &&
             findMethod(function.owner, function.name.text)->owner == function.owner)
        fail(function.name.place, "there is a \"" + function.name.text + "\" already");
}

void Checker::checkFunction(Function &function)
{
    _function = &function;
    _slots = &function.slots;
    _scopes.clear();
    _scopes.emplace_back();
    for (Function::Parameter &parameter : function.parameters)
        declare(parameter.variable, parameter.variable.type);
    checkBlock(function.body);
    _scopes.clear();
    _function = nullptr;
}

void Checker::declare(Variable &variable, const Type &type)
{
    variable.type = type;
    const std::string &name = variable.name.text;
    bool isGlobal = !_function && _scopes.size() <= 1;
    if (isGlobal) {
        needNewName(variable.name);
        auto known = _symbols.globals.find(name);
        if (known != _symbols.globals.end() && known->second.name.place.source == variable.name.place.source)
            fail(variable.name.place, "there is a variable \"" + name + "\" already");
        variable.storage = Storage::Global;
        variable.slot = _symbols.globalSlots++; // a new one: what knows the old variable keeps it
        _symbols.globals[name] = variable;
        return;
    }
    if (_scopes.back().count(name))
        fail(variable.name.place, "there is a variable \"" + name + "\" already");
    variable.storage = Storage::Local;
    variable.slot = (*_slots)++;
    _scopes.back()[name] = variable;
}

} // namespace script
