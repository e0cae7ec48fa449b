#include <algorithm>
#include <utility>

#include "host/runtime/calls.h"
#include "host/runtime/variants.h"
#include "host/script/arrays.h"
#include "host/script/interpreter.h"
#include "host/script/library.h"
#include "host/script/objects.h"
#include "host/script/types.h"

namespace script {

using host::Arguments;
using host::Value;

static constexpr int kDeepestCall = 300;

Value notNil(const Value &value, const Place &place)
{
    if (value.isNil())
        throw raised("NilObjectException", "This is Nil.", place);
    return value;
}

Value Interpreter::evaluate(const Expression &expression)
{
    return std::visit([&](const auto &node) { return visit(node, expression); }, expression.node);
}

Value Interpreter::evaluate(const Expression &expression, const Type &wanted)
{
    return converted(evaluate(expression), wanted, expression.place);
}

int32_t Interpreter::integer(const Expression &expression)
{
    return evaluate(expression, typeNamed("Integer")).int32();
}

Value Interpreter::visit(const Literal &literal, const Expression &)
{
    return literal.value;
}

Value Interpreter::visit(const SelfObject &, const Expression &)
{
    return _frame->self;
}

Value Interpreter::visit(const ArrayLiteral &literal, const Expression &expression)
{
    Value array = initialValue(expression.type);
    for (const ExpressionPtr &element : literal.elements)
        array.append(evaluate(*element, elementOf(expression.type)));
    return array;
}

Value Interpreter::visit(const Unary &unary, const Expression &expression)
{
    Value operand = evaluate(*unary.operand);
    if (unary.operation == Operator::Not) {
        if (isInteger(expression.type))
            return converted(Value(static_cast<long long>(~host::runtime::variantAsInt64(operand))), expression.type,
                             expression.place);
        return Value(!host::runtime::variantAsBoolean(operand));
    }
    if (operand.isNumber() && operand.kind() >= Value::Kind::Single)
        return converted(Value(-operand.number()), expression.type, expression.place);
    return operated(Operator::Subtract, Value(0), operand, expression.type, expression.place);
}

Value Interpreter::visit(const Binary &binary, const Expression &expression)
{
    Value left = evaluate(*binary.left);
    // The right side is not looked at when the left one decides.
    bool isLogical = isBoolean(expression.type);
    if (isLogical && binary.operation == Operator::And && !host::runtime::variantAsBoolean(left))
        return Value(false);
    if (isLogical && binary.operation == Operator::Or && host::runtime::variantAsBoolean(left))
        return Value(true);
    return operated(binary.operation, left, evaluate(*binary.right), expression.type, binary.place);
}

Value Interpreter::visit(const Conditional &choice, const Expression &expression)
{
    return evaluate(holds(*choice.condition) ? *choice.yes : *choice.no, expression.type);
}

Value Interpreter::visit(const TypeTest &test, const Expression &)
{
    return Value(evaluate(*test.operand).isA(test.className.text));
}

Value Interpreter::visit(const Use &use, const Expression &expression)
{
    if (!use.isElement)
        return read(use, expression);
    Reference element = refer(expression);
    return element.owner.at(element.index);
}

// --- Variables -----------------------------------------------------------------------------------------------------

Value Interpreter::base(const Use &use)
{
    Value value = use.base ? evaluate(*use.base) : _frame->self;
    return notNil(value, use.base ? use.base->place : use.name.place);
}

Value &Interpreter::slot(const Variable &variable)
{
    std::vector<Value> &values = variable.storage == Storage::Global  ? _globals
                                 : variable.storage == Storage::Local ? _frame->locals
                                                                      : fieldsOf(_frame->self);
    if (values.size() <= variable.slot)
        values.resize(variable.slot + 1);
    return values[variable.slot];
}

Value &Interpreter::slot(const Use &use)
{
    if (use.storage == Storage::Field) {
        Value object = base(use);
        setUpFields(object);
        return fieldsOf(object)[use.slot];
    }
    Variable variable;
    variable.storage = use.storage;
    variable.slot = use.slot;
    return slot(variable);
}

Value Interpreter::global(const Variable &variable) const
{
    return variable.slot < _globals.size() ? _globals[variable.slot] : Value();
}

const ClassDefinition *Interpreter::definitionOf(const Value &object) const
{
    for (const ClassDefinition *definition : _classes)
        if (host::equalIgnoringCase(definition->name.text, object.className()))
            return definition;
    return nullptr;
}

void Interpreter::setUpFields(const Value &object)
{
    const ClassDefinition *definition = definitionOf(object);
    if (!definition || fieldsOf(object).size() == definition->slotCount)
        return;
    fieldsOf(object).resize(definition->slotCount);
    std::vector<const ClassDefinition *> chain;
    for (const ClassDefinition *each = definition; each; each = each->super)
        chain.insert(chain.begin(), each);
    for (const ClassDefinition *each : chain)
        for (const ClassDefinition::FieldGroup &fields : each->fieldGroups) {
            if (fields.group.isConstant)
                continue;
            Frame frame;
            frame.self = object;
            Frame *outer = std::exchange(_frame, &frame);
            run(fields.group);
            _frame = outer;
        }
}

// --- Uses ----------------------------------------------------------------------------------------------------------

Arguments Interpreter::arguments(const Use &use, const std::vector<host::Parameter> &parameters)
{
    Arguments values;
    for (size_t i = 0; i < use.arguments.size(); i++)
        values.push_back(evaluate(*use.arguments[i], parameters[i].type));
    return values;
}

// A member's object is the first argument. A Variant's members are there for Nil, too.
Value Interpreter::callRow(const Use &use, const Expression *assigned)
{
    const LibraryRow &row = *use.row;
    Arguments values;
    if (use.base && !row.isShared)
        values.push_back(isVariant(use.base->type) ? evaluate(*use.base)
                                                   : converted(base(use), row.self(), use.base->place));
    size_t first = row.isExtension ? values.size() : 0; // the parameter that the first written argument is for
    const std::vector<host::Parameter> &parameters = row.declaration.parameters;
    for (size_t i = 0; i < use.arguments.size(); i++)
        values.push_back(evaluate(*use.arguments[i], parameters[std::min(first + i, parameters.size() - 1)].type));
    if (assigned)
        values.push_back(evaluate(*assigned, row.declaration.result));
    Value result = (assigned ? row.assign : row.run)(values, use.name.place);
    for (size_t i : row.byRef)
        assign(refer(*use.arguments[i]), values[i]);
    return result;
}

// What is meant, before an index.
Value Interpreter::read(const Use &use, const Expression &expression)
{
    const Place &place = use.name.place;
    switch (use.meaning) {
    case Meaning::Variable:
        return slot(use);
    case Meaning::ScriptCall: {
        Value self = use.function->owner ? base(use) : Value();
        return call(*use.function, self, use.arguments, place);
    }
    case Meaning::HostCall: {
        Value self = base(use);
        return call(*use.method, false, self, arguments(use, use.method->declaration.parameters), place);
    }
    case Meaning::SharedCall:
        return call(*use.method, false, Value(), arguments(use, use.method->declaration.parameters), place);
    case Meaning::HostProperty: {
        Value object = isVariant(use.base->type) ? evaluate(*use.base) : base(use);
        return hosted(place, [&] { return object.property(use.name.text); });
    }
    case Meaning::ArrayMember: {
        Value array = base(use);
        const ArrayMember &member = *arrayMember(use.name.text);
        Arguments values;
        const char *parameter = member.parameters;
        for (const ExpressionPtr &argument : use.arguments) {
            parameter += *parameter == '?';
            values.push_back(
                evaluate(*argument, *parameter++ == 'i' ? typeNamed("Integer") : elementOf(use.base->type)));
        }
        return member.run(array, values, place);
    }
    case Meaning::LibraryCall:
        return callRow(use, nullptr);
    case Meaning::Constant:
        return evaluate(*use.constant);
    case Meaning::Cast:
        return evaluate(*use.arguments.front(), expression.type);
    case Meaning::Owner:
    case Meaning::Unknown:
        break;
    }
    return Value();
}

void Interpreter::store(const Use &use, const Value &value)
{
    if (use.meaning == Meaning::HostProperty) {
        Value object = base(use);
        hosted(use.name.place, [&] {
            object.setProperty(use.name.text, value);
            return Value();
        });
        return;
    }
    // What was there may die and come back here, so it leaves its place first.
    Value old = value;
    std::swap(slot(use), old);
}

void Interpreter::assign(const Use &use, const Expression &target, const Expression &value)
{
    if (use.meaning == Meaning::HostCall) {
        Value self = base(use);
        host::Declaration form =
            use.usesSetter ? host::runtime::setterDeclaration(use.method->declaration) : use.method->declaration;
        Arguments values = arguments(use, form.parameters);
        values.push_back(evaluate(value, form.parameters.back().type));
        call(*use.method, use.usesSetter, self, values, use.name.place);
        return;
    }
    if (use.meaning == Meaning::LibraryCall) {
        callRow(use, &value);
        return;
    }
    if (!use.isElement) {
        store(use, evaluate(value, use.type));
        return;
    }
    Reference element = refer(target);
    element.owner.setAt(element.index, evaluate(value, elementOf(use.type)));
}

Interpreter::Reference Interpreter::refer(const Expression &expression)
{
    const Use &use = std::get<Use>(expression.node);
    if (use.isElement) {
        Value array = notNil(read(use, expression), expression.place);
        const Expression &position = *use.arguments.front();
        int32_t index = integer(position);
        needIndex(array, index, array.count(), position.place);
        return {&use, array, index};
    }
    return {&use, use.storage == Storage::Field ? base(use) : Value(), 0};
}

void Interpreter::assign(const Reference &reference, const Value &value)
{
    const Use &use = *reference.use;
    Value old = value;
    if (use.isElement && reference.index < reference.owner.count())
        Value(reference.owner).setAt(reference.index, value);
    else if (use.storage == Storage::Field)
        std::swap(fieldsOf(reference.owner)[use.slot], old);
    else if (!use.isElement)
        std::swap(slot(use), old);
}

// --- Calls ---------------------------------------------------------------------------------------------------------

Value Interpreter::call(const host::MethodDescription &method, bool usesSetter, const Value &self,
                        const Arguments &arguments, const Place &place)
{
    host::Host &host = host::Host::shared();
    return hosted(place, [&] {
        host::Outcome outcome =
            usesSetter ? host.invokeSetter(method, self, arguments) : host.invoke(method, self, arguments);
        if (!outcome.raised.empty())
            throw Raised{outcome.raised.front().object, place, {}};
        return outcome.result;
    });
}

Value Interpreter::call(const Function &named, const Value &self, const Expressions &arguments, const Place &place)
{
    if (_depth >= kDeepestCall)
        throw raised("RuntimeException", "The calls are nested too deeply.", place);
    // The method of the object's own class, which may have one of its own of that name.
    const Function *function = &named;
    for (const ClassDefinition *each = self.isNil() ? nullptr : definitionOf(self); each; each = each->super) {
        auto own = std::find_if(each->methods.begin(), each->methods.end(), [&](const Function &method) {
            return host::equalIgnoringCase(method.name.text, named.name.text);
        });
        if (own != each->methods.end() && own->parameters.size() == named.parameters.size()) {
            function = &*own;
            break;
        }
    }
    Frame frame;
    frame.locals.resize(function->slots);
    frame.self = self;
    frame.result = initialValue(function->result);
    std::vector<std::pair<size_t, Reference>> references;
    for (size_t i = 0; i < arguments.size(); i++) {
        if (function->parameters[i].isByRef)
            references.emplace_back(i, refer(*arguments[i]));
        frame.locals[i] = evaluate(*arguments[i], function->parameters[i].variable.type);
    }

    Frame *outer = std::exchange(_frame, &frame);
    _depth++;
    // What was passed ByRef gets its new value however the call ends.
    auto leave = [&] {
        _frame = outer;
        _depth--;
        for (const auto &[parameter, reference] : references)
            assign(reference, frame.locals[parameter]);
    };
    try {
        for (size_t i = arguments.size(); i < function->parameters.size(); i++) {
            const Function::Parameter &parameter = function->parameters[i];
            frame.locals[i] = parameter.initial ? evaluate(*parameter.initial, parameter.variable.type)
                                                : initialValue(parameter.variable.type);
        }
        run(function->body);
    } catch (Raised &exception) {
        leave();
        exception.calls.push_back({function->fullName(), place});
        throw;
    } catch (AssertionFailed &failed) {
        leave();
        failed.calls.push_back({function->fullName(), place});
        throw;
    } catch (...) {
        leave();
        throw;
    }
    leave();
    return frame.result;
}

Value Interpreter::visit(const Creation &creation, const Expression &expression)
{
    host::Host &host = host::Host::shared();
    const std::string &name = creation.className.text;
    const Place &place = expression.place;
    auto part = [&](size_t index, int32_t otherwise = 0) {
        return index < creation.arguments.size() ? integer(*creation.arguments[index]) : otherwise;
    };
    switch (creation.way) {
    case Creation::Way::HostConstructor: {
        Arguments values;
        for (size_t i = 0; i < creation.arguments.size(); i++)
            values.push_back(
                evaluate(*creation.arguments[i], creation.hostConstructor->declaration.parameters[i].type));
        return hosted(place, [&] { return host.newObject(name, values); });
    }
    case Creation::Way::DateOfParts:
        return Value::date(part(0), part(1, 1), part(2, 1), part(3), part(4), part(5));
    case Creation::Way::CopyOfDate: {
        Value original = notNil(evaluate(*creation.arguments.front(), expression.type), place);
        Value made = host.newInstance(name);
        made.setProperty("TotalSeconds", original.property("TotalSeconds"));
        return made;
    }
    case Creation::Way::ExceptionWithMessage: {
        Value message = evaluate(*creation.arguments.front(), typeNamed("String"));
        int32_t number = part(1);
        Value made = hosted(place, [&] { return host.newInstance(name); });
        made.setProperty("Message", message);
        made.setProperty("ErrorNumber", number);
        return made;
    }
    case Creation::Way::Plain:
    case Creation::Way::ScriptConstructor:
        break;
    }
    Value made = hosted(place, [&] { return host.newInstance(name); });
    setUpFields(made);
    if (creation.constructor)
        call(*creation.constructor, made, creation.arguments, place);
    return made;
}

} // namespace script
