#include "host/declaration.h"

#include <algorithm>
#include <cctype>

namespace host {

namespace {

struct NamedType {
    const char *name;
    Passing passing;
};

// Of several names for one type the usual one comes first.
const NamedType kTypes[] = {
    {"Integer", Passing::Int32},   {"Int32", Passing::Int32},       {"UInt32", Passing::UInt32},
    {"UInteger", Passing::UInt32}, {"Int8", Passing::Int8},         {"Byte", Passing::UInt8},
    {"UInt8", Passing::UInt8},     {"Int16", Passing::Int16},       {"UInt16", Passing::UInt16},
    {"Int64", Passing::Int64},     {"UInt64", Passing::UInt64},     {"Single", Passing::Single},
    {"Double", Passing::Double},   {"Currency", Passing::Currency}, {"Boolean", Passing::Boolean},
    {"Color", Passing::Color},     {"String", Passing::String},     {"Variant", Passing::Variant},
    {"Ptr", Passing::Pointer},
};

char lower(char c)
{
    return char(tolower(static_cast<unsigned char>(c)));
}

bool isNameCharacter(char c)
{
    return isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

// Reads a declaration from left to right; each read skips the blanks before what it reads.
class Reader {
public:
    explicit Reader(std::string_view text) : _text(text) {}

    bool atEnd()
    {
        skipBlanks();
        return _place == _text.size();
    }

    bool take(char c)
    {
        if (atEnd() || _text[_place] != c)
            return false;
        ++_place;
        return true;
    }

    void need(char c)
    {
        if (!take(c))
            fail(std::string("\"") + c + "\"");
    }

    // A word of the language, any case; only when it ends there.
    bool takeWord(std::string_view word)
    {
        skipBlanks();
        if (!equalIgnoringCase(peekName(), word))
            return false;
        _place += word.size();
        return true;
    }

    std::string needName(const char *what)
    {
        skipBlanks();
        std::string_view name = peekName();
        if (name.empty() || isdigit(static_cast<unsigned char>(name.front())))
            fail(what);
        _place += name.size();
        return std::string(name);
    }

    bool takeBrackets()
    {
        if (!take('('))
            return false;
        need(')');
        return true;
    }

    [[noreturn]] void fail(const std::string &expected)
    {
        throw DeclarationError("\"" + std::string(_text) + "\", character " + std::to_string(_place + 1) + ": " +
                               expected + " expected" + (_place == _text.size() ? " before the end" : ""));
    }

private:
    void skipBlanks()
    {
        while (_place < _text.size() && isspace(static_cast<unsigned char>(_text[_place])))
            ++_place;
    }

    std::string_view peekName() const
    {
        size_t end = _place;
        while (end < _text.size() && isNameCharacter(_text[end]))
            ++end;
        return _text.substr(_place, end - _place);
    }

    std::string_view _text;
    size_t _place = 0;
};

Parameter readParameter(Reader &reader, bool &assigns)
{
    Parameter parameter;
    assigns = reader.takeWord("Assigns");
    reader.takeWord("ByVal");
    parameter.name = reader.needName("the name of a parameter");
    bool isArray = reader.takeBrackets();
    if (!reader.takeWord("As"))
        reader.fail("\"As\"");
    std::string type = reader.needName("the type of a parameter");
    isArray = reader.takeBrackets() || isArray;
    parameter.type = declaredType(type, isArray);
    return parameter;
}

} // namespace

bool equalIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

DeclaredType declaredType(std::string_view name, bool isArray)
{
    DeclaredType type;
    type.name = name;
    type.isArray = isArray;
    type.passing = Passing::Object;
    for (const NamedType &known : kTypes)
        if (equalIgnoringCase(known.name, name))
            type.passing = known.passing;
    return type;
}

std::string usualName(Passing passing)
{
    for (const NamedType &known : kTypes)
        if (known.passing == passing)
            return known.name;
    return "";
}

bool DeclaredType::operator==(const DeclaredType &other) const
{
    if (passing != other.passing || isArray != other.isArray)
        return false;
    return passing != Passing::Object || equalIgnoringCase(name, other.name);
}

std::string DeclaredType::text() const
{
    std::string text;
    for (char c : name)
        text += passing == Passing::Object ? c : lower(c);
    return isArray ? text + "()" : text;
}

bool Declaration::matches(const Declaration &other) const
{
    return equalIgnoringCase(name, other.name) && assigns == other.assigns && result == other.result &&
           std::equal(parameters.begin(), parameters.end(), other.parameters.begin(), other.parameters.end(),
                      [](const Parameter &a, const Parameter &b) { return a.type == b.type; });
}

std::string Declaration::text() const
{
    std::string text = name;
    if (!parameters.empty()) {
        text += "(";
        for (const Parameter &parameter : parameters) {
            if (&parameter != &parameters.front())
                text += ", ";
            if (assigns && &parameter == &parameters.back())
                text += "assigns ";
            text += parameter.name + (parameter.type.isArray ? "()" : "") + " as " +
                    declaredType(parameter.type.name).text();
        }
        text += ")";
    }
    return result.passing == Passing::Nothing ? text : text + " as " + result.text();
}

Declaration parseDeclaration(std::string_view text)
{
    Reader reader(text);
    Declaration declaration;
    declaration.name = reader.needName("the name of a method");
    bool named = !(equalIgnoringCase(declaration.name, "Sub") || equalIgnoringCase(declaration.name, "Function"));
    if (!named && !reader.atEnd())
        declaration.name = reader.needName("the name of a method");
    if (reader.take('(') && !reader.take(')')) {
        do {
            if (declaration.assigns)
                reader.fail("\")\" behind the assigned value");
            declaration.parameters.push_back(readParameter(reader, declaration.assigns));
        } while (reader.take(','));
        reader.need(')');
    }
    if (reader.takeWord("As")) {
        std::string type = reader.needName("the type of the result");
        declaration.result = declaredType(type, reader.takeBrackets());
    }
    if (!reader.atEnd())
        reader.fail("the end");
    return declaration;
}

} // namespace host
