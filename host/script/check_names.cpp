// What names and members stand for.
#include "host/host.h"
#include "host/runtime/calls.h"
#include "host/script/builtins.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"

namespace script {

namespace {

using host::MethodDescription;

std::string quoted(const std::string &name)
{
    return "\"" + name + "\"";
}

bool isBareName(const Expression *expression)
{
    auto *use = expression ? std::get_if<Use>(&expression->node) : nullptr;
    return use && !use->base && !use->hasBrackets;
}

} // namespace

// --- Looking names up ----------------------------------------------------------------------------------------------

bool Checker::isClass(const std::string &name) const
{
    return host::Host::shared().findClass(name) != nullptr;
}

ClassDefinition *Checker::definitionOf(const std::string &className) const
{
    auto found = _symbols.classes.find(className);
    return found == _symbols.classes.end() ? nullptr : found->second;
}

const Variable *Checker::findLocal(const std::string &name) const
{
    for (auto scope = _scopes.rbegin(); scope != _scopes.rend(); ++scope) {
        auto found = scope->find(name);
        if (found != scope->end())
            return &found->second;
    }
    return nullptr;
}

const Variable *Checker::findField(const ClassDefinition *definition, const std::string &name) const
{
    for (; definition; definition = definition->super)
        for (const Dim::Item *field : definition->fields)
            if (host::equalIgnoringCase(field->variable.name.text, name))
                return &field->variable;
    return nullptr;
}

Function *Checker::findMethod(const ClassDefinition *definition, const std::string &name) const
{
    for (; definition; definition = definition->super)
        for (const Function &method : definition->methods)
            if (host::equalIgnoringCase(method.name.text, name))
                return const_cast<Function *>(&method);
    return nullptr;
}

void Checker::unknownName(const Named &name)
{
    std::vector<std::string> known;
    for (const Names<Variable> &scope : _scopes)
        for (const auto &[each, variable] : scope)
            known.push_back(each);
    for (const auto &[each, variable] : _symbols.globals)
        known.push_back(each);
    for (const auto &[each, function] : _symbols.functions)
        known.push_back(each);
    for (const Builtin &builtin : builtins())
        known.push_back(builtin.declaration.name);
    for (const std::string &each : classNames())
        known.push_back(each);
    fail(name.place, "there is nothing named " + quoted(name.text) + suggestion(name.text, known));
}

void Checker::unknownMember(const Named &name, const std::string &owner, const std::vector<std::string> &known)
{
    fail(name.place, owner + " has no member " + quoted(name.text) + suggestion(name.text, known));
}

// --- Names and members ---------------------------------------------------------------------------------------------

Type Checker::resolve(Use &use, Expression &expression, Expression *assigned)
{
    use.isElement = false;
    if (!use.base)
        return resolveBare(use, expression, assigned);
    if (isBareName(use.base.get())) {
        auto &base = std::get<Use>(use.base->node);
        bool isVariable = findLocal(base.name.text) || _symbols.globals.count(base.name.text) ||
                          (_function && findField(_function->owner, base.name.text));
        if (!isVariable && isClass(base.name.text)) {
            base.meaning = Meaning::ClassName;
            return resolveShared(use, base.name.text, assigned);
        }
    }
    Type type = check(*use.base);
    if (type.isArray)
        return resolveArrayMember(use, type, assigned);
    if (isVariant(type) || isObject(type))
        return resolveMember(use, type, assigned);
    fail(use.name.place, articleAndName(type) + " has no members");
}

Type Checker::resolveBare(Use &use, Expression &expression, Expression *assigned)
{
    const std::string &name = use.name.text;
    if (const Variable *local = findLocal(name))
        return variable(use, *local, assigned);
    if (ClassDefinition *owner = _function ? _function->owner : nullptr) {
        if (const Variable *field = findField(owner, name))
            return variable(use, *field, assigned);
        if (Function *method = findMethod(owner, name)) {
            return call(use, Meaning::ScriptCall, {candidateFor(*method)}, assigned);
        }
        if (findProperty(owner->name.text, name) || !methodsNamed(owner->name.text, name, false).empty()) {
            use.base = std::make_unique<Expression>(Expression{use.name.place, {}, SelfObject{}});
            return resolve(use, expression, assigned);
        }
    }
    auto global = _symbols.globals.find(name);
    if (global != _symbols.globals.end())
        return variable(use, global->second, assigned);
    auto function = _symbols.functions.find(name);
    if (function != _symbols.functions.end()) {
        return call(use, Meaning::ScriptCall, {candidateFor(*function->second)}, assigned);
    }
    std::vector<Candidate> candidates;
    for (const Builtin &builtin : builtins()) {
        const host::Declaration &declaration = builtin.declaration;
        if (host::equalIgnoringCase(declaration.name, name))
            candidates.push_back({declaration.name, declaration.parameters, declaration.result, builtin.text, nullptr,
                                  nullptr, &builtin});
    }
    if (!candidates.empty())
        return call(use, Meaning::BuiltinCall, candidates, assigned);
    if (!isClass(name))
        unknownName(use.name);
    if (use.arguments.size() != 1 || assigned)
        fail(use.name.place, quoted(name) + " is a class; New makes an object of it");
    use.meaning = Meaning::Cast;
    use.type = classType(name);
    Type given = check(*use.arguments.front());
    if (!fit(use.type, given) && !fit(given, use.type))
        fail(use.arguments.front()->place, articleAndName(given) + " is never " + articleAndName(use.type));
    return use.type;
}

Type Checker::variable(Use &use, const Variable &variable, Expression *assigned)
{
    use.meaning = Meaning::Variable;
    use.storage = variable.storage;
    use.slot = variable.slot;
    if (assigned && variable.isConstant)
        fail(use.name.place, quoted(variable.name.text) + " is a constant");
    return value(use, variable.type, assigned);
}

Type Checker::value(Use &use, const Type &type, Expression *assigned)
{
    use.type = type;
    use.isElement = use.hasBrackets;
    Type result = type;
    if (use.hasBrackets) {
        if (!type.isArray)
            fail(use.name.place, quoted(use.name.text) + " is " + articleAndName(type) + ", which takes no arguments");
        if (use.arguments.size() != 1)
            fail(use.name.place, quoted(use.name.text) + " takes one index");
        need(*use.arguments.front(), typeNamed("Integer"), "the index");
        result = elementOf(type);
    }
    if (assigned)
        need(*assigned, result, quoted(use.name.text));
    return result;
}

Type Checker::resolveShared(Use &use, const std::string &className, Expression *assigned)
{
    std::vector<Candidate> candidates;
    for (const MethodDescription *method : methodsNamed(className, use.name.text, true))
        candidates.push_back({method->declaration.name, method->declaration.parameters, method->declaration.result,
                              method->text, method});
    std::string owner = nameOf(classType(className));
    if (candidates.empty()) {
        if (!methodsNamed(className, use.name.text, false).empty())
            fail(use.name.place, quoted(use.name.text) + " is a method of " + owner + " objects, not of the class");
        unknownMember(use.name, "the class " + owner, memberNames(className, true));
    }
    return call(use, Meaning::SharedCall, candidates, assigned);
}

Type Checker::resolveArrayMember(Use &use, const Type &array, Expression *assigned)
{
    const ArrayMember *member = arrayMember(use.name.text);
    if (!member) {
        std::vector<std::string> known;
        for (const ArrayMember &each : arrayMembers())
            known.push_back(each.name);
        unknownMember(use.name, "an array", known);
    }
    Candidate candidate{member->name, {}, nothing(), std::string(member->name) + " of an array"};
    for (const char *parameter = member->parameters; *parameter; parameter++)
        candidate.parameters.push_back(
            {*parameter == 'i' ? "index" : "value", *parameter == 'i' ? typeNamed("Integer") : elementOf(array)});
    if (member->result != ' ')
        candidate.result = member->result == 'i' ? typeNamed("Integer") : elementOf(array);
    return call(use, Meaning::ArrayMember, {candidate}, assigned);
}

Type Checker::resolveMember(Use &use, const Type &object, Expression *assigned)
{
    std::string className = isVariant(object) ? "Variant" : object.name;
    ClassDefinition *definition = definitionOf(className);
    if (const Variable *field = findField(definition, use.name.text))
        return variable(use, *field, assigned);
    if (Function *method = findMethod(definition, use.name.text)) {
        return call(use, Meaning::ScriptCall, {candidateFor(*method)}, assigned);
    }
    std::string owner = nameOf(isVariant(object) ? object : classType(className));
    if (std::optional<PropertyFacts> property = findProperty(className, use.name.text)) {
        if (assigned && !property->canBeSet)
            fail(use.name.place, quoted(property->name) + " of " + owner + " can only be read");
        use.meaning = Meaning::HostProperty;
        return value(use, property->type, assigned);
    }
    std::vector<const MethodDescription *> methods = methodsNamed(className, use.name.text, false);
    std::vector<Candidate> candidates;
    for (const MethodDescription *method : methods) {
        bool isSetter = !method->declaration.assigns && method->setter && assigned;
        host::Declaration form = isSetter ? host::runtime::setterDeclaration(method->declaration) : method->declaration;
        if (isSetter || method->declaration.assigns == (assigned != nullptr))
            candidates.push_back({form.name, form.parameters, assigned ? nothing() : form.result, method->text, method,
                                  nullptr, nullptr, isSetter});
    }
    if (candidates.empty() && !methods.empty())
        fail(use.name.place,
             methods.front()->text + (assigned ? ": cannot be assigned to" : ": can only be assigned to"));
    if (candidates.empty()) {
        if (isVariant(object))
            fail(use.name.place,
                 "a Variant has no member " + quoted(use.name.text) + "; assign it to a variable of its class first");
        if (!methodsNamed(className, use.name.text, true).empty())
            fail(use.name.place, quoted(use.name.text) + " is a method of the class: " + owner + "." + use.name.text);
        std::vector<std::string> known = memberNames(className, false);
        for (const ClassDefinition *each = definition; each; each = each->super) {
            for (const Dim::Item *field : each->fields)
                known.push_back(field->variable.name.text);
            for (const Function &method : each->methods)
                known.push_back(method.name.text);
        }
        unknownMember(use.name, owner, known);
    }
    return call(use, Meaning::HostCall, candidates, assigned);
}

} // namespace script
