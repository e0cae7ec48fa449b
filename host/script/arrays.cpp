#include "host/script/arrays.h"

#include <algorithm>
#include <random>

#include "host/runtime/variants.h"
#include "host/script/raised.h"
#include "host/script/text_functions.h"

namespace script {

using host::Arguments;
using host::Value;

bool areEqual(const Value &a, const Value &b)
{
    return a.isString() && b.isString() ? compareText(a.text(), b.text()) == 0 : a.equals(b);
}

static std::vector<Value> elementsOf(const Value &array)
{
    std::vector<Value> elements;
    for (int32_t i = 0; i < array.count(); i++)
        elements.push_back(array.at(i));
    return elements;
}

static Value filled(Value array, const std::vector<Value> &elements)
{
    for (int32_t i = 0; i < array.count(); i++)
        array.setAt(i, elements[size_t(i)]);
    return Value();
}

static Value append(Value array, const Arguments &arguments, const Place &)
{
    array.append(arguments[0]);
    return Value();
}

static Value insert(Value array, const Arguments &arguments, const Place &place)
{
    needIndex(array, arguments[0].int32(), array.count() + 1, place);
    array.insert(arguments[0].int32(), arguments[1]);
    return Value();
}

static Value remove(Value array, const Arguments &arguments, const Place &place)
{
    needIndex(array, arguments[0].int32(), array.count(), place);
    array.removeAt(arguments[0].int32());
    return Value();
}

static Value pop(Value array, const Arguments &, const Place &place)
{
    needIndex(array, array.count() - 1, array.count(), place);
    Value last = array.at(array.count() - 1);
    array.removeAt(array.count() - 1);
    return last;
}

static Value indexOf(Value array, const Arguments &arguments, const Place &)
{
    for (int32_t i = arguments.size() > 1 ? std::max(arguments[1].int32(), 0) : 0; i < array.count(); i++)
        if (areEqual(array.at(i), arguments[0]))
            return Value(i);
    return Value(-1);
}

static Value upperBound(Value array, const Arguments &, const Place &)
{
    return Value(array.count() - 1);
}

static Value sort(Value array, const Arguments &, const Place &)
{
    std::vector<Value> elements = elementsOf(array);
    std::stable_sort(elements.begin(), elements.end(), [](const Value &a, const Value &b) {
        if (a.isString() && b.isString())
            return compareText(a.text(), b.text()) < 0;
        return host::runtime::variantAsDouble(a) < host::runtime::variantAsDouble(b);
    });
    return filled(array, elements);
}

static Value shuffle(Value array, const Arguments &, const Place &)
{
    static std::mt19937 random{std::random_device{}()};
    std::vector<Value> elements = elementsOf(array);
    std::shuffle(elements.begin(), elements.end(), random);
    return filled(array, elements);
}

const std::vector<ArrayMember> &arrayMembers()
{
    static const std::vector<ArrayMember> members = {
        {"Append", "e", ' ', append}, {"Insert", "ie", ' ', insert},    {"Remove", "i", ' ', remove},
        {"Pop", "", 'e', pop},        {"IndexOf", "e?i", 'i', indexOf}, {"Ubound", "", 'i', upperBound},
        {"Sort", "", ' ', sort},      {"Shuffle", "", ' ', shuffle},
    };
    return members;
}

const ArrayMember *arrayMember(const std::string &name)
{
    for (const ArrayMember &member : arrayMembers())
        if (host::equalIgnoringCase(member.name, name))
            return &member;
    return nullptr;
}

void needIndex(const Value &array, int32_t index, int32_t end, const Place &place)
{
    if (index < 0 || index >= end)
        throw raised("OutOfBoundsException",
                     "The index is " + std::to_string(index) + ", and the array's upper bound is " +
                         std::to_string(array.count() - 1) + ".",
                     place);
}

} // namespace script
