#include <algorithm>
#include <cmath>
#include <random>

#include "host/runtime/variants.h"
#include "host/script/library.h"
#include "host/script/library/format_number.h"

namespace script::library {

namespace {

template <double (*Function)(double)>
Value real(A a, At)
{
    return Function(a[0].number());
}

template <double (*Function)(double, double)>
Value real2(A a, At)
{
    return Function(a[0].number(), a[1].number());
}

// The number that a text begins with, 0 where there is none.
double numberIn(const std::string &text)
{
    size_t start = std::min(text.find_first_not_of(" \t"), text.size());
    std::string number = text.substr(start);
    if (number.size() > 2 && number[0] == '&') {
        int base = tolower(number[1]) == 'h' ? 16 : tolower(number[1]) == 'o' ? 8 : tolower(number[1]) == 'b' ? 2 : 0;
        return base ? double(strtoull(number.c_str() + 2, nullptr, base)) : 0;
    }
    // Not what the C library also takes: words for infinity, a number with 0x.
    size_t end = std::min(number.find_first_not_of("0123456789.eE+-"), number.size());
    return strtod(number.substr(0, end).c_str(), nullptr);
}

bool isNumeric(const Value &value)
{
    if (!value.isString())
        return value.isNumber();
    std::string text = value.text();
    char *end = nullptr;
    strtod(text.c_str(), &end);
    return !text.empty() && !*end && text.find_first_not_of("0123456789.eE+- ") == std::string::npos;
}

// Of 32 bits for a negative number.
Value inBase(int64_t number, unsigned base)
{
    uint64_t rest = number < 0 ? uint64_t(uint32_t(number)) : uint64_t(number);
    std::string digits;
    do
        digits.insert(0, 1, "0123456789ABCDEF"[rest % base]);
    while (rest /= base);
    return digits;
}

double most(A a, bool wantsLargest)
{
    double result = a[0].number();
    for (const Value &each : a)
        result = wantsLargest ? std::max(result, each.number()) : std::min(result, each.number());
    return result;
}

template <class Operation>
Value bits(A a, Operation operation)
{
    uint64_t result = a[0].uint64();
    for (size_t i = 1; i < a.size(); i++)
        result = operation(result, a[i].uint64());
    return Value(static_cast<unsigned long long>(result));
}

// A number loses the bits that leave its width, which is 64 unless it is told.
Value shifted(A a, bool isLeft)
{
    int shift = a[1].int32(), width = a.size() > 2 ? a[2].int32() : 64;
    uint64_t mask = width >= 64 ? ~uint64_t(0) : (uint64_t(1) << std::max(width, 0)) - 1;
    uint64_t number = shift < 0 || shift >= 64 ? 0 : isLeft ? a[0].uint64() << shift : (a[0].uint64() & mask) >> shift;
    return Value(static_cast<unsigned long long>(number & mask));
}

double random()
{
    static std::mt19937 generator{std::random_device{}()};
    return std::uniform_real_distribution<double>(0, 1)(generator);
}

Value textOf(A a)
{
    return a.size() > 1 ? Value(formattedNumber(host::runtime::variantAsDouble(a[0]), a[1].text()))
                        : host::runtime::variantAsString(a[0]);
}

} // namespace

LibraryRows numberRows()
{
    return {
        {"Abs(number As Double) As Double", real<std::fabs>},
        {"Acos(number As Double) As Double", real<std::acos>},
        {"Asin(number As Double) As Double", real<std::asin>},
        {"Atan(number As Double) As Double", real<std::atan>},
        {"Atan2(y As Double, x As Double) As Double", real2<std::atan2>},
        {"Bin(number As Int64) As String", [](A a, At) { return inBase(a[0].int64(), 2); }},
        {"Shared Bitwise.BitAnd(a As UInt64, b As UInt64, ParamArray more As UInt64) As UInt64",
         [](A a, At) { return bits(a, std::bit_and<uint64_t>()); }},
        {"Shared Bitwise.BitOr(a As UInt64, b As UInt64, ParamArray more As UInt64) As UInt64",
         [](A a, At) { return bits(a, std::bit_or<uint64_t>()); }},
        {"Shared Bitwise.BitXor(a As UInt64, b As UInt64, ParamArray more As UInt64) As UInt64",
         [](A a, At) { return bits(a, std::bit_xor<uint64_t>()); }},
        {"Shared Bitwise.OnesComplement(number As UInt64) As UInt64",
         [](A a, At) { return Value(static_cast<unsigned long long>(~a[0].uint64())); }},
        {"Shared Bitwise.ShiftLeft(number As UInt64, shift As Integer, Optional width As Integer) As UInt64",
         [](A a, At) { return shifted(a, true); }},
        {"Shared Bitwise.ShiftRight(number As UInt64, shift As Integer, Optional width As Integer) As UInt64",
         [](A a, At) { return shifted(a, false); }},
        {"CDbl(Extends text As String) As Double", [](A a, At) { return Value(numberIn(a[0].text())); }},
        {"Ceil(number As Double) As Double", real<std::ceil>},
        {"Cos(angle As Double) As Double", real<std::cos>},
        {"CStr(value As Variant) As String", [](A a, At) { return textOf(a); }},
        {"Exp(number As Double) As Double", real<std::exp>},
        {"Floor(number As Double) As Double", real<std::floor>},
        {"Format(number As Double, pattern As String) As String",
         [](A a, At) { return Value(formattedNumber(a[0].number(), a[1].text())); }},
        {"Hex(number As Int64) As String", [](A a, At) { return inBase(a[0].int64(), 16); }},
        {"IsNumeric(value As Variant) As Boolean", [](A a, At) { return Value(isNumeric(a[0])); }},
        {"Log(number As Double) As Double", real<std::log>},
        {"Max(a As Double, b As Double, ParamArray more As Double) As Double",
         [](A a, At) { return Value(most(a, true)); }},
        {"Min(a As Double, b As Double, ParamArray more As Double) As Double",
         [](A a, At) { return Value(most(a, false)); }},
        {"Oct(number As Int64) As String", [](A a, At) { return inBase(a[0].int64(), 8); }},
        {"Pow(base As Double, exponent As Double) As Double", real2<std::pow>},
        {"Rnd As Double", [](A, At) { return Value(random()); }},
        {"Round(number As Double) As Double", real<std::round>},
        {"Sign(number As Double) As Integer",
         [](A a, At) { return Value(a[0].number() < 0 ? -1 : int(a[0].number() > 0)); }},
        {"Sin(angle As Double) As Double", real<std::sin>},
        {"Sqrt(number As Double) As Double", real<std::sqrt>},
        {"Str(value As Variant, Optional pattern As String) As String", [](A a, At) { return textOf(a); }},
        {"Tan(angle As Double) As Double", real<std::tan>},
        {"Val(Extends text As String) As Double", [](A a, At) { return Value(numberIn(a[0].text())); }},
        {"Variant.IsNumeric As Boolean", [](A a, At) { return Value(isNumeric(a[0])); }},
    };
}

} // namespace script::library
