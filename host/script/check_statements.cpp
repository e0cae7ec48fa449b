// What statements need.
#include <algorithm>

#include "host/host.h"
#include "host/runtime/arrays.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"
#include "host/script/objects.h"
#include "host/script/tokens.h"

namespace script {

// --- Statements ----------------------------------------------------------------------------------------------------

void Checker::checkBlock(Block &block)
{
    _scopes.emplace_back();
    for (std::unique_ptr<Statement> &statement : block)
        attempt([&] { checkStatement(*statement); });
    _scopes.pop_back();
}

void Checker::checkStatement(Statement &statement)
{
    std::visit([&](auto &node) { visit(node, statement.place); }, statement.node);
}

void Checker::visit(Dim &dim, const Place &)
{
    for (DimGroup &group : dim.groups) {
        Type type = nothing();
        attempt([&] { checkGroup(group, type); });
        for (DimGroup::Item &item : group.items) {
            item.variable.isMistaken = isNothing(type);
            declare(item.variable, item.isArray ? arrayOf(type) : type);
        }
    }
}

void Checker::visit(Assignment &assignment, const Place &)
{
    auto *use = std::get_if<Use>(&assignment.target->node);
    if (!use)
        fail(assignment.target->place, "nothing can be assigned to this");
    assignment.target->type = resolve(*use, *assignment.target, assignment.value.get());
    if (use->meaning == Meaning::Cast)
        fail(assignment.target->place, "nothing can be assigned to this");
}

void Checker::visit(Evaluation &evaluation, const Place &)
{
    Type type = check(*evaluation.expression);
    auto *use = std::get_if<Use>(&evaluation.expression->node);
    bool isCall = use && (use->meaning == Meaning::ScriptCall || use->meaning == Meaning::HostCall ||
                          use->meaning == Meaning::SharedCall || use->meaning == Meaning::ArrayMember ||
                          use->meaning == Meaning::LibraryCall);
    if (_allowsExpressions)
        return;
    if (!isCall)
        fail(evaluation.expression->place, "a value alone is no statement");
    if (!isNothing(type) && !evaluation.ignoresResult)
        fail(use->name.place, "the result of " + use->name.text + " is not used; write Call in front to leave it");
}

void Checker::visit(Print &print, const Place &)
{
    if (print.text)
        need(*print.text, typeNamed("String"), "what is printed");
}

void Checker::visit(Assertion &assertion, const Place &)
{
    need(*assertion.condition, typeNamed("Boolean"), "the condition");
    if (assertion.message)
        need(*assertion.message, typeNamed("String"), "the message");
}

void Checker::visit(If &branches, const Place &)
{
    for (If::Branch &branch : branches.branches) {
        attempt([&] { need(*branch.condition, typeNamed("Boolean"), "the condition"); });
        checkBlock(branch.body);
    }
    checkBlock(branches.otherwise);
}

void Checker::checkTest(Select::Test &test, const Type &subject)
{
    if (!test.className.text.empty()) {
        if (!isClass(test.className.text))
            unknownClass(test.className);
        return;
    }
    for (Expression *value : {test.value.get(), test.last.get()}) {
        if (!value)
            continue;
        needValue(*value);
        if (!isVariant(value->type) && !fit(subject, value->type) && !fit(value->type, subject))
            fail(value->place, "the value must be " + articleAndName(subject) + ", not " + articleAndName(value->type));
        bool isOrdered = test.last || test.comparison > Operator::Unequal;
        if (isOrdered && !canBeOrdered(subject, value->type))
            fail(value->place, articleAndName(subject) + " has no order");
    }
}

void Checker::visit(Select &select, const Place &)
{
    attempt([&] { needValue(*select.subject); });
    for (Select::Case &one : select.cases) {
        for (Select::Test &test : one.tests)
            attempt([&] { checkTest(test, select.subject->type); });
        checkBlock(one.body);
    }
    checkBlock(select.otherwise);
}

Type Checker::checkLoopVariable(LoopVariable &variable)
{
    if (variable.ownType) {
        Type type = attemptedType(*variable.ownType);
        variable.variable.isMistaken = isNothing(type);
        declare(variable.variable, type);
        if (variable.variable.isMistaken)
            throw ProblemsFound({});
        return type;
    }
    Type type = check(*variable.existing);
    auto &use = std::get<Use>(variable.existing->node);
    if (use.meaning != Meaning::Variable)
        fail(variable.existing->place, "\"" + use.name.text + "\" is no variable");
    return type;
}

void Checker::loopBody(Block &body, LoopKind kind)
{
    _loops.push_back(kind);
    checkBlock(body);
    _loops.pop_back();
}

void Checker::visit(ForCount &loop, const Place &)
{
    _scopes.emplace_back();
    attempt([&] {
        Type type = checkLoopVariable(loop.counter);
        if (!isNumber(type))
            fail(loop.counter.variable.name.place, "For counts with a number, not with " + articleAndName(type));
        need(*loop.first, type, "the first value");
        need(*loop.last, type, "the last value");
        if (loop.step)
            need(*loop.step, type, "the step");
    });
    loopBody(loop.body, LoopKind::For);
    _scopes.pop_back();
}

void Checker::visit(ForEach &loop, const Place &)
{
    _scopes.emplace_back();
    attempt([&] {
        needValue(*loop.array);
        Type type = checkLoopVariable(loop.element);
        if (!loop.array->type.isArray)
            fail(loop.array->place, "For Each needs an array, not " + articleAndName(loop.array->type));
        if (!fit(type, elementOf(loop.array->type)))
            fail(loop.element.variable.name.place, "the array's elements are " +
                                                       articleAndName(elementOf(loop.array->type)) + " each, not " +
                                                       articleAndName(type));
    });
    loopBody(loop.body, LoopKind::For);
    _scopes.pop_back();
}

void Checker::visit(Loop &loop, const Place &)
{
    for (ExpressionPtr *condition : {&loop.before, &loop.after})
        if (*condition)
            attempt([&] { need(**condition, typeNamed("Boolean"), "the condition"); });
    loopBody(loop.body, loop.kind);
}

void Checker::visit(Leave &leave, const Place &place)
{
    if (!leave.method.empty()) {
        bool isFunction = _function && !isNothing(_function->result);
        bool wantsFunction = host::equalIgnoringCase(leave.method, "Function");
        if (isFunction != wantsFunction)
            fail(place, "Exit " + std::string(leave.method) + " stands in a " + std::string(leave.method) + " only");
        return;
    }
    bool isInside = std::any_of(_loops.begin(), _loops.end(),
                                [&](LoopKind kind) { return leave.loop == LoopKind::Any || leave.loop == kind; });
    static const char *const loops[] = {"a loop", "a For loop", "a While loop", "a Do loop"};
    if (!isInside)
        fail(place, std::string(leave.isContinue ? "Continue" : "Exit") + " stands in " + loops[size_t(leave.loop)] +
                        " only here");
}

void Checker::visit(Return &leave, const Place &place)
{
    if (_function && _function->isMistaken)
        return;
    Type wanted = _function ? _function->result : nothing();
    if (!leave.value && !isNothing(wanted))
        fail(place, "Return needs " + articleAndName(wanted) + " here");
    if (!leave.value)
        return;
    if (isNothing(wanted))
        fail(leave.value->place, std::string(_function ? "a Sub" : "the program") + " returns no value");
    need(*leave.value, wanted, "the result");
    leave.type = wanted;
}

void Checker::needExceptionClass(const Named &name)
{
    if (!isClass(name.text))
        unknownClass(name);
    if (!fit(classType("RuntimeException"), classType(name.text)))
        fail(name.place, "\"" + name.text + "\" is no class of exceptions");
}

void Checker::visit(Try &attempted, const Place &)
{
    checkBlock(attempted.body);
    for (Try::Catch &handler : attempted.catches) {
        _scopes.emplace_back();
        attempt([&] {
            if (!handler.className.text.empty())
                needExceptionClass(handler.className);
            bool isOpen = handler.className.text.empty();
            if (handler.variable)
                declare(*handler.variable, classType(isOpen ? "RuntimeException" : handler.className.text));
        });
        checkBlock(handler.body);
        _scopes.pop_back();
    }
    checkBlock(attempted.finally);
}

void Checker::visit(Raise &raise, const Place &)
{
    need(*raise.exception, classType("RuntimeException"), "what is raised");
}

void Checker::visit(Redim &redim, const Place &)
{
    Type type = check(*redim.array);
    if (!type.isArray)
        fail(redim.array->place, "Redim needs an array, not " + articleAndName(type));
    need(*redim.upperBound, typeNamed("Integer"), "the upper bound");
}

} // namespace script
