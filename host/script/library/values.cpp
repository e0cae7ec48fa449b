// Variants, colours, and the numbers by which VarType tells types.
#include "host/script/library.h"

namespace script::library {

namespace {

template <int shift>
Value partOf(A a, At)
{
    return Value(int32_t(a[0].colorValue() >> shift & 255));
}

Value mixed(A a, At)
{
    auto part = [&](size_t index) { return uint32_t(a[index].int32() & 255); };
    return Value::color(part(0) << 16 | part(1) << 8 | part(2));
}

} // namespace

LibraryRows valueRows()
{
    return {
        {"Color.Red As Integer", partOf<16>},
        {"Color.Green As Integer", partOf<8>},
        {"Color.Blue As Integer", partOf<0>},
        {"RGB(red As Integer, green As Integer, blue As Integer) As Color", mixed},
        {"VarType(value As Variant) As Integer",
         [](A a, At place) {
             return hosted(place, [&] { return host::Host::shared().callGlobal("VarType", {a[0]}); });
         }},
        {"Variant.IsArray As Boolean", [](A a, At) { return Value(a[0].isArray()); }},
        {"Variant.IsNull As Boolean", [](A a, At) { return Value(a[0].isNil()); }},
        {"Shared Variant.TypeArray As Integer", constant<4096>},
        {"Shared Variant.TypeBoolean As Integer", constant<11>},
        {"Shared Variant.TypeColor As Integer", constant<16>},
        {"Shared Variant.TypeCurrency As Integer", constant<6>},
        {"Shared Variant.TypeDate As Integer", constant<7>},
        {"Shared Variant.TypeDouble As Integer", constant<5>},
        {"Shared Variant.TypeInteger As Integer", constant<2>},
        {"Shared Variant.TypeLong As Integer", constant<3>},
        {"Shared Variant.TypeNil As Integer", constant<0>},
        {"Shared Variant.TypeObject As Integer", constant<9>},
        {"Shared Variant.TypeSingle As Integer", constant<4>},
        {"Shared Variant.TypeString As Integer", constant<8>},
    };
}

} // namespace script::library
