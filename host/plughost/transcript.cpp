#include "host/plughost/transcript.h"

#include <cstdio>
#include <cstring>

#include "ground.h"
#include "host/plughost/text_forms.h"
#include "host/plughost/text_value.h"

namespace plughost {

using host::Value;

static const size_t kResultColumn = 62;

// --- Terms ---------------------------------------------------------------------------------------------------------

static std::string quoted(const std::string &text)
{
    std::string literal = "\"";
    for (char c : text)
        literal += c == '"' ? std::string("\"\"") : std::string(1, c);
    return literal + "\"";
}

// A value as host code writes it, where it can be written.
static std::string spelled(const Value &value)
{
    if (value.isNil())
        return "Nil";
    if (value.isString())
        return quoted(value.text());
    if (value.kind() == Value::Kind::Boolean)
        return value.boolean() ? "True" : "False";
    if (value.isA("MemoryBlock"))
        return "MemoryBlock " + textOfBytes(value.bytes());
    if (value.isA("FolderItem"))
        return "FolderItem " + value.path();
    if (value.isA("Date"))
        return "Date " + textOfDate(value);
    return textOfValue(value);
}

Term::Term(const char *string) : Term(quoted(string), Value(string)) {}
Term::Term(int value) : Term(spelled(Value(value)), Value(value)) {}
Term::Term(double value) : Term(spelled(Value(value)), Value(value)) {}
Term::Term(bool value) : Term(spelled(Value(value)), Value(value)) {}

Term single(float value)
{
    return {textOfSingle(value), Value(value)};
}

static std::string joined(const Terms &terms)
{
    std::string text;
    for (const Term &term : terms)
        text += (text.empty() ? "" : ", ") + term.text;
    return text;
}

static std::vector<Value> valuesOf(const Terms &terms)
{
    std::vector<Value> values;
    for (const Term &term : terms)
        values.push_back(term.value);
    return values;
}

Term array(const Terms &elements)
{
    return {"Array(" + joined(elements) + ")", Value::variants(valuesOf(elements))};
}

Term stringArray(const Terms &elements)
{
    return {"Array(" + joined(elements) + ")", Value::strings(valuesOf(elements))};
}

Term folderItem(const std::string &path)
{
    return {"GetFolderItem(" + quoted(path) + ")", Value::folderItem(path)};
}

static std::string callText(const std::string &object, const std::string &method, const Terms &arguments)
{
    return object + "." + method + (arguments.empty() ? "" : "(" + joined(arguments) + ")");
}

// --- Lines ---------------------------------------------------------------------------------------------------------

// Characters, not bytes: the columns are to stand below each other.
static size_t width(const std::string &utf8)
{
    size_t characters = 0;
    for (unsigned char c : utf8)
        characters += (c & 0xC0) != 0x80;
    return characters;
}

void Transcript::line(const std::string &code)
{
    printf("    %s\n", code.c_str());
    fflush(stdout);
}

void Transcript::line(const std::string &code, const std::string &result, const std::string &expected)
{
    size_t used = width(code);
    std::string padding(used < kResultColumn ? kResultColumn - used : 1, ' ');
    line(code + padding + "-> " + result);
    if (result == expected)
        return;
    _failures++;
    line("*** expected: " + expected);
}

void Transcript::heading(const std::string &title)
{
    printf("\n%s\n", title.c_str());
}

void Transcript::remark(const std::string &text)
{
    line("' " + text);
}

void Transcript::fact(const std::string &text, bool holds, bool expected)
{
    line(text, spelled(holds), spelled(expected));
}

// --- Variables -----------------------------------------------------------------------------------------------------

Term Transcript::dimShared(const std::string &name, const std::string &type, const std::string &className,
                           const std::string &method)
{
    line("Dim " + name + " As " + type + " = " + className + "." + method);
    return {name, _host.callShared(className, method)};
}

Term Transcript::dim(const std::string &name, const std::string &type, const Term &object, const std::string &method,
                     const Terms &arguments)
{
    line("Dim " + name + " As " + type + " = " + callText(object.text, method, arguments));
    return {name, _host.call(object.value, method, valuesOf(arguments))};
}

Term Transcript::dimDictionary(const std::string &name)
{
    line("Dim " + name + " As New Dictionary");
    return {name, Value::dictionary()};
}

Term Transcript::dimMemoryBlock(const std::string &name, const std::string &bytes)
{
    line("Dim " + name + " As New MemoryBlock(" + std::to_string(bytes.size()) + ")");
    for (size_t i = 0; i < bytes.size(); i++)
        line(name + ".Byte(" + std::to_string(i) + ") = &h" + textOfBytes(bytes.substr(i, 1)));
    return {name, Value::memoryBlock(bytes)};
}

Term Transcript::dimDate(const std::string &name, int year, int month, int day, int hour, int minute, int second)
{
    Value date = Value::date(year, month, day, hour, minute, second);
    line("Dim " + name + " As New Date(" +
         joined({Term(year), Term(month), Term(day), Term(hour), Term(minute), Term(second)}) + ")");
    return {name, date};
}

void Transcript::put(const Term &dictionary, const Term &key, const Term &value)
{
    line(dictionary.text + ".Value(" + key.text + ") = " + value.text);
    Value(dictionary.value).put(key.value, value.value);
}

// --- Calls ---------------------------------------------------------------------------------------------------------

void Transcript::run(const Term &object, const std::string &method, const Terms &arguments)
{
    line(callText(object.text, method, arguments));
    _host.call(object.value, method, valuesOf(arguments));
}

void Transcript::show(const Term &object, const std::string &method, const Terms &arguments,
                      const std::string &expected)
{
    line(callText(object.text, method, arguments), spelled(_host.call(object.value, method, valuesOf(arguments))),
         expected);
}

void Transcript::showShared(const std::string &className, const std::string &method, const std::string &expected)
{
    line(className + "." + method, spelled(_host.callShared(className, method)), expected);
}

void Transcript::showSame(const Term &object, const std::string &className, const std::string &method)
{
    fact(className + "." + method + " Is " + object.text, _host.callShared(className, method).sameHandle(object.value));
}

void Transcript::assign(const Term &object, const std::string &method, const Terms &arguments, const Term &value)
{
    line(callText(object.text, method, arguments) + " = " + value.text);
    _host.assign(object.value, method, valuesOf(arguments), value.value);
}

void Transcript::showRaised(const Term &object, const std::string &method, const Terms &arguments,
                            const std::string &expected)
{
    host::Outcome outcome = _host.tryCall(object.value, method, valuesOf(arguments));
    std::string raised;
    for (const host::RaisedException &exception : outcome.raised)
        raised += (raised.empty() ? "" : "; ") + exception.className + ": " + exception.message;
    line(callText(object.text, method, arguments));
    line("  raises " + (raised.empty() ? "nothing" : raised));
    if (raised == expected)
        return;
    _failures++;
    line("*** expected: " + expected);
}

// --- The defaults tool ---------------------------------------------------------------------------------------------

static std::string outputOf(const std::string &commandLine)
{
    FILE *pipe = popen(commandLine.c_str(), "r");
    if (!pipe)
        return "cannot run " + commandLine;
    std::string output;
    char buffer[512];
    while (size_t length = fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, length);
    pclose(pipe);
    while (!output.empty() && output.back() == '\n')
        output.pop_back();
    return output;
}

static std::string indented(std::string text)
{
    for (size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 5)
        text.insert(at + 1, "    ");
    return text;
}

void Transcript::command(const std::string &text, const std::string &expected)
{
    static const char tool[] = "defaults ";
    line("$ " + text);
    std::string output = outputOf("'" + std::string(kDefaultsTool) + "' " + text.substr(strlen(tool)) + " 2>&1");
    if (!output.empty())
        line(indented(output));
    if (output == expected)
        return;
    _failures++;
    line("*** expected: " + indented(expected));
}

} // namespace plughost
