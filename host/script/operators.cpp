#include <cmath>

#include "host/runtime/variants.h"
#include "host/script/arrays.h"
#include "host/script/interpreter.h"
#include "host/script/text_functions.h"
#include "host/script/types.h"

namespace script {

using host::Value;
using host::runtime::variantAsBoolean;
using host::runtime::variantAsDouble;
using host::runtime::variantAsInt64;

static bool isReal(const Value &value)
{
    return value.isString() || (value.isNumber() && value.kind() >= Value::Kind::Single);
}

// With the low bits of what does not fit.
static Value integerResult(Operator operation, int64_t left, int64_t right, const Type &type, const Place &place)
{
    uint64_t a = uint64_t(left), b = uint64_t(right);
    bool divides = operation == Operator::IntegerDivide || operation == Operator::Modulo;
    if (divides && right == 0)
        throw raised("RuntimeException", "Division by zero.", place);
    auto result = [=] {
        switch (operation) {
        case Operator::Add:
            return a + b;
        case Operator::Subtract:
            return a - b;
        case Operator::Multiply:
            return a * b;
        case Operator::IntegerDivide:
            return right == -1 ? 0 - a : uint64_t(left / right);
        case Operator::Modulo:
            return right == -1 ? 0 : uint64_t(left % right);
        case Operator::And:
            return a & b;
        case Operator::Or:
            return a | b;
        default:
            return a ^ b;
        }
    };
    return converted(Value(int64_t(result())), type, place);
}

static Value realResult(Operator operation, double left, double right)
{
    switch (operation) {
    case Operator::Add:
        return Value(left + right);
    case Operator::Subtract:
        return Value(left - right);
    case Operator::Multiply:
        return Value(left * right);
    case Operator::Divide:
        return Value(left / right);
    default:
        return Value(std::pow(left, right));
    }
}

// Below 0, 0 or above 0; anything but that for not-a-number.
static double order(const Value &left, const Value &right)
{
    if (left.isString() && right.isString())
        return compareText(left.text(), right.text());
    if (left.isA("Date") && right.isA("Date"))
        return left.property("TotalSeconds").number() - right.property("TotalSeconds").number();
    bool areIntegers = !isReal(left) && !isReal(right);
    if (areIntegers) {
        int64_t a = variantAsInt64(left), b = variantAsInt64(right);
        return a < b ? -1 : a > b;
    }
    double a = variantAsDouble(left), b = variantAsDouble(right);
    return a < b ? -1 : a > b ? 1 : a == b ? 0 : std::nan("");
}

Value operated(Operator operation, const Value &left, const Value &right, const Type &type, const Place &place)
{
    switch (operation) {
    case Operator::Equal:
        return areEqual(left, right);
    case Operator::Unequal:
        return !areEqual(left, right);
    case Operator::Less:
        return order(left, right) < 0;
    case Operator::LessOrEqual:
        return order(left, right) <= 0;
    case Operator::Greater:
        return order(left, right) > 0;
    case Operator::GreaterOrEqual:
        return order(left, right) >= 0;
    case Operator::Is:
        return left.isNil() || right.isNil() ? left.isNil() && right.isNil() : left.sameHandle(right);
    case Operator::Add:
        if (isString(type) || (left.isString() && right.isString()))
            return host::runtime::variantAsString(left).text() + host::runtime::variantAsString(right).text();
        break;
    case Operator::And:
    case Operator::Or:
    case Operator::Xor:
        if (isBoolean(type)) {
            bool a = variantAsBoolean(left), b = variantAsBoolean(right);
            return operation == Operator::And ? a && b : operation == Operator::Or ? a || b : a != b;
        }
        break;
    default:
        break;
    }
    bool isIntegral = isInteger(type) || (isVariant(type) && !isReal(left) && !isReal(right));
    if (!isIntegral)
        return realResult(operation, variantAsDouble(left), variantAsDouble(right));
    bool fitsInteger = left.kind() != Value::Kind::Int64 && right.kind() != Value::Kind::Int64;
    Type result = !isVariant(type) ? type : typeNamed(fitsInteger ? "Integer" : "Int64");
    return integerResult(operation, variantAsInt64(left), variantAsInt64(right), result, place);
}

} // namespace script
