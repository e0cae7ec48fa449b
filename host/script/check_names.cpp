// What names and members stand for, and which method a call means.
#include <algorithm>

#include "host/host.h"
#include "host/runtime/calls.h"
#include "host/runtime/objects.h"
#include "host/runtime/variants.h"
#include "host/script/builtins.h"
#include "host/script/checker.h"
#include "host/script/text_functions.h"

namespace script {

namespace {

using host::ClassDescription;
using host::MethodDescription;

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

struct PropertyFacts {
    std::string name;
    Type type;
    bool canBeSet = false;
};

// A property's type as the host tells it, without the class of an object.
Type plainType(host::Passing passing)
{
    return passing == host::Passing::Object ? classType("Object") : Type{"", passing, false};
}

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

std::string quoted(const std::string &name)
{
    return "\"" + name + "\"";
}

std::string countText(size_t count)
{
    return count == 0 ? "no arguments" : count == 1 ? "1 argument" : std::to_string(count) + " arguments";
}

bool isBareName(const Expression *expression)
{
    auto *use = expression ? std::get_if<Use>(&expression->node) : nullptr;
    return use && !use->base && !use->hasBrackets;
}

} // namespace

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

std::string closestName(const std::string &name, const std::vector<std::string> &known)
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
    return closest;
}

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
    for (const ClassDescription *each : host::Host::shared().classes())
        known.push_back(each->name);
    std::string closest = closestName(name.text, known);
    fail(name.place, "there is nothing named " + quoted(name.text) +
                         (closest.empty() ? "" : "; did you mean " + quoted(closest) + "?"));
}

void Checker::unknownMember(const Named &name, const std::string &owner, const std::vector<std::string> &known)
{
    std::string closest = closestName(name.text, known);
    fail(name.place, owner + " has no member " + quoted(name.text) +
                         (closest.empty() ? "" : "; did you mean " + quoted(closest) + "?"));
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
            Candidate candidate{method->name.text, {}, method->result, method->declaration(), nullptr, method};
            for (const Function::Parameter &parameter : method->parameters)
                candidate.parameters.push_back({parameter.variable.name.text, parameter.variable.type});
            return call(use, Meaning::ScriptCall, {candidate}, assigned);
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
        const Function &found = *function->second;
        Candidate candidate{found.name.text, {}, found.result, found.declaration(), nullptr, &found};
        for (const Function::Parameter &parameter : found.parameters)
            candidate.parameters.push_back({parameter.variable.name.text, parameter.variable.type});
        return call(use, Meaning::ScriptCall, {candidate}, assigned);
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
    use.slot = size_t(member->operation);
    return call(use, Meaning::ArrayMember, {candidate}, assigned);
}

Type Checker::resolveMember(Use &use, const Type &object, Expression *assigned)
{
    std::string className = isVariant(object) ? "Variant" : object.name;
    ClassDefinition *definition = definitionOf(className);
    if (const Variable *field = findField(definition, use.name.text))
        return variable(use, *field, assigned);
    if (Function *method = findMethod(definition, use.name.text)) {
        Candidate candidate{method->name.text, {}, method->result, method->declaration(), nullptr, method};
        for (const Function::Parameter &parameter : method->parameters)
            candidate.parameters.push_back({parameter.variable.name.text, parameter.variable.type});
        return call(use, Meaning::ScriptCall, {candidate}, assigned);
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

// --- Calls ---------------------------------------------------------------------------------------------------------

// How well an argument fits; an Array(…) takes the type that is wanted of it.
int Checker::fitOf(const Expression &expression, const Type &declared)
{
    auto *array = std::get_if<ArrayLiteral>(&expression.node);
    if (!array || !declared.isArray)
        return fit(declared, expression.type);
    int least = 2;
    for (const ExpressionPtr &element : array->elements)
        least = std::min(least, fitOf(*element, elementOf(declared)));
    return least;
}

const Checker::Candidate &Checker::choose(const std::vector<Candidate> &candidates, const Expressions &arguments,
                                          Expression *assigned, const Named &name)
{
    std::vector<Expression *> all;
    for (const ExpressionPtr &argument : arguments)
        all.push_back(argument.get());
    if (assigned)
        all.push_back(assigned);
    for (Expression *argument : all)
        check(*argument);

    const Candidate *best = nullptr;
    const Candidate *ofThatLength = nullptr;
    int bestSum = -1;
    for (const Candidate &candidate : candidates) {
        if (candidate.parameters.size() != all.size())
            continue;
        if (!ofThatLength)
            ofThatLength = &candidate;
        int sum = 0;
        bool fits = true;
        for (size_t i = 0; i < all.size(); i++) {
            int one = fitOf(*all[i], candidate.parameters[i].type);
            fits = fits && one;
            sum += one;
        }
        if (fits && sum > bestSum) {
            best = &candidate;
            bestSum = sum;
        }
    }
    if (best)
        return *best;
    const Candidate &nearest = ofThatLength ? *ofThatLength : candidates.front();
    if (!ofThatLength) {
        size_t taken = nearest.parameters.size() - (assigned ? 1 : 0);
        fail(name.place, nearest.text + ": takes " + countText(taken) + ", not " + std::to_string(arguments.size()));
    }
    return nearest; // the caller finds the argument that does not fit
}

Type Checker::call(Use &use, Meaning meaning, const std::vector<Candidate> &candidates, Expression *assigned)
{
    bool takesAssignment = meaning == Meaning::HostCall;
    if (assigned && !takesAssignment)
        fail(use.name.place, candidates.front().text + ": cannot be assigned to");
    // A property of the language is written without brackets; an array that a method gives can have an index behind it
    // only as a method without parameters, which this language leaves out.
    const Candidate &chosen = choose(candidates, use.arguments, assigned, use.name);
    for (size_t i = 0; i < chosen.parameters.size(); i++) {
        bool isAssigned = assigned && i + 1 == chosen.parameters.size();
        Expression &argument = isAssigned ? *assigned : *use.arguments[i];
        std::string what = isAssigned ? "the assigned value" : chosen.parameters[i].name;
        need(argument, chosen.parameters[i].type, chosen.text + ": " + what);
    }
    use.meaning = meaning;
    use.method = chosen.method;
    use.function = chosen.function;
    use.builtin = chosen.builtin;
    use.usesSetter = chosen.usesSetter;
    use.type = chosen.result;
    return chosen.result;
}

} // namespace script
