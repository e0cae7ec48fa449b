#include <algorithm>

#include "host/script/interpreter.h"
#include "host/script/interruption.h"
#include "host/script/objects.h"
#include "host/script/running.h"
#include "host/script/types.h"

namespace script {

using host::Value;

void Interpreter::run(const Program &program)
{
    for (const ClassDefinition &definition : program.classes)
        _classes.push_back(&definition);
    Frame frame;
    frame.locals.resize(program.slots);
    _frame = &frame;
    _depth = 0;
    // A method can use a variable of the program before its Dim is reached.
    for (const std::unique_ptr<Statement> &statement : program.statements)
        if (auto *dim = std::get_if<Dim>(&statement->node))
            for (const DimGroup &group : dim->groups)
                for (const DimGroup::Item &item : group.items)
                    slot(item.variable) = initialValue(item.variable.type);
    run(program.statements);
    _frame = nullptr;
}

void Interpreter::goOn(const Place &place)
{
    if (Interruption::take())
        throw Interrupted{place};
    setRunningPlace(place);
}

Interpreter::Flow Interpreter::run(const Block &block)
{
    for (const std::unique_ptr<Statement> &statement : block) {
        Flow flow = run(*statement);
        if (flow != Flow::Onward)
            return flow;
    }
    return Flow::Onward;
}

Interpreter::Flow Interpreter::run(const Statement &statement)
{
    goOn(statement.place);
    return std::visit([&](const auto &node) { return visit(node, statement.place); }, statement.node);
}

void grow(Value array, int32_t upperBound, const Type &type)
{
    while (array.count() <= upperBound)
        array.append(initialValue(elementOf(type)));
}

void writeLine(FILE *stream, std::string line)
{
    line += '\n';
    fwrite(line.data(), 1, line.size(), stream);
}

// --- Simple statements ---------------------------------------------------------------------------------------------

Interpreter::Flow Interpreter::visit(const Dim &dim, const Place &)
{
    for (const DimGroup &group : dim.groups)
        run(group);
    return Flow::Onward;
}

void Interpreter::run(const DimGroup &group)
{
    for (const DimGroup::Item &item : group.items) {
        const Type &type = item.variable.type;
        Value value = group.initial ? evaluate(*group.initial, type) : initialValue(type);
        if (item.upperBound)
            grow(value, integer(*item.upperBound), type);
        std::swap(slot(item.variable), value);
    }
}

Interpreter::Flow Interpreter::visit(const Assignment &assignment, const Place &)
{
    assign(std::get<Use>(assignment.target->node), *assignment.target, *assignment.value);
    return Flow::Onward;
}

Interpreter::Flow Interpreter::visit(const Evaluation &evaluation, const Place &)
{
    Value value = evaluate(*evaluation.expression);
    if (_show && !evaluation.ignoresResult && !isNothing(evaluation.expression->type))
        _show(value);
    return Flow::Onward;
}

Interpreter::Flow Interpreter::visit(const Print &print, const Place &)
{
    writeLine(stdout, print.text ? evaluate(*print.text, typeNamed("String")).text() : "");
    return Flow::Onward;
}

bool Interpreter::holds(const Expression &condition)
{
    return evaluate(condition, typeNamed("Boolean")).boolean();
}

Interpreter::Flow Interpreter::visit(const Assertion &assertion, const Place &)
{
    if (!holds(*assertion.condition))
        throw AssertionFailed{assertion.condition->place,
                              assertion.message ? evaluate(*assertion.message, typeNamed("String")).text() : "",
                              {}};
    return Flow::Onward;
}

Interpreter::Flow Interpreter::visit(const Redim &redim, const Place &)
{
    Value array = evaluate(*redim.array);
    int32_t upper = integer(*redim.upperBound);
    grow(notNil(array, redim.array->place), upper, redim.array->type);
    while (array.count() > std::max(upper + 1, 0))
        array.removeAt(array.count() - 1);
    return Flow::Onward;
}

// --- Branches and loops --------------------------------------------------------------------------------------------

Interpreter::Flow Interpreter::visit(const If &branches, const Place &)
{
    for (const If::Branch &branch : branches.branches)
        if (holds(*branch.condition))
            return run(branch.body);
    return run(branches.otherwise);
}

bool Interpreter::passes(const Select::Test &test, const Value &subject, const Place &place)
{
    if (!test.className.text.empty())
        return subject.isA(test.className.text);
    auto compares = [&](Operator comparison, const Expression &value) {
        return operated(comparison, subject, evaluate(value), typeNamed("Boolean"), place).boolean();
    };
    if (test.last)
        return compares(Operator::GreaterOrEqual, *test.value) && compares(Operator::LessOrEqual, *test.last);
    return compares(test.comparison, *test.value);
}

Interpreter::Flow Interpreter::visit(const Select &select, const Place &place)
{
    Value subject = evaluate(*select.subject);
    for (const Select::Case &one : select.cases)
        for (const Select::Test &test : one.tests)
            if (passes(test, subject, place))
                return run(one.body);
    return run(select.otherwise);
}

bool Interpreter::leaves(Flow &flow, LoopKind kind, const Place &place)
{
    goOn(place);
    if (flow == Flow::Onward || flow == Flow::Return)
        return flow == Flow::Return;
    bool isMeant = _leaving == LoopKind::Any || _leaving == kind;
    bool ends = !isMeant || flow == Flow::Exit;
    if (isMeant)
        flow = Flow::Onward;
    return ends;
}

void Interpreter::setLoopVariable(const LoopVariable &variable, const Value &value)
{
    if (variable.ownType)
        slot(variable.variable) = converted(value, variable.variable.type, variable.variable.name.place);
    else
        slot(std::get<Use>(variable.existing->node)) =
            converted(value, variable.existing->type, variable.existing->place);
}

Interpreter::Flow Interpreter::visit(const ForCount &loop, const Place &place)
{
    const Type type = loop.counter.ownType ? loop.counter.variable.type : loop.counter.existing->type;
    Value step = loop.step ? evaluate(*loop.step, type) : converted(Value(1), type, place);
    bool goesDown = loop.isDown != (step.number() < 0);
    setLoopVariable(loop.counter, evaluate(*loop.first, type));
    auto current = [&] {
        return loop.counter.ownType ? slot(loop.counter.variable) : evaluate(*loop.counter.existing);
    };
    for (;;) {
        // The last value is looked at each time, as the host does.
        Value last = evaluate(*loop.last, type);
        Operator goesOn = goesDown ? Operator::GreaterOrEqual : Operator::LessOrEqual;
        if (!operated(goesOn, current(), last, typeNamed("Boolean"), place).boolean())
            return Flow::Onward;
        Flow flow = run(loop.body);
        if (leaves(flow, LoopKind::For, place))
            return flow;
        Operator next = loop.isDown ? Operator::Subtract : Operator::Add;
        Type wide = isInteger(type) ? typeNamed("Int64") : typeNamed("Double");
        setLoopVariable(loop.counter, operated(next, current(), step, wide, place));
    }
}

Interpreter::Flow Interpreter::visit(const ForEach &loop, const Place &place)
{
    Value array = notNil(evaluate(*loop.array), loop.array->place);
    for (int32_t i = 0; i < array.count(); i++) {
        setLoopVariable(loop.element, array.at(i));
        Flow flow = run(loop.body);
        if (leaves(flow, LoopKind::For, place))
            return flow;
    }
    return Flow::Onward;
}

Interpreter::Flow Interpreter::visit(const Loop &loop, const Place &place)
{
    for (;;) {
        if (loop.before && holds(*loop.before) == loop.untilBefore)
            return Flow::Onward;
        Flow flow = run(loop.body);
        if (leaves(flow, loop.kind, place))
            return flow;
        if (loop.after && holds(*loop.after) == loop.untilAfter)
            return Flow::Onward;
    }
}

Interpreter::Flow Interpreter::visit(const Leave &leave, const Place &)
{
    if (!leave.method.empty())
        return Flow::Return;
    _leaving = leave.loop;
    return leave.isContinue ? Flow::Continue : Flow::Exit;
}

Interpreter::Flow Interpreter::visit(const Return &leave, const Place &)
{
    if (leave.value) {
        Value result = evaluate(*leave.value, leave.type);
        _frame->result = result;
    }
    return Flow::Return;
}

// --- Exceptions ----------------------------------------------------------------------------------------------------

Interpreter::Flow Interpreter::runGuarded(const Try &attempt)
{
    Frame *frame = _frame;
    int depth = _depth;
    try {
        return run(attempt.body);
    } catch (const Raised &exception) {
        _frame = frame;
        _depth = depth;
        for (const Try::Catch &handler : attempt.catches) {
            if (!handler.className.text.empty() && !exception.object.isA(handler.className.text))
                continue;
            if (handler.variable)
                slot(*handler.variable) = exception.object;
            return run(handler.body);
        }
        throw;
    }
}

Interpreter::Flow Interpreter::visit(const Try &attempt, const Place &)
{
    Flow flow;
    try {
        flow = runGuarded(attempt);
    } catch (const Raised &) {
        Flow finally = run(attempt.finally);
        if (finally != Flow::Onward)
            return finally;
        throw;
    }
    // Of a Return or an Exit, which comes after Finally.
    Value result = _frame->result;
    LoopKind leaving = _leaving;
    Flow finally = run(attempt.finally);
    if (finally != Flow::Onward)
        return finally;
    _frame->result = result;
    _leaving = leaving;
    return flow;
}

Interpreter::Flow Interpreter::visit(const Raise &raise, const Place &place)
{
    throw Raised{notNil(evaluate(*raise.exception), raise.exception->place), place, {}};
}

} // namespace script
