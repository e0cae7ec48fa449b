// What a program declares: classes, methods, variables.
#include <algorithm>
#include <cctype>

#include "host/host.h"
#include "host/runtime/arrays.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"
#include "host/script/left_out.h"
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
        text += std::string(text.empty() ? "" : ", ") + (parameter.isOptional ? "Optional " : "") +
                (parameter.isByRef ? "ByRef " : "") + parameter.variable.name.text + " As " +
                nameOf(parameter.variable.type);
    text = name.text + "(" + text + ")";
    return isNothing(result) ? text : text + " As " + nameOf(result);
}

std::string Function::fullName() const
{
    return owner ? owner->name.text + "." + name.text : name.text;
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
    for (Enumeration &enumeration : program.enumerations)
        attempt([&] { declareEnumeration(enumeration); });
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
    for (const auto &[name, definition] : _symbols.classes)
        if (!before.classes.count(name))
            host::Host::shared().removeClass(name);
    _symbols = before;
    std::stable_sort(_problems.begin(), _problems.end(),
                     [](const Problem &a, const Problem &b) { return a.place.offset < b.place.offset; });
    throw ProblemsFound(std::move(_problems));
}

// --- Declarations --------------------------------------------------------------------------------------------------

Type Checker::resolve(const WrittenType &written)
{
    if (_symbols.enumerations.count(written.name.text))
        return typeNamed("Integer", written.isArray);
    std::string leftOut = leftOutMessage(LeftOutAt::Name, written.name.text);
    if (!leftOut.empty() && !isClass(written.name.text))
        fail(written.name.place, leftOut);
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

Type Checker::attemptedType(const WrittenType &written)
{
    Type type = nothing();
    attempt([&] { type = resolve(written); });
    return type;
}

// The type of one variable of a Dim with that type.
Type Checker::typeOf(const DimGroup::Item &item, const DimGroup &group, const Type &type)
{
    if (!item.isArray)
        return type;
    if (group.type.isArray)
        fail(item.variable.name.place, "there are no arrays of arrays");
    WrittenType array = group.type;
    array.isArray = true;
    return resolve(array);
}

void Checker::checkGroup(DimGroup &group, Type &type)
{
    if (!group.type.name.text.empty())
        type = resolve(group.type);
    else
        type = (needValue(*group.initial), group.initial->type);
    for (DimGroup::Item &item : group.items) {
        item.variable.type = typeOf(item, group, type);
        item.variable.isConstant = group.isConstant;
        if (item.upperBound)
            need(*item.upperBound, typeNamed("Integer"), "the upper bound");
        if (group.initial)
            need(*group.initial, item.variable.type, "\"" + item.variable.name.text + "\"");
    }
}

void Checker::needNewName(const Named &name)
{
    bool isKnown = !libraryFunctions(name.text).empty() || isLibraryOwner(name.text) ||
                   _symbols.functions.count(name.text) || _symbols.classes.count(name.text) ||
                   _symbols.enumerations.count(name.text);
    if (isKnown)
        fail(name.place, "there is a \"" + name.text + "\" already");
}

void Checker::declareEnumeration(Enumeration &enumeration)
{
    needNewName(enumeration.name);
    int32_t next = 0;
    for (Enumeration::Item &item : enumeration.items) {
        if (!item.value)
            item.value = std::make_unique<Expression>(Expression{item.name.place, {}, Literal{next}});
        need(*item.value, typeNamed("Integer"), "a value in an Enum");
        auto *unary = std::get_if<Unary>(&item.value->node);
        auto *literal = std::get_if<Literal>(unary ? &unary->operand->node : &item.value->node);
        if (!literal)
            fail(item.value->place, "a value in an Enum is written out");
        next = (unary ? -1 : 1) * literal->value.int32();
        item.value->node = Literal{next++};
    }
    _symbols.enumerations[enumeration.name.text] = &enumeration;
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
                unknownClass(*definition.superName);
            definition.super = _symbols.definitionOf(super);
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
    definition.slotCount = definition.super ? definition.super->slotCount : 0;
    for (ClassDefinition::FieldGroup &fields : definition.fieldGroups) {
        Type type = nothing();
        attempt([&] { checkGroup(fields.group, type); });
        for (DimGroup::Item &item : fields.group.items) {
            item.variable.isMistaken = isNothing(item.variable.type);
            if (findField(&definition, item.variable.name.text))
                fail(item.variable.name.place, "there is a \"" + item.variable.name.text + "\" already");
            bool isConstant = fields.group.isConstant;
            item.variable.storage = Storage::Field;
            if (!isConstant)
                item.variable.slot = definition.slotCount++;
            definition.fields.push_back(
                {&item, fields.access, &definition, isConstant ? fields.group.initial.get() : nullptr});
        }
    }
}

void Checker::declareFunction(Function &function)
{
    bool isTaken = function.owner
                       ? findMethod(function.owner, function.name.text) != &function &&
                             findMethod(function.owner, function.name.text)->owner == function.owner
                       : _symbols.functions.count(function.name.text) &&
                             _symbols.functions[function.name.text]->name.place.source == function.name.place.source;
    if (isTaken)
        fail(function.name.place, "there is a \"" + function.name.text +
                                      "\" already; overloaded methods are not part of this language here");
    if (!function.owner && (isClass(function.name.text) || _symbols.enumerations.count(function.name.text)))
        fail(function.name.place, "there is a \"" + function.name.text + "\" already");
    bool isBehindOptional = false;
    for (Function::Parameter &parameter : function.parameters) {
        parameter.variable.type = attemptedType(parameter.type);
        parameter.variable.isMistaken = isNothing(parameter.variable.type);
        function.isMistaken = function.isMistaken || parameter.variable.isMistaken;
        if (isBehindOptional && !parameter.isOptional)
            fail(parameter.variable.name.place, "behind an optional parameter all must be optional");
        isBehindOptional = parameter.isOptional;
        if (parameter.initial && !parameter.variable.isMistaken)
            need(*parameter.initial, parameter.variable.type, "\"" + parameter.variable.name.text + "\"");
    }
    function.result = function.writtenResult ? attemptedType(*function.writtenResult) : nothing();
    function.isMistaken = function.isMistaken || (function.writtenResult && isNothing(function.result));
    if (!function.owner)
        _symbols.functions[function.name.text] = &function;
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
        if (_symbols.functions.count(name) || _symbols.classes.count(name) || _symbols.enumerations.count(name))
            fail(variable.name.place, "there is a \"" + name + "\" already");
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
