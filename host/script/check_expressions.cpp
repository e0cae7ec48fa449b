// Types of expressions.
#include <algorithm>

#include "host/host.h"
#include "host/runtime/arrays.h"
#include "host/runtime/objects.h"
#include "host/script/checker.h"
#include "host/script/host_members.h"

namespace script {

Type Checker::check(Expression &expression, const Type *wanted)
{
    expression.type = std::visit([&](auto &node) { return visit(node, expression, wanted); }, expression.node);
    return expression.type;
}

void Checker::needValue(Expression &expression)
{
    if (isNothing(check(expression)))
        fail(expression.place, "this gives no value");
}

// An integer that is written out and does not fit, which would lose its high bits.
static const host::Value *integerOf(const Expression &expression, bool &isNegative)
{
    if (auto *unary = std::get_if<Unary>(&expression.node); unary && unary->operation == Operator::Negate) {
        isNegative = !isNegative;
        return integerOf(*unary->operand, isNegative);
    }
    auto *literal = std::get_if<Literal>(&expression.node);
    return literal && isInteger(script::typeOf(literal->value)) ? &literal->value : nullptr;
}

static bool isOutside(const Expression &expression, const Type &declared)
{
    bool isNegative = false;
    const host::Value *value = integerOf(expression, isNegative);
    if (!value || !isInteger(declared))
        return false;
    host::Value given = isNegative ? host::Value(static_cast<long long>(-value->int64())) : *value;
    return !converted(given, declared, expression.place).equals(given);
}

void Checker::need(Expression &expression, const Type &declared, const std::string &what)
{
    Type given = check(expression, &declared);
    if (!fit(declared, given))
        fail(expression.place, what + " must be " + articleAndName(declared) + ", not " + articleAndName(given));
    if (isOutside(expression, declared))
        fail(expression.place, what + " does not fit " + articleAndName(declared));
}

Type Checker::visit(Literal &literal, Expression &, const Type *)
{
    return script::typeOf(literal.value);
}

Type Checker::visit(SelfObject &, Expression &expression, const Type *)
{
    if (!_function || !_function->owner)
        fail(expression.place, "Self is known in the methods of a class only");
    return classType(_function->owner->name.text);
}

Type Checker::visit(ArrayLiteral &literal, Expression &, const Type *wanted)
{
    if (wanted && wanted->isArray) {
        for (ExpressionPtr &element : literal.elements)
            need(*element, elementOf(*wanted), "an element");
        return *wanted;
    }
    Type element = typeNamed("Variant");
    for (size_t i = 0; i < literal.elements.size(); i++) {
        needValue(*literal.elements[i]);
        const Type &type = literal.elements[i]->type;
        if (i == 0 && !type.isArray && !isNil(type))
            element = type;
        else if (type != element)
            element = typeNamed("Variant");
    }
    return arrayOf(element);
}

Type Checker::visit(Use &use, Expression &expression, const Type *)
{
    return resolve(use, expression, nullptr);
}

// --- Operators -----------------------------------------------------------------------------------------------------

static bool isArithmetic(const Type &type)
{
    return isNumber(type) || isVariant(type);
}

static bool isLogical(const Type &type)
{
    return isBoolean(type) || isInteger(type) || isVariant(type);
}

// The type in which two numbers are added: the one with the wider range.
static Type common(const Type &a, const Type &b)
{
    if (isVariant(a) || isVariant(b))
        return typeNamed("Variant");
    if (!isInteger(a) || !isInteger(b))
        return typeNamed("Double");
    auto widthOf = [](const Type &type) {
        return type.passing == host::Passing::UInt64                                           ? 2
               : type.passing == host::Passing::Int64 || type.passing == host::Passing::UInt32 ? 1
                                                                                               : 0;
    };
    static const char *const names[] = {"Integer", "Int64", "UInt64"};
    return typeNamed(names[std::max(widthOf(a), widthOf(b))]);
}

static bool canBeEqual(const Type &a, const Type &b)
{
    return isVariant(a) || isVariant(b) || fit(a, b) || fit(b, a);
}

bool canBeOrdered(const Type &a, const Type &b)
{
    bool bothNumbers = isArithmetic(a) && isArithmetic(b);
    bool bothTexts = (isString(a) || isVariant(a)) && (isString(b) || isVariant(b));
    return bothNumbers || bothTexts || (isDate(a) && isDate(b));
}

Type Checker::visit(Unary &unary, Expression &, const Type *)
{
    needValue(*unary.operand);
    const Type &type = unary.operand->type;
    if (unary.operation == Operator::Not) {
        if (!isLogical(type))
            fail(unary.operand->place, "Not needs a Boolean, not " + articleAndName(type));
        return isInteger(type) ? type : typeNamed("Boolean");
    }
    if (!isArithmetic(type))
        fail(unary.operand->place, "- needs a number, not " + articleAndName(type));
    return isInteger(type) ? common(type, typeNamed("Integer")) : type;
}

static const char *textOf(Operator operation)
{
    static const char *const texts[] = {"+",  "-", "*",  "/",  "\\",  "Mod", "^",   "=",   "<>", "<",
                                        "<=", ">", ">=", "Is", "And", "Or",  "Xor", "Not", "-"};
    return texts[size_t(operation)];
}

Type Checker::visit(Binary &binary, Expression &, const Type *)
{
    needValue(*binary.left);
    needValue(*binary.right);
    const Type &left = binary.left->type;
    const Type &right = binary.right->type;
    auto refuse = [&](const char *wanted) {
        fail(binary.place, std::string(textOf(binary.operation)) + " needs " + wanted + ", not " +
                               articleAndName(left) + " and " + articleAndName(right));
    };
    const bool adds = binary.operation == Operator::Add, areNumbers = isArithmetic(left) && isArithmetic(right);
    switch (binary.operation) {
    case Operator::Add:
    case Operator::Subtract:
    case Operator::Multiply:
    case Operator::Divide:
    case Operator::Power:
    case Operator::IntegerDivide:
    case Operator::Modulo: {
        bool areTexts = adds && (isString(left) || isString(right));
        if (areTexts ? !canBeOrdered(left, right) : !areNumbers)
            refuse(adds ? "two numbers or two texts" : "two numbers");
        if (areTexts)
            return typeNamed("String");
        if (binary.operation == Operator::Divide || binary.operation == Operator::Power)
            return typeNamed("Double");
        Type type = common(left, right);
        return isInteger(type) || binary.operation <= Operator::Multiply ? type : typeNamed("Int64");
    }
    case Operator::Equal:
    case Operator::Unequal:
        if (!canBeEqual(left, right))
            refuse("values of one type");
        break;
    case Operator::Less:
    case Operator::LessOrEqual:
    case Operator::Greater:
    case Operator::GreaterOrEqual:
        if (!canBeOrdered(left, right))
            refuse("two numbers, two texts or two Dates");
        break;
    case Operator::Is: {
        auto isReference = [](const Type &type) {
            return isObject(type) || type.isArray || isNil(type) || isVariant(type);
        };
        if (!isReference(left) || !isReference(right))
            refuse("two objects");
        break;
    }
    default:
        if (!isLogical(left) || !isLogical(right) || isInteger(left) != isInteger(right))
            refuse("two Booleans or two integers");
        return isInteger(left) ? common(left, right) : typeNamed("Boolean");
    }
    return typeNamed("Boolean");
}

// The type that both values fit: of numbers the wider one.
Type Checker::visit(Conditional &choice, Expression &expression, const Type *wanted)
{
    need(*choice.condition, typeNamed("Boolean"), "the condition");
    for (Expression *value : {choice.yes.get(), choice.no.get()})
        if (isNothing(check(*value, wanted)))
            fail(value->place, "this gives no value");
    const Type &yes = choice.yes->type;
    const Type &no = choice.no->type;
    if (yes == no)
        return yes;
    if (isNumber(yes) && isNumber(no))
        return common(yes, no);
    if (fit(yes, no) || fit(no, yes))
        return fit(yes, no) ? yes : no;
    fail(expression.place,
         "If(…) needs two values of one type, not " + articleAndName(yes) + " and " + articleAndName(no));
}

Type Checker::visit(TypeTest &test, Expression &, const Type *)
{
    needValue(*test.operand);
    const Type &type = test.operand->type;
    if (!isClass(test.className.text))
        unknownClass(test.className);
    if (!isObject(type) && !isVariant(type) && !isNil(type))
        fail(test.operand->place, "IsA needs an object, not " + articleAndName(type));
    return typeNamed("Boolean");
}

// --- New -----------------------------------------------------------------------------------------------------------

Type Checker::visit(Creation &creation, Expression &expression, const Type *)
{
    const std::string &name = creation.className.text;
    const host::runtime::Class *made = host::runtime::findClass(name);
    if (!made || host::equalIgnoringCase(name, "Variant")) {
        unknownClass(creation.className);
    }
    Type type = classType(made->name);
    std::vector<Candidate> candidates;
    if (Function *constructor = findMethod(_symbols.definitionOf(name), "Constructor")) {
        creation.way = Creation::Way::ScriptConstructor;
        creation.constructor = constructor;
        candidates.push_back(candidateFor(*constructor));
    } else {
        for (const host::MethodDescription *method : host::runtime::methodsNamed(*made, "Constructor", false))
            candidates.push_back(candidateFor(*method));
        if (!candidates.empty())
            creation.way = Creation::Way::HostConstructor;
    }
    const Type integer = typeNamed("Integer");
    if (candidates.empty() && isDate(type) && !creation.arguments.empty()) {
        creation.way = Creation::Way::DateOfParts;
        Candidate parts{{}, nothing(), "Date(year, month, day, hour, minute, second)", 1};
        for (const char *part : {"year", "month", "day", "hour", "minute", "second"})
            parts.parameters.push_back({part, integer});
        candidates = {parts, {{{"date", type}}, nothing(), "Date(date)", 1}};
    }
    if (candidates.empty() && fit(classType("RuntimeException"), type) && !creation.arguments.empty()) {
        creation.way = Creation::Way::ExceptionWithMessage;
        candidates = {{{{"message", typeNamed("String")}, {"errorNumber", integer}},
                       nothing(),
                       made->name + "(message, errorNumber)",
                       1}};
    }
    if (candidates.empty()) {
        creation.way = Creation::Way::Plain;
        if (!creation.arguments.empty())
            fail(expression.place, made->name + " has no constructor with arguments");
        return type;
    }
    // An instance without a constructor called is what a class gives that has none without parameters.
    bool takesNone = std::any_of(candidates.begin(), candidates.end(),
                                 [](const Candidate &candidate) { return candidate.required == 0; });
    if (creation.arguments.empty() && !takesNone && creation.way == Creation::Way::HostConstructor) {
        creation.way = Creation::Way::Plain;
        return type;
    }
    const Candidate &chosen = choose(candidates, creation.arguments, nullptr, creation.className);
    for (size_t i = 0; i < creation.arguments.size(); i++)
        need(*creation.arguments[i], chosen.parameters[i].type, chosen.text + ": " + chosen.parameters[i].name);
    if (creation.way == Creation::Way::DateOfParts && isDate(chosen.parameters.front().type))
        creation.way = Creation::Way::CopyOfDate;
    creation.hostConstructor = chosen.method;
    return type;
}

} // namespace script
