#include "host/script/builtins.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "host/host.h"
#include "host/runtime/variants.h"
#include "host/script/raised.h"
#include "host/script/text_functions.h"

namespace script {

using host::Arguments;
using host::Value;

namespace {

std::string piece(const std::string &text, int64_t start, int64_t length)
{
    std::vector<std::string> characters = charactersOf(text);
    int64_t end = std::min<int64_t>(start + length, int64_t(characters.size()));
    std::string result;
    for (int64_t i = std::max<int64_t>(start, 0); i < end; i++)
        result += characters[size_t(i)];
    return result;
}

int32_t lengthOf(const std::string &text)
{
    return int32_t(charactersOf(text).size());
}

// From 1; 0 when it is not there. Case makes no difference, as everywhere in the language.
int32_t positionOf(const std::string &text, const std::string &part)
{
    size_t found = lowercase(text).find(lowercase(part));
    return found == std::string::npos ? 0 : lengthOf(text.substr(0, found)) + 1;
}

std::string replacedAll(std::string text, const std::string &old, const std::string &fresh)
{
    for (size_t at = 0; !old.empty() && (at = text.find(old, at)) != std::string::npos; at += fresh.size())
        text.replace(at, old.size(), fresh);
    return text;
}

std::string trimmed(const std::string &text)
{
    size_t first = text.find_first_not_of(" \t\r\n");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

Value split(const std::string &text, const std::string &separator)
{
    Value parts = Value::strings({});
    size_t start = 0;
    for (size_t end; !separator.empty() && (end = text.find(separator, start)) != std::string::npos;
         start = end + separator.size())
        parts.append(text.substr(start, end - start));
    if (!text.empty())
        parts.append(text.substr(start));
    return parts;
}

std::string join(const Value &parts, const std::string &separator)
{
    std::string text;
    for (int32_t i = 0; i < parts.count(); i++)
        text += (i ? separator : "") + parts.at(i).text();
    return text;
}

// Nil when the folder that it lies in does not exist.
Value folderItem(const std::string &path)
{
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(path, error).lexically_normal();
    if (error || !std::filesystem::is_directory(absolute.parent_path(), error))
        return Value();
    return Value::folderItem(absolute);
}

std::string hexadecimal(int64_t number)
{
    char text[20];
    snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(number));
    return number < 0 ? std::string(text + 8) : text; // of 32 bits
}

std::string characterOf(int32_t code)
{
    return Value::string({reinterpret_cast<const char *>(&code), sizeof code}, host::kUTF32).text();
}

struct Row {
    const char *declaration;
    Value (*run)(const Arguments &arguments, const Place &place);
};

// A first argument of text, a second one of text.
std::string first(const Arguments &arguments)
{
    return arguments[0].text();
}

std::string second(const Arguments &arguments)
{
    return arguments[1].text();
}

const Row kRows[] = {
    {"Abs(number As Double) As Double",
     [](const Arguments &a, const Place &) { return Value(std::fabs(a[0].number())); }},
    {"Chr(code As Integer) As String",
     [](const Arguments &a, const Place &) { return Value(characterOf(a[0].int32())); }},
    {"EndOfLine As String", [](const Arguments &, const Place &) { return Value("\n"); }},
    {"Floor(number As Double) As Double",
     [](const Arguments &a, const Place &) { return Value(std::floor(a[0].number())); }},
    {"GetFolderItem(path As String) As FolderItem",
     [](const Arguments &a, const Place &) { return folderItem(first(a)); }},
    {"Hex(number As Int64) As String",
     [](const Arguments &a, const Place &) { return Value(hexadecimal(a[0].int64())); }},
    {"InStr(text As String, find As String) As Integer",
     [](const Arguments &a, const Place &) { return Value(positionOf(first(a), second(a))); }},
    {"Join(parts() As String, separator As String) As String",
     [](const Arguments &a, const Place &) { return Value(join(a[0], second(a))); }},
    {"Left(text As String, count As Integer) As String",
     [](const Arguments &a, const Place &) { return Value(piece(first(a), 0, a[1].int32())); }},
    {"Len(text As String) As Integer", [](const Arguments &a, const Place &) { return Value(lengthOf(first(a))); }},
    {"LenB(text As String) As Integer",
     [](const Arguments &a, const Place &) { return Value(int32_t(a[0].bytes().size())); }},
    {"Lowercase(text As String) As String",
     [](const Arguments &a, const Place &) { return Value(lowercase(first(a))); }},
    {"Max(a As Double, b As Double) As Double",
     [](const Arguments &a, const Place &) { return Value(std::max(a[0].number(), a[1].number())); }},
    {"Mid(text As String, start As Integer) As String",
     [](const Arguments &a, const Place &) { return Value(piece(first(a), a[1].int64() - 1, 0x7FFFFFFF)); }},
    {"Mid(text As String, start As Integer, count As Integer) As String",
     [](const Arguments &a, const Place &) { return Value(piece(first(a), a[1].int64() - 1, a[2].int32())); }},
    {"Min(a As Double, b As Double) As Double",
     [](const Arguments &a, const Place &) { return Value(std::min(a[0].number(), a[1].number())); }},
    {"ReplaceAll(text As String, old As String, fresh As String) As String",
     [](const Arguments &a, const Place &) { return Value(replacedAll(first(a), second(a), a[2].text())); }},
    {"RGB(red As Integer, green As Integer, blue As Integer) As Color",
     [](const Arguments &a, const Place &) {
         return Value::color(uint32_t((a[0].int32() & 255) << 16 | (a[1].int32() & 255) << 8 | (a[2].int32() & 255)));
     }},
    {"Right(text As String, count As Integer) As String",
     [](const Arguments &a, const Place &) {
         return Value(piece(first(a), std::max<int64_t>(int64_t(lengthOf(first(a))) - a[1].int32(), 0), 0x7FFFFFFF));
     }},
    {"Round(number As Double) As Double",
     [](const Arguments &a, const Place &) { return Value(std::round(a[0].number())); }},
    {"Split(text As String, separator As String) As String()",
     [](const Arguments &a, const Place &) { return split(first(a), second(a)); }},
    {"Str(value As Variant) As String",
     [](const Arguments &a, const Place &) { return host::runtime::variantAsString(a[0]); }},
    {"Trim(text As String) As String", [](const Arguments &a, const Place &) { return Value(trimmed(first(a))); }},
    {"Uppercase(text As String) As String",
     [](const Arguments &a, const Place &) { return Value(uppercase(first(a))); }},
    {"Val(text As String) As Double",
     [](const Arguments &a, const Place &) { return Value(host::runtime::variantAsDouble(a[0])); }},
    {"VarType(value As Variant) As Integer",
     [](const Arguments &a, const Place &place) {
         return hosted(place, [&] { return host::Host::shared().callGlobal("VarType", {a[0]}); });
     }},
};

bool areEqual(const Value &a, const Value &b)
{
    return a.isString() && b.isString() ? compareText(a.text(), b.text()) == 0 : a.equals(b);
}

Value sorted(Value array)
{
    std::vector<Value> elements;
    for (int32_t i = 0; i < array.count(); i++)
        elements.push_back(array.at(i));
    std::stable_sort(elements.begin(), elements.end(), [](const Value &a, const Value &b) {
        if (a.isString() && b.isString())
            return compareText(a.text(), b.text()) < 0;
        return host::runtime::variantAsDouble(a) < host::runtime::variantAsDouble(b);
    });
    for (int32_t i = 0; i < array.count(); i++)
        array.setAt(i, elements[size_t(i)]);
    return Value();
}

} // namespace

const std::vector<Builtin> &builtins()
{
    static const std::vector<Builtin> *all = [] {
        auto *made = new std::vector<Builtin>;
        for (const Row &row : kRows)
            made->push_back({row.declaration, host::parseDeclaration(row.declaration), row.run});
        return made;
    }();
    return *all;
}

const std::vector<ArrayMember> &arrayMembers()
{
    static const std::vector<ArrayMember> members = {
        {"Append", ArrayOperation::Append, "e", ' '},   {"Insert", ArrayOperation::Insert, "ie", ' '},
        {"Remove", ArrayOperation::Remove, "i", ' '},   {"Pop", ArrayOperation::Pop, "", 'e'},
        {"IndexOf", ArrayOperation::IndexOf, "e", 'i'}, {"Ubound", ArrayOperation::Ubound, "", 'i'},
        {"Sort", ArrayOperation::Sort, "", ' '},
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

Value runArrayMember(ArrayOperation operation, Value array, const Arguments &arguments, const Place &place)
{
    switch (operation) {
    case ArrayOperation::Append:
        array.append(arguments[0]);
        return Value();
    case ArrayOperation::Insert:
        needIndex(array, arguments[0].int32(), array.count() + 1, place);
        array.insert(arguments[0].int32(), arguments[1]);
        return Value();
    case ArrayOperation::Remove:
        needIndex(array, arguments[0].int32(), array.count(), place);
        array.removeAt(arguments[0].int32());
        return Value();
    case ArrayOperation::Pop: {
        needIndex(array, array.count() - 1, array.count(), place);
        Value last = array.at(array.count() - 1);
        array.removeAt(array.count() - 1);
        return last;
    }
    case ArrayOperation::IndexOf:
        for (int32_t i = 0; i < array.count(); i++)
            if (areEqual(array.at(i), arguments[0]))
                return Value(i);
        return Value(-1);
    case ArrayOperation::Ubound:
        return Value(array.count() - 1);
    case ArrayOperation::Sort:
        return sorted(array);
    }
    return Value();
}

} // namespace script
