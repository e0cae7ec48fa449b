// What names and members stand for.
#include "host/host.h"
#include "host/runtime/calls.h"
#include "host/script/arrays.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"
#include "host/script/left_out.h"
#include "host/script/tokens.h"

namespace script {

namespace {

using host::MethodDescription;

std::string quoted(const std::string &name)
{
    return "\"" + name + "\"";
}

// "; setStringArrayValue stores it", for a getter stringArrayForKey that has no setter of its own.
std::string setterHint(const std::string &className, const std::string &getter)
{
    static const std::string suffix = "ForKey";
    if (getter.size() <= suffix.size())
        return "";
    std::string name = "set" + getter.substr(0, getter.size() - suffix.size()) + "Value";
    std::vector<const MethodDescription *> setters = methodsNamed(className, name, false);
    return setters.empty() ? "" : "; " + setters.front()->text + " stores one";
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

ClassDefinition *Symbols::definitionOf(const std::string &className) const
{
    auto found = classes.find(className);
    return found == classes.end() ? nullptr : found->second;
}

std::vector<std::string> Symbols::bareNames() const
{
    std::vector<std::string> names;
    for (const auto &[name, variable] : globals)
        names.push_back(variable.name.text);
    for (const auto &[name, function] : functions)
        names.push_back(function->name.text);
    for (const std::string &name : libraryFunctionNames())
        names.push_back(name);
    for (const std::string &name : classNames())
        names.push_back(name);
    return names;
}

std::vector<std::string> Symbols::membersOf(const Type &type) const
{
    std::vector<std::string> names;
    if (type.isArray) {
        for (const ArrayMember &member : arrayMembers())
            names.push_back(member.name);
        return names;
    }
    if (isVariant(type) || isObject(type))
        names = memberNames(nameOf(type), false);
    for (const std::string &name : libraryMemberNames(type))
        names.push_back(name);
    for (const ClassDefinition *each = definitionOf(type.name); each; each = each->super) {
        for (const ClassDefinition::Field &field : each->fields)
            names.push_back(field.item->variable.name.text);
        for (const Function &method : each->methods)
            names.push_back(method.name.text);
    }
    return names;
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

const ClassDefinition::Field *Checker::findField(const ClassDefinition *definition, const std::string &name) const
{
    for (; definition; definition = definition->super)
        for (const ClassDefinition::Field &field : definition->fields)
            if (host::equalIgnoringCase(field.item->variable.name.text, name))
                return &field;
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
    if (std::string message = leftOutMessage(LeftOutAt::Name, name.text); !message.empty())
        fail(name.place, message);
    std::vector<std::string> known = reservedWords();
    for (const Names<Variable> &scope : _scopes)
        for (const auto &[each, variable] : scope)
            known.push_back(each);
    for (const std::string &each : _symbols.bareNames())
        known.push_back(each);
    fail(name.place, "there is nothing named " + quoted(name.text) + suggestion(name.text, known));
}

void Checker::unknownClass(const Named &name)
{
    std::string leftOut = leftOutMessage(LeftOutAt::Name, name.text);
    fail(name.place, !leftOut.empty() ? leftOut : "there is no class " + quoted(name.text) + suggestedClass(name.text));
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
        bool isOwner =
            isClass(base.name.text) || isLibraryOwner(base.name.text) || _symbols.enumerations.count(base.name.text);
        if (!isVariable && isOwner) {
            base.meaning = Meaning::Owner;
            return resolveShared(use, base.name.text, assigned);
        }
    }
    Type type = check(*use.base);
    if (type.isArray)
        return resolveArrayMember(use, type, assigned);
    if (isVariant(type) || isObject(type))
        return resolveMember(use, type, assigned);
    std::vector<Candidate> candidates = libraryCandidates(libraryMembers(type, use.name.text), true, assigned);
    if (!candidates.empty())
        return call(use, Meaning::LibraryCall, candidates, assigned);
    std::vector<std::string> known = _symbols.membersOf(type);
    if (known.empty() || isNothing(type))
        fail(use.name.place, articleAndName(type) + " has no members");
    unknownMember(use.name, articleAndName(type), known);
}

Type Checker::resolveBare(Use &use, Expression &expression, Expression *assigned)
{
    const std::string &name = use.name.text;
    if (const Variable *local = findLocal(name))
        return variable(use, *local, assigned);
    if (ClassDefinition *owner = _function ? _function->owner : nullptr) {
        if (const ClassDefinition::Field *found = findField(owner, name))
            return field(use, *found, assigned);
        if (Function *found = findMethod(owner, name))
            return method(use, *found, assigned);
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
    std::vector<Candidate> candidates = libraryCandidates(libraryFunctions(name), false, nullptr);
    if (!candidates.empty() && assigned)
        fail(use.name.place, candidates.front().text + ": cannot be assigned to");
    if (!candidates.empty())
        return call(use, Meaning::LibraryCall, candidates, assigned);
    Type type = typeNamed(name);
    bool isType = !isObject(type) && !isNil(type);
    if (!isType && !isClass(name))
        unknownName(use.name);
    if (use.arguments.size() != 1 || assigned)
        fail(use.name.place, quoted(name) + (isType ? " is a type" : " is a class; New makes an object of it"));
    use.meaning = Meaning::Cast;
    use.type = type;
    Type given = check(*use.arguments.front());
    if (!fit(use.type, given) && !fit(given, use.type))
        fail(use.arguments.front()->place, articleAndName(given) + " is never " + articleAndName(use.type));
    return use.type;
}

Type Checker::variable(Use &use, const Variable &variable, Expression *assigned)
{
    if (variable.isMistaken)
        throw ProblemsFound({});
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
        if (use.arguments.size() > 1)
            fail(use.name.place, "arrays of more than one dimension are not part of this language here");
        if (use.arguments.empty())
            fail(use.name.place, quoted(use.name.text) + " takes one index");
        need(*use.arguments.front(), typeNamed("Integer"), "the index");
        result = elementOf(type);
    }
    if (assigned)
        need(*assigned, result, quoted(use.name.text));
    return result;
}

Type Checker::constant(Use &use, const Expression &value, Expression *assigned)
{
    if (assigned || use.hasBrackets)
        fail(use.name.place, quoted(use.name.text) + " is a constant");
    use.meaning = Meaning::Constant;
    use.constant = &value;
    use.type = value.type;
    return use.type;
}

void Checker::needAccess(const Named &name, Access access, const ClassDefinition &owner)
{
    const ClassDefinition *user = _function ? _function->owner : nullptr;
    bool isAllowed = access == Access::Public;
    for (const ClassDefinition *each = user; each && !isAllowed; each = each->super)
        isAllowed = each == &owner && (access == Access::Protected || user == &owner);
    if (!isAllowed)
        fail(name.place, quoted(name.text) + " is " + (access == Access::Private ? "private" : "protected") + " to " +
                             owner.name.text);
}

Type Checker::field(Use &use, const ClassDefinition::Field &field, Expression *assigned)
{
    needAccess(use.name, field.access, *field.owner);
    return field.constant ? constant(use, *field.constant, assigned) : variable(use, field.item->variable, assigned);
}

Type Checker::method(Use &use, const Function &method, Expression *assigned)
{
    needAccess(use.name, method.access, *method.owner);
    return call(use, Meaning::ScriptCall, {candidateFor(method)}, assigned);
}

Type Checker::resolveShared(Use &use, const std::string &className, Expression *assigned)
{
    auto enumeration = _symbols.enumerations.find(className);
    if (enumeration != _symbols.enumerations.end()) {
        std::vector<std::string> known;
        for (const Enumeration::Item &item : enumeration->second->items) {
            if (host::equalIgnoringCase(item.name.text, use.name.text))
                return constant(use, *item.value, assigned);
            known.push_back(item.name.text);
        }
        unknownMember(use.name, className, known);
    }
    const ClassDefinition::Field *found = findField(_symbols.definitionOf(className), use.name.text);
    if (found && found->constant)
        return field(use, *found, assigned);
    std::vector<Candidate> rows = libraryCandidates(librarySharedMembers(className, use.name.text), false, nullptr);
    if (!rows.empty() && assigned)
        fail(use.name.place, rows.front().text + ": cannot be assigned to");
    if (!rows.empty())
        return call(use, Meaning::LibraryCall, rows, assigned);
    if (!isClass(className))
        unknownMember(use.name, className, librarySharedNames(className));
    std::vector<Candidate> candidates;
    for (const MethodDescription *method : methodsNamed(className, use.name.text, true))
        candidates.push_back(candidateFor(*method));
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
    if (!member)
        unknownMember(use.name, "an array", _symbols.membersOf(array));
    Candidate candidate{{}, nothing(), std::string(member->name) + " of an array"};
    bool isOptional = false;
    for (const char *parameter = member->parameters; *parameter; parameter++) {
        isOptional = isOptional || *parameter == '?';
        if (*parameter == '?')
            continue;
        candidate.parameters.push_back(
            {*parameter == 'i' ? "index" : "value", *parameter == 'i' ? typeNamed("Integer") : elementOf(array)});
        candidate.required += !isOptional;
    }
    if (member->result != ' ')
        candidate.result = member->result == 'i' ? typeNamed("Integer") : elementOf(array);
    return call(use, Meaning::ArrayMember, {candidate}, assigned);
}

Type Checker::resolveMember(Use &use, const Type &object, Expression *assigned)
{
    std::string className = isVariant(object) ? "Variant" : object.name;
    ClassDefinition *definition = _symbols.definitionOf(className);
    if (const ClassDefinition::Field *found = findField(definition, use.name.text))
        return field(use, *found, assigned);
    if (Function *found = findMethod(definition, use.name.text))
        return method(use, *found, assigned);
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
        if (!isSetter && method->declaration.assigns != (assigned != nullptr))
            continue;
        Candidate candidate = candidateFor(*method);
        if (isSetter)
            candidate.parameters = host::runtime::setterDeclaration(method->declaration).parameters;
        candidate.required = candidate.parameters.size();
        candidate.usesSetter = isSetter;
        if (assigned)
            candidate.result = nothing();
        candidates.push_back(candidate);
    }
    if (candidates.empty() && !methods.empty())
        fail(use.name.place,
             methods.front()->text + (assigned ? ": cannot be assigned to" + setterHint(className, use.name.text)
                                               : ": can only be assigned to"));
    if (candidates.empty()) {
        std::vector<Candidate> rows = libraryCandidates(libraryMembers(object, use.name.text), true, assigned);
        if (!rows.empty())
            return call(use, Meaning::LibraryCall, rows, assigned);
        if (!libraryMembers(object, use.name.text).empty())
            fail(use.name.place, quoted(use.name.text) + " of " + owner + " can only be read");
        if (isVariant(object))
            fail(use.name.place,
                 "a Variant has no member " + quoted(use.name.text) + "; assign it to a variable of its class first");
        if (!methodsNamed(className, use.name.text, true).empty())
            fail(use.name.place, quoted(use.name.text) + " is a method of the class: " + owner + "." + use.name.text);
        unknownMember(use.name, owner, _symbols.membersOf(object));
    }
    return call(use, Meaning::HostCall, candidates, assigned);
}

} // namespace script
