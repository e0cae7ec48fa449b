#include "host/runtime/overloads.h"

#include "host/exception.h"
#include "host/runtime/arrays.h"
#include "host/runtime/passing.h"

namespace host::runtime {

namespace {

bool fitsInteger(const PassingFacts &facts, const Value &value)
{
    if (value.kind() == Value::Kind::UInt64)
        return value.uint64() <= facts.largest;
    try {
        int64_t number = value.int64();
        return number >= facts.smallest && (number < 0 || uint64_t(number) <= facts.largest);
    } catch (const TypeError &) {
        return false;
    }
}

int rankOfNumber(const PassingFacts &facts, const Value &value)
{
    if (!value.isNumber())
        return 0;
    if (facts.isInteger() && !fitsInteger(facts, value))
        return 0;
    return value.kind() == facts.kind ? 2 : 1;
}

int rankOfArray(const DeclaredType &type, const Value &value)
{
    if (value.isNil())
        return 1;
    return value.isArray() && value.elementType() == elementTypeOf(type) ? 2 : 0;
}

int rankOfObject(const DeclaredType &type, const Value &value)
{
    if (value.isNil())
        return 1;
    bool fits =
        value.isObject() && (equalIgnoringCase(type.name, "Object") || type.name.empty() || value.isA(type.name));
    return fits ? 2 : 0;
}

std::string nameForMessage(const DeclaredType &type)
{
    if (type.isArray)
        return "an array of " + std::string(elementName(elementTypeOf(type)));
    if (!type.name.empty())
        return type.text();
    return type.passing == Passing::String ? "string" : "a value of the declared type";
}

std::string valueForMessage(const Value &value)
{
    bool isPlain = value.isNumber() || value.isString() || value.kind() == Value::Kind::Boolean;
    return isPlain ? value.typeName() + " " + value.describe() : value.typeName();
}

std::string ordinal(size_t index)
{
    static const char *const names[] = {"first", "second", "third", "fourth", "fifth"};
    return index < std::size(names) ? names[index] : std::to_string(index + 1) + "th";
}

std::string countText(size_t count)
{
    return count == 0 ? "no arguments" : count == 1 ? "1 argument" : std::to_string(count) + " arguments";
}

// 0 when the arguments do not fit.
int rankOfCall(const Declaration &declaration, const Arguments &arguments)
{
    if (declaration.parameters.size() != arguments.size())
        return 0;
    int sum = 1;
    for (size_t i = 0; i < arguments.size(); ++i) {
        int rank = rankOf(declaration.parameters[i].type, arguments[i]);
        if (!rank)
            return 0;
        sum += rank;
    }
    return sum;
}

} // namespace

int rankOf(const DeclaredType &type, const Value &given, std::string *why)
{
    int rank = 0;
    Value value = type.isArray ? given : unboxed(given);
    const PassingFacts &facts = factsOf(type.passing);
    if (type.isArray)
        rank = rankOfArray(type, value);
    else if (type.passing == Passing::Object)
        rank = rankOfObject(type, value);
    else if (type.passing == Passing::Variant)
        rank = 1;
    else if (type.passing == Passing::String)
        rank = value.isString() ? 2 : value.isNil() ? 1 : 0;
    else if (type.passing == Passing::Pointer)
        rank = value.isNil() ? 2 : 0;
    else if (type.passing == Passing::Boolean || type.passing == Passing::Color)
        rank = value.kind() == facts.kind ? 2 : 0;
    else if (type.passing != Passing::Nothing)
        rank = rankOfNumber(facts, value);
    if (!rank && why)
        *why = "must be " + nameForMessage(type) + ", not " + valueForMessage(value);
    return rank;
}

void checkArguments(const Declaration &declaration, const Arguments &arguments)
{
    if (declaration.parameters.size() != arguments.size())
        throw CallError(declaration.text() + ": takes " + countText(declaration.parameters.size()) + ", not " +
                        std::to_string(arguments.size()));
    for (size_t i = 0; i < arguments.size(); ++i) {
        std::string why;
        if (!rankOf(declaration.parameters[i].type, arguments[i], &why))
            throw TypeError(declaration.text() + ": the " + ordinal(i) + " argument, " +
                            declaration.parameters[i].name + ", " + why);
    }
}

const MethodDescription &chooseOverload(const std::vector<const MethodDescription *> &candidates,
                                        const Arguments &arguments, const std::string &what)
{
    if (candidates.empty())
        throw CallError("there is no " + what);
    const MethodDescription *best = nullptr;
    const MethodDescription *ofThatLength = nullptr;
    int bestRank = 0;
    for (const MethodDescription *candidate : candidates) {
        if (candidate->declaration.parameters.size() == arguments.size() && !ofThatLength)
            ofThatLength = candidate;
        int rank = rankOfCall(candidate->declaration, arguments);
        if (rank > bestRank) {
            best = candidate;
            bestRank = rank;
        }
    }
    if (best)
        return *best;
    // The message speaks of the overload that was most probably meant.
    checkArguments((ofThatLength ? ofThatLength : candidates.front())->declaration, arguments);
    throw CallError(what + ": no overload fits the arguments");
}

} // namespace host::runtime
