// Texts, in characters, which are code points and are counted from 1. Looking for a text takes no notice of case.
#include <algorithm>

#include "host/runtime/text.h"
#include "host/script/library.h"
#include "host/script/text_functions.h"

namespace script::library {

namespace {

using Characters = std::vector<std::string>;

std::string joined(const Characters &characters, int64_t start, int64_t count)
{
    int64_t end = std::min<int64_t>(std::max<int64_t>(start, 0) + count, int64_t(characters.size()));
    std::string result;
    for (int64_t i = std::max<int64_t>(start, 0); i < end; i++)
        result += characters[size_t(i)];
    return result;
}

// `start` counts from 0.
std::string piece(const std::string &text, int64_t start, int64_t count)
{
    return joined(charactersOf(text), start, std::max<int64_t>(count, 0));
}

constexpr int64_t kToTheEnd = 0x7FFFFFFF;

Characters folded(const Characters &characters)
{
    Characters result;
    for (const std::string &character : characters)
        result.push_back(lowercase(character));
    return result;
}

// The places of a text within another, none overlapping, in characters from 0.
std::vector<size_t> placesOf(const std::string &text, const std::string &part, size_t from, size_t most)
{
    Characters where = folded(charactersOf(text)), what = folded(charactersOf(part));
    std::vector<size_t> places;
    for (size_t at = from; !what.empty() && at + what.size() <= where.size() && places.size() < most; at++)
        if (std::equal(what.begin(), what.end(), where.begin() + ptrdiff_t(at))) {
            places.push_back(at);
            at += what.size() - 1;
        }
    return places;
}

// From 1; 0 when it is not there.
Value positionOf(const std::string &text, const std::string &part, int32_t start)
{
    if (part.empty())
        return Value(text.empty() ? 0 : start);
    std::vector<size_t> places = placesOf(text, part, size_t(std::max(start, 1) - 1), 1);
    return Value(places.empty() ? 0 : int32_t(places.front()) + 1);
}

Value replaced(A a, size_t most)
{
    std::string text = a[0].text(), result;
    Characters characters = charactersOf(text);
    size_t length = charactersOf(a[1].text()).size(), done = 0;
    for (size_t place : placesOf(text, a[1].text(), 0, most)) {
        result += joined(characters, int64_t(done), int64_t(place - done)) + a[2].text();
        done = place + length;
    }
    return Value(result + joined(characters, int64_t(done), kToTheEnd));
}

// The parts between separators; an empty text has none.
std::vector<std::string> fieldsOf(const std::string &text, const std::string &separator)
{
    std::vector<std::string> fields;
    size_t start = 0;
    for (size_t end; !separator.empty() && (end = text.find(separator, start)) != std::string::npos;
         start = end + separator.size())
        fields.push_back(text.substr(start, end - start));
    if (!text.empty())
        fields.push_back(text.substr(start));
    return fields;
}

std::string separatorIn(A a)
{
    return a.size() > 1 ? a[1].text() : " ";
}

Value split(A a)
{
    Value parts = Value::strings({});
    std::string separator = separatorIn(a);
    for (const std::string &field : separator.empty() ? charactersOf(a[0].text()) : fieldsOf(a[0].text(), separator))
        parts.append(field);
    return parts;
}

Value join(A a)
{
    std::string text;
    for (int32_t i = 0; i < a[0].count(); i++)
        text += (i ? separatorIn(a) : "") + a[0].at(i).text();
    return text;
}

Value nthField(A a)
{
    std::vector<std::string> fields = fieldsOf(a[0].text(), a[1].text());
    int32_t number = a[2].int32();
    return number < 1 || size_t(number) > fields.size() ? Value("") : Value(fields[size_t(number) - 1]);
}

constexpr char kBlanks[] = " \t\r\n";

std::string withoutBlanks(const std::string &text, bool atStart, bool atEnd)
{
    size_t first = atStart ? text.find_first_not_of(kBlanks) : 0;
    size_t last = atEnd ? text.find_last_not_of(kBlanks) : text.size() - 1;
    return text.empty() || first == std::string::npos || last == std::string::npos
               ? ""
               : text.substr(first, last - first + 1);
}

Value characterOf(int32_t code)
{
    return Value::string({reinterpret_cast<const char *>(&code), sizeof code}, host::kUTF32).text();
}

// The code point of the first character; 0 of an empty text.
Value codeOf(const std::string &text)
{
    if (text.empty())
        return Value(0);
    std::string first = charactersOf(text).front();
    auto code = uint32_t(static_cast<unsigned char>(first[0]));
    if (first.size() > 1)
        code &= 0x7Fu >> first.size();
    for (size_t i = 1; i < first.size(); i++)
        code = code << 6 | (static_cast<unsigned char>(first[i]) & 0x3F);
    return Value(int32_t(code));
}

// Byte for byte with mode 0, without regard to case otherwise.
Value compared(A a)
{
    int order = a[2].int32() == 0 ? a[0].bytes().compare(a[1].bytes()) : compareText(a[0].text(), a[1].text());
    return Value(order < 0 ? -1 : order > 0);
}

} // namespace

LibraryRows textRows()
{
    return {
        {"Asc(Extends text As String) As Integer", [](A a, At) { return codeOf(a[0].text()); }},
        {"AscB(Extends text As String) As Integer",
         [](A a, At) { return Value(a[0].bytes().empty() ? 0 : int(uint8_t(a[0].bytes()[0]))); }},
        {"Chr(code As Integer) As String", [](A a, At) { return characterOf(a[0].int32()); }},
        {"ChrB(byte As Integer) As String",
         [](A a, At) { return Value::string(std::string(1, char(a[0].int32())), host::kUnknownEncoding); }},
        {"CountFields(Extends text As String, separator As String) As Integer",
         [](A a, At) { return Value(int32_t(fieldsOf(a[0].text(), a[1].text()).size())); }},
        {"DecodeBase64(text As String) As String",
         [](A a, At) { return Value::string(bytesOfBase64(a[0].bytes()), host::kUnknownEncoding); }},
        {"DecodeHex(text As String) As String",
         [](A a, At) { return Value::string(host::runtime::bytesOfHexadecimal(a[0].text()), host::kUnknownEncoding); }},
        {"EncodeBase64(bytes As String, Optional lineLength As Integer) As String",
         [](A a, At) { return Value(base64Of(a[0].bytes(), size_t(std::max(a.size() > 1 ? a[1].int32() : 76, 0)))); }},
        {"EncodeHex(bytes As String) As String",
         [](A a, At) { return Value(uppercase(host::runtime::hexadecimalOf(a[0].bytes()))); }},
        {"EndOfLine As String", [](A, At) { return Value("\n"); }},
        {"Shared EndOfLine.Macintosh As String", [](A, At) { return Value("\r"); }},
        {"Shared EndOfLine.Unix As String", [](A, At) { return Value("\n"); }},
        {"Shared EndOfLine.Windows As String", [](A, At) { return Value("\r\n"); }},
        {"InStr(Extends text As String, find As String) As Integer",
         [](A a, At) { return positionOf(a[0].text(), a[1].text(), 1); }},
        {"InStr(start As Integer, text As String, find As String) As Integer",
         [](A a, At) { return positionOf(a[1].text(), a[2].text(), a[0].int32()); }},
        {"String.InStr(start As Integer, find As String) As Integer",
         [](A a, At) { return positionOf(a[0].text(), a[2].text(), a[1].int32()); }},
        {"Join(parts() As String, Optional separator As String) As String", [](A a, At) { return join(a); }},
        {"Left(Extends text As String, count As Integer) As String",
         [](A a, At) { return Value(piece(a[0].text(), 0, a[1].int32())); }},
        {"LeftB(Extends text As String, count As Integer) As String",
         [](A a, At) { return Value::string(a[0].bytes().substr(0, size_t(std::max(a[1].int32(), 0)))); }},
        {"Len(Extends text As String) As Integer",
         [](A a, At) { return Value(int32_t(charactersOf(a[0].text()).size())); }},
        {"LenB(Extends text As String) As Integer", [](A a, At) { return Value(int32_t(a[0].bytes().size())); }},
        {"Lowercase(Extends text As String) As String", [](A a, At) { return Value(lowercase(a[0].text())); }},
        {"LTrim(Extends text As String) As String",
         [](A a, At) { return Value(withoutBlanks(a[0].text(), true, false)); }},
        {"Mid(Extends text As String, start As Integer, Optional count As Integer) As String",
         [](A a, At) { return Value(piece(a[0].text(), a[1].int64() - 1, a.size() > 2 ? a[2].int64() : kToTheEnd)); }},
        {"NthField(Extends text As String, separator As String, number As Integer) As String",
         [](A a, At) { return nthField(a); }},
        {"Replace(Extends text As String, old As String, fresh As String) As String",
         [](A a, At) { return replaced(a, 1); }},
        {"ReplaceAll(Extends text As String, old As String, fresh As String) As String",
         [](A a, At) { return replaced(a, size_t(-1)); }},
        {"Right(Extends text As String, count As Integer) As String",
         [](A a, At) {
             auto length = int64_t(charactersOf(a[0].text()).size());
             return Value(piece(a[0].text(), std::max<int64_t>(length - a[1].int32(), 0), kToTheEnd));
         }},
        {"RTrim(Extends text As String) As String",
         [](A a, At) { return Value(withoutBlanks(a[0].text(), false, true)); }},
        {"Split(Extends text As String, Optional separator As String) As String()", [](A a, At) { return split(a); }},
        {"StrComp(first As String, second As String, mode As Integer) As Integer", [](A a, At) { return compared(a); }},
        {"Titlecase(Extends text As String) As String", [](A a, At) { return Value(titlecase(a[0].text())); }},
        {"Trim(Extends text As String) As String",
         [](A a, At) { return Value(withoutBlanks(a[0].text(), true, true)); }},
        {"Uppercase(Extends text As String) As String", [](A a, At) { return Value(uppercase(a[0].text())); }},
    };
}

} // namespace script::library
